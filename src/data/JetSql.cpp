#include "data/JetSql.h"

#include <QRegularExpression>

QString jetToSqlite(const QString &jetStatement)
{
    // Jet's "DELETE * FROM t" has no SQLite form; the star only names the
    // whole record, so dropping it keeps the meaning.
    static const QRegularExpression deleteStar(
        QStringLiteral(R"(^\s*delete\s+\*\s+from\b)"), QRegularExpression::CaseInsensitiveOption);
    QString sql = jetStatement;
    const auto match = deleteStar.match(sql);
    if (match.hasMatch())
        sql.replace(0, match.capturedLength(), QStringLiteral("DELETE FROM"));
    return sql;
}
