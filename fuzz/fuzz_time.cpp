// The TIME box: its key filter, its repair on leaving, and the stored form.
#include "FuzzText.h"
#include "rules/TimeText.h"

namespace {

bool isTwoDigitTime(const QString &t)
{
    static const QString digits = QStringLiteral("0123456789");
    return t.size() == 5 && digits.contains(t[0]) && digits.contains(t[1]) && t[2] == QLatin1Char(':')
        && digits.contains(t[3]) && digits.contains(t[4]);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = fuzzText(data, size);

    // What the key filter lets through is what the box can hold.
    QString typed;
    for (QChar c : text) {
        const std::optional<QChar> passed = filterTimeKey(c);
        if (!passed)
            continue;
        FUZZ_CHECK(QStringLiteral("0123456789:\b").contains(*passed), text);
        FUZZ_CHECK(*passed == c || (c == QLatin1Char(' ') && *passed == QLatin1Char(':')), text);
        typed += *passed;
    }

    for (const QString &t : {text, typed}) {
        const QString repaired = normaliseTime(t);
        // A box left holding anything but a real "hh:nn" would never ring.
        FUZZ_CHECK(repaired.isEmpty() || (isTwoDigitTime(repaired) && parseTimeOfDay(repaired)), t);
        FUZZ_CHECK(normaliseTime(repaired) == repaired, t);

        const QString formatted = formatTimeText(t);
        const std::optional<QTime> time = parseTimeOfDay(t);
        if (!time) {
            FUZZ_CHECK(formatted == t, t);
            continue;
        }
        FUZZ_CHECK(isTwoDigitTime(formatted), t);
        const std::optional<QTime> back = parseTimeOfDay(formatted);
        FUZZ_CHECK(back && back->hour() == time->hour() && back->minute() == time->minute(), t);
    }
    return 0;
}
