#include "data/Database.h"

#include "data/JetSql.h"
#include "platform/AppDirectory.h"
#include "platform/MessageBox.h"
#include "platform/ProgramEnd.h"
#include "rules/AppError.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QUrl>
#include <atomic>

namespace detail {

// SQLITE_BUSY and SQLITE_LOCKED: another connection holds the file.
bool isBusy(const QSqlError &error)
{
    const QString code = error.nativeErrorCode();
    return code == QLatin1String("5") || code == QLatin1String("6");
}

// Owns one named Qt connection and removes it when the last user lets go.
class Connection {
public:
    explicit Connection(const QString &path)
    {
        static std::atomic<quint64> counter{0};
        m_name = QStringLiteral("alarmclock-%1").arg(++counter);
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_name);
        // mode=rw: opening must never create a missing file. Another
        // program's lock is waited for up to 2 s, then the statement fails
        // in the routine that ran it.
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_URI;QSQLITE_BUSY_TIMEOUT=2000"));
        // An empty authority ("file://") first: a path that starts with "//"
        // (the program in the root folder) would otherwise read as a host name.
        db.setDatabaseName(QStringLiteral("file://") + QString::fromLatin1(QUrl::toPercentEncoding(path, "/"))
                           + QStringLiteral("?mode=rw"));
        if (!db.open())
            throw sqlError(db.lastError());
        // SQLite opens lazily; read the schema now so that a file that is not
        // a database (or an empty one) fails here, as it would on open. A
        // file another program holds locked is a database all the same: the
        // probe does not wait for it, and the statements that follow do.
        QSqlQuery probe(db);
        probe.exec(QStringLiteral("PRAGMA busy_timeout = 0"));
        const bool read = probe.exec(QStringLiteral("SELECT count(*) FROM sqlite_master"));
        if (!read && !isBusy(probe.lastError()))
            throw sqlError(probe.lastError());
        if (read && (!probe.next() || probe.value(0).toInt() == 0))
            throw AppError(26, QStringLiteral("file is not a database"));
        probe.exec(QStringLiteral("PRAGMA busy_timeout = 2000"));
    }
    ~Connection()
    {
        {
            QSqlDatabase db = QSqlDatabase::database(m_name, false);
            db.close();
        }
        QSqlDatabase::removeDatabase(m_name);
    }
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    QSqlDatabase db() const { return QSqlDatabase::database(m_name, false); }

    QSqlQuery run(const QString &sql, const QVector<QVariant> &values = {})
    {
        QSqlQuery query(db());
        query.setForwardOnly(true);
        if (!query.prepare(sql))
            throw sqlError(query.lastError());
        for (const QVariant &value : values)
            query.addBindValue(value);
        if (!query.exec())
            throw sqlError(query.lastError());
        return query;
    }

private:
    QString m_name;
};

} // namespace detail

AppError sqlError(const QSqlError &error)
{
    bool ok = false;
    const long number = error.nativeErrorCode().toLong(&ok);
    QString text = error.databaseText();
    if (text.isEmpty())
        text = error.driverText();
    return AppError(ok ? number : 3000, text);
}

namespace {

bool isYesNoColumn(const QString &name) { return name.startsWith(QLatin1String("boo"), Qt::CaseInsensitive); }

void readAll(QSqlQuery &query, QStringList &columns, QVector<QVector<QVariant>> &rows, QVector<qint64> *rowIds)
{
    const QSqlRecord record = query.record();
    const int first = rowIds ? 1 : 0;
    for (int i = first; i < record.count(); ++i)
        columns << record.fieldName(i);
    while (query.next()) {
        QVector<QVariant> row;
        row.reserve(columns.size());
        for (int i = first; i < record.count(); ++i) {
            QVariant value = query.value(i);
            if (!value.isNull() && isYesNoColumn(columns.at(i - first)))
                value = QVariant(value.toLongLong() != 0);
            row << value;
        }
        rows << row;
        if (rowIds)
            *rowIds << query.value(0).toLongLong();
    }
}

} // namespace

void Recordset::moveNext()
{
    if (eof())
        throw AppError(3021, QStringLiteral("No current record."));
    ++m_pos;
}

int Recordset::column(const QString &name) const
{
    for (int i = 0; i < m_columns.size(); ++i)
        if (m_columns.at(i).compare(name, Qt::CaseInsensitive) == 0)
            return i;
    throw AppError(3265, QStringLiteral("Item not found in this collection."));
}

QVariant Recordset::field(const QString &name) const
{
    const int c = column(name);
    if (eof())
        throw AppError(3021, QStringLiteral("No current record."));
    return m_rows.at(m_pos).at(c);
}

void Recordset::edit()
{
    if (m_table.isEmpty())
        throw AppError(3027, QStringLiteral("Cannot update. Database or object is read-only."));
    if (eof())
        throw AppError(3021, QStringLiteral("No current record."));
    m_mode = Mode::Edit;
    m_pending.clear();
}

void Recordset::addNew()
{
    if (m_table.isEmpty())
        throw AppError(3027, QStringLiteral("Cannot update. Database or object is read-only."));
    m_mode = Mode::AddNew;
    m_pending.clear();
}

