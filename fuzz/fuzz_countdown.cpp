// The countdown beside every row: any second count, any marker.
#include "FuzzText.h"
#include "rules/CountdownText.h"

#include <QRegularExpression>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < sizeof(qint32))
        return 0;
    qint32 seconds;
    std::memcpy(&seconds, data, sizeof seconds);
    const QString marker = fuzzText(data + sizeof seconds, size - sizeof seconds);
    const QString context = QString::number(seconds) + QLatin1Char('|') + marker;

    const QString shown = strPrintCountDownHours(seconds, marker);
    if (seconds <= 0) {
        FUZZ_CHECK(shown == marker, context);
        return 0;
    }
    // The fields must add back up to the count and each stay within its unit.
    static const QRegularExpression form(QStringLiteral(R"(^(\d+)d (\d+)h (\d+)m (\d+)s $)"));
    const QRegularExpressionMatch m = form.match(shown);
    FUZZ_CHECK(m.hasMatch(), context);
    const qint64 d = m.captured(1).toLongLong();
    const qint64 h = m.captured(2).toLongLong();
    const qint64 min = m.captured(3).toLongLong();
    const qint64 s = m.captured(4).toLongLong();
    FUZZ_CHECK(h < 24 && min < 60 && s < 60, context);
    FUZZ_CHECK(d * 86400 + h * 3600 + min * 60 + s == seconds, context);
    return 0;
}
