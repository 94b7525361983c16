// The DATE box accepts several written forms and stores one display form.
#include "FuzzText.h"
#include "rules/DateText.h"

namespace {

bool isAscii(const QString &t)
{
    for (QChar c : t)
        if (c.unicode() > 0x7f)
            return false;
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = fuzzText(data, size);
    const std::optional<QDate> date = parseDate(text);
    const QString shown = formatDateText(text);

    if (!date) {
        // Not a date: left exactly as typed.
        FUZZ_CHECK(shown == text, text);
        return 0;
    }
    FUZZ_CHECK(date->isValid() && date->year() >= 100 && date->year() <= 9999, text);
    // The stored form is 12 characters and reads back as the same day, so a
    // saved date survives any number of loads and saves.
    FUZZ_CHECK(shown == formatDate(*date), text);
    FUZZ_CHECK(shown.size() == 12, text);
    FUZZ_CHECK(parseDate(shown) == date, text);
    FUZZ_CHECK(formatDateText(shown) == shown, text);
    if (isAscii(text)) {
        FUZZ_CHECK(parseDate(text.toUpper()) == date, text);
        FUZZ_CHECK(parseDate(text.toLower()) == date, text);
    }
    return 0;
}
