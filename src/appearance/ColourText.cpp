#include "appearance/ColourText.h"

#include "rules/ValueConversions.h"

namespace {

qint32 hexColour(const QString &text)
{
    quint32 pattern = 0;
    int digits = 0;
    qsizetype i = 2; // after "&H"
    for (; i < text.size(); ++i) {
        const int digit = hexDigitValue(text[i]);
        if (digit < 0)
            break;
        if (++digits > 8)
            return 0;
        pattern = (pattern << 4) | quint32(digit);
    }
    if (digits == 0)
        return 0;
    const bool longMarker = i < text.size() && text[i] == QLatin1Char('&');
    if (longMarker || digits > 4)
        return qint32(pattern);
    // A short literal is an Integer: "&HFFFF" is -1, not 65535.
    return qint16(quint16(pattern));
}

} // namespace

qint32 colourFromText(const QString &text)
{
    if (text.isEmpty())
        return 0;
    if (text.startsWith(QLatin1String("&H"), Qt::CaseSensitive))
        return hexColour(text);
    if (const std::optional<double> number = parseNumericText(text))
        return roundToInt32(*number).value_or(0);
    return 0;
}
