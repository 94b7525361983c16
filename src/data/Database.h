#pragma once

#include <QStringList>
#include <QVariant>
#include <QVector>
#include <memory>

class AppDirectory;
class MessageBox;
class ProgramEnd;
class QSqlError;
struct AppError;

namespace detail {
class Connection;
}

// The current record of a query or of a table opened directly. Records are
// read at open time (the tables hold a handful of rows), so moving is free and
// the connection is only touched again to write an edited or added record.
class Recordset {
public:
    bool eof() const { return m_pos >= m_rows.size(); }
    void moveFirst() { m_pos = 0; }
    void moveNext();
    // Column names match without regard to case. Yes/No columns (named boo...)
    // come back as booleans, as the program's conversions expect.
    QVariant field(const QString &name) const;

    // Writing, for a table opened with DbHandle::openTable only.
    void edit();
    void addNew();
    void setField(const QString &name, const QVariant &value);
    void update();
    void close();

private:
    friend class DbHandle;
    int column(const QString &name) const;

    std::shared_ptr<detail::Connection> m_connection;
    QString m_table; // empty for a read-only query
    QStringList m_columns;
    QVector<QVector<QVariant>> m_rows;
    QVector<qint64> m_rowIds;
    qsizetype m_pos = 0;
    enum class Mode { Browse, Edit, AddNew } m_mode = Mode::Browse;
    QVector<QPair<QString, QVariant>> m_pending;
};

// One open connection on the database file, as MyDB hands it out. Dropping
// the last copy closes it.
class DbHandle {
public:
    void execute(const QString &jetSql);
    Recordset openRecordset(const QString &jetSql);
    Recordset openTable(const QString &table);
    void beginTrans();
    void commitTrans();
    void rollback();
    void close();

private:
    friend class Database;
    explicit DbHandle(std::shared_ptr<detail::Connection> c) : m_connection(std::move(c)) {}
    std::shared_ptr<detail::Connection> m_connection;
};

// The database file beside the program (or the user's copy of it) and its two
// connection routines.
class Database {
public:
    Database(AppDirectory &appDir, MessageBox &messages, ProgramEnd &end);

    QString path() const;
    // Uses this file instead of the one beside the program (see DatabaseLocation.h).
    void useFile(const QString &path) { m_file = path; }
    MessageBox &messages() const { return m_messages; }

    // A newly opened handle. A file that cannot be opened as the program's
    // database is reported in two boxes and ends the program.
    DbHandle MyDB();
    void MyDBClose();

    // The same open without the boxes: throws AppError.
    DbHandle open() const;

private:
    AppDirectory &m_appDir;
    QString m_file;
    MessageBox &m_messages;
    ProgramEnd &m_end;
};

AppError sqlError(const QSqlError &error);
