#pragma once

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QStringList>
#include <QVariant>

// The test's own connection to a database file, to arrange records before the
// program runs and to look at what it stored.
class TestDatabase {
public:
    explicit TestDatabase(const QString &path, const QString &name = QStringLiteral("test-peek")) : m_name(name)
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_name);
        db.setDatabaseName(path);
        db.open();
    }
    ~TestDatabase() { QSqlDatabase::removeDatabase(m_name); }
    TestDatabase(const TestDatabase &) = delete;

    bool exec(const QString &sql, const QVariantList &values = {})
    {
        QSqlQuery q(QSqlDatabase::database(m_name));
        q.prepare(sql);
        for (const QVariant &v : values)
            q.addBindValue(v);
        return q.exec();
    }
    // Each row's columns joined with "|" (Null as "NULL"), in query order.
    QStringList rows(const QString &sql)
    {
        QSqlQuery q(QSqlDatabase::database(m_name));
        if (!q.exec(sql))
            return {QStringLiteral("<error>")};
        QStringList out;
        while (q.next()) {
            QStringList cols;
            for (int i = 0; i < q.record().count(); ++i)
                cols << (q.isNull(i) ? QStringLiteral("NULL") : q.value(i).toString());
            out << cols.join(u'|');
        }
        return out;
    }

private:
    QString m_name;
};
