// The engine adapter rewrites only Jet's "delete * from"; anything else must
// reach SQLite byte for byte.
#include "FuzzText.h"
#include "data/JetSql.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString jet = fuzzText(data, size);
    const QString sql = jetToSqlite(jet);

    if (!jet.contains(QLatin1Char('*'))) {
        FUZZ_CHECK(sql == jet, jet);
        return 0;
    }
    if (sql != jet) {
        // Only the head changed: the rest of the statement is the user's.
        const QString head = QStringLiteral("DELETE FROM");
        FUZZ_CHECK(sql.startsWith(head), jet);
        FUZZ_CHECK(jet.endsWith(sql.mid(head.size())), jet);
        // ...and what went was "delete", the star and "from", blanks aside.
        QString removed = jet.left(jet.size() - (sql.size() - head.size()));
        FUZZ_CHECK(removed.count(QLatin1Char('*')) == 1, jet);
        removed.remove(QLatin1Char('*'));
        FUZZ_CHECK(removed.simplified().compare(QLatin1String("delete from"), Qt::CaseInsensitive) == 0, jet);
    }
    FUZZ_CHECK(jetToSqlite(sql) == sql, jet);
    return 0;
}
