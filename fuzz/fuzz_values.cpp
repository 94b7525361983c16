// Every value read from a text box or a record passes through these
// conversions, so one input feeds all of them and checks they agree.
#include "FuzzText.h"
#include "rules/ValueConversions.h"

#include <cmath>
#include <limits>

namespace {

bool isHexForm(const QString &t)
{
    return t.size() >= 2 && t[0] == QLatin1Char('&') && (t[1] == QLatin1Char('H') || t[1] == QLatin1Char('h'));
}

void checkWholePart(double d, const QString &text)
{
    const double w = wholePart(d);
    FUZZ_CHECK(std::isfinite(w), text);
    FUZZ_CHECK(std::trunc(w) == w, text);
    FUZZ_CHECK(!(w == 0.0 && std::signbit(w)), text);
    if (!std::isfinite(d)) {
        FUZZ_CHECK(w == 0.0, text);
        return;
    }
    // Truncation through 15 significant digits: never off by a whole unit
    // beyond what that rounding allows, and never of the other sign.
    FUZZ_CHECK(std::fabs(d - w) < 1.0 + std::fabs(d) * 1e-14, text);
    FUZZ_CHECK(w == 0.0 || (w > 0) == (d > 0), text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = fuzzText(data, size);

    const QString trimmed = textValue(text);
    FUZZ_CHECK(textValue(trimmed) == trimmed, text);
    FUZZ_CHECK(trimmed.isEmpty() || (!isBlank(trimmed.front()) && !isBlank(trimmed.back())), text);

    const qint16 i16 = integerValue(text);
    const qint32 i32 = longValue(text);
    const double d = doubleValue(text);
    FUZZ_CHECK(std::isfinite(d), text);

    if (!isHexForm(trimmed)) {
        // One number behind all three: the integers are the double rounded,
        // or 0 where it does not fit.
        if (i32 != 0)
            FUZZ_CHECK(std::fabs(double(i32) - d) <= 0.5, text);
        if (i16 != 0)
            FUZZ_CHECK(i16 == i32, text);
        if (i32 >= std::numeric_limits<qint16>::min() && i32 <= std::numeric_limits<qint16>::max())
            FUZZ_CHECK(i16 == i32, text);
        if (std::fabs(d) < 2e9 && std::fabs(d - std::round(d)) != 0.5)
            FUZZ_CHECK(double(i32) == std::round(d), text);
    }
    // What the number's own text reads back as.
    FUZZ_CHECK(longValue(QString::number(i32)) == i32, text);
    FUZZ_CHECK(doubleValue(QString::number(d, 'g', 17)) == d, text);

    checkWholePart(d, text);
    if (size >= sizeof(double)) {
        double raw;
        std::memcpy(&raw, data, sizeof raw);
        checkWholePart(raw, text);
    }
    return 0;
}