void Recordset::setField(const QString &name, const QVariant &value)
{
    if (m_mode == Mode::Browse)
        throw AppError(3020, QStringLiteral("Update or CancelUpdate without AddNew or Edit."));
    const QString column = m_columns.at(this->column(name));
    for (auto &pending : m_pending)
        if (pending.first == column) {
            pending.second = value;
            return;
        }
    m_pending.append({column, value});
}

void Recordset::update()
{
    if (m_mode == Mode::Browse)
        throw AppError(3020, QStringLiteral("Update or CancelUpdate without AddNew or Edit."));
    QVector<QVariant> values;
    QStringList names;
    for (const auto &pending : m_pending) {
        names << pending.first;
        values << pending.second;
    }
    if (m_mode == Mode::Edit) {
        if (!names.isEmpty()) {
            QStringList sets;
            for (const QString &n : names)
                sets << n + QStringLiteral(" = ?");
            values << m_rowIds.at(m_pos);
            m_connection->run(QStringLiteral("UPDATE %1 SET %2 WHERE rowid = ?").arg(m_table, sets.join(u", ")),
                              values);
            for (int i = 0; i < names.size(); ++i)
                m_rows[m_pos][column(names.at(i))] = values.at(i);
        }
    } else if (names.isEmpty()) {
        m_connection->run(QStringLiteral("INSERT INTO %1 DEFAULT VALUES").arg(m_table));
    } else {
        QStringList marks;
        for (qsizetype i = 0; i < names.size(); ++i)
            marks << QStringLiteral("?");
        m_connection->run(
            QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)").arg(m_table, names.join(u", "), marks.join(u", ")),
            values);
    }
    m_mode = Mode::Browse;
    m_pending.clear();
}

void Recordset::close()
{
    m_rows.clear();
    m_rowIds.clear();
    m_pos = 0;
    m_mode = Mode::Browse;
    m_connection.reset();
}

void DbHandle::execute(const QString &jetSql)
{
    if (!m_connection)
        throw AppError(3420, QStringLiteral("Object invalid or no longer set."));
    m_connection->run(jetToSqlite(jetSql));
}

Recordset DbHandle::openRecordset(const QString &jetSql)
{
    if (!m_connection)
        throw AppError(3420, QStringLiteral("Object invalid or no longer set."));
    QSqlQuery query = m_connection->run(jetToSqlite(jetSql));
    Recordset rs;
    readAll(query, rs.m_columns, rs.m_rows, nullptr);
    return rs;
}

Recordset DbHandle::openTable(const QString &table)
{
    if (!m_connection)
        throw AppError(3420, QStringLiteral("Object invalid or no longer set."));
    // Only the program's own table names arrive here; anything else is not a
    // plain identifier and is refused rather than spliced into SQL.
    for (const QChar c : table)
        if (!(c.isLetterOrNumber() || c == u'_'))
            throw AppError(3078, QStringLiteral("The Microsoft Jet database engine cannot find the input table."));
    QSqlQuery query = m_connection->run(QStringLiteral("SELECT rowid, * FROM %1 ORDER BY rowid").arg(table));
    Recordset rs;
    rs.m_connection = m_connection;
    rs.m_table = table;
    readAll(query, rs.m_columns, rs.m_rows, &rs.m_rowIds);
    return rs;
}

void DbHandle::beginTrans()
{
    if (!m_connection->db().transaction())
        throw sqlError(m_connection->db().lastError());
}

void DbHandle::commitTrans()
{
    if (!m_connection->db().commit())
        throw sqlError(m_connection->db().lastError());
}

void DbHandle::rollback()
{
    if (m_connection)
        m_connection->db().rollback();
}

void DbHandle::close()
{
    if (!m_connection)
        throw AppError(3420, QStringLiteral("Object invalid or no longer set."));
    m_connection.reset();
}

Database::Database(AppDirectory &appDir, MessageBox &messages, ProgramEnd &end)
    : m_appDir(appDir), m_messages(messages), m_end(end)
{
}

QString Database::path() const
{
    if (!m_file.isEmpty())
        return m_file;
    // The separator is always inserted, even after a root folder's own.
    return m_appDir.path() + QStringLiteral("/alarmclock.mdb");
}

DbHandle Database::open() const { return DbHandle(std::make_shared<detail::Connection>(path())); }

DbHandle Database::MyDB()
{
    try {
        return open();
    } catch (const AppError &e) {
        m_messages.show(QStringLiteral("MyDB ERROR,\r\nFILE PATH:\r\n") + path() + QStringLiteral("\r\nError #")
                            + QString::number(e.number) + QStringLiteral("\r\n") + e.description,
                        MsgButtons::Ok, MsgIcon::None, QString());
        m_messages.show(QStringLiteral("The application will now close safely, contact your developer."),
                        MsgButtons::Ok, MsgIcon::Information, QString());
        m_end.endProgram();
    }
    Q_UNREACHABLE();
}

void Database::MyDBClose()
{
    DbHandle handle = MyDB();
    try {
        handle.close();
    } catch (const AppError &e) {
        m_messages.show(QStringLiteral("MyDBClose ERROR,\r\nError #") + QString::number(e.number)
                            + QStringLiteral("\r\n") + e.description,
                        MsgButtons::Ok, MsgIcon::None, QString());
        m_messages.show(QStringLiteral("The application will now close safely, contact your About Box developer."),
                        MsgButtons::Ok, MsgIcon::Information, QString());
        m_end.endProgram();
    }
}
