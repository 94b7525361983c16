#include "data/JetSql.h"

namespace {

// Skips the blanks at `at`; true when there was at least one.
bool skipBlanks(QStringView text, qsizetype &at)
{
    const qsizetype from = at;
    while (at < text.size() && text[at].isSpace())
        ++at;
    return at > from;
}

// Takes `word` (any case) at `at`, as a whole word.
bool takeWord(QStringView text, qsizetype &at, QStringView word)
{
    if (!text.mid(at).startsWith(word, Qt::CaseInsensitive))
        return false;
    const qsizetype end = at + word.size();
    if (end < text.size() && (text[end].isLetterOrNumber() || text[end] == u'_'))
        return false;
    at = end;
    return true;
}

} // namespace

QString jetToSqlite(const QString &jetStatement)
{
    // Jet's "DELETE * FROM t" has no SQLite form; the star only names the
    // whole record, so dropping it keeps the meaning.
    qsizetype at = 0;
    skipBlanks(jetStatement, at);
    if (takeWord(jetStatement, at, u"delete") && skipBlanks(jetStatement, at) && at < jetStatement.size() &&
        jetStatement[at] == u'*' && skipBlanks(jetStatement, ++at) && takeWord(jetStatement, at, u"from"))
        return QStringLiteral("DELETE FROM") + jetStatement.mid(at);
    return jetStatement;
}
