#include "rules/ValueConversions.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>

int hexDigitValue(QChar c)
{
    const char16_t u = c.unicode();
    if (u >= u'0' && u <= u'9')
        return u - u'0';
    if (u >= u'a' && u <= u'f')
        return u - u'a' + 10;
    if (u >= u'A' && u <= u'F')
        return u - u'A' + 10;
    return -1;
}

namespace {

bool isAsciiDigit(QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); }

bool isNumericType(const QVariant &v)
{
    switch (v.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Double:
    case QMetaType::Float:
        return true;
    default:
        return false;
    }
}

double roundHalfEven(double d)
{
    const double lower = std::floor(d);
    const double frac = d - lower;
    if (frac > 0.5)
        return lower + 1.0;
    if (frac < 0.5)
        return lower;
    return std::fmod(lower, 2.0) == 0.0 ? lower : lower + 1.0;
}

// The value as a double, following the shared scheme: empty -> 0,
// TRUE/FALSE -> -1/0, non-numeric -> nullopt.
std::optional<double> numericValue(const QVariant &v)
{
    if (isNumericType(v)) {
        const double d = v.toDouble();
        if (!std::isfinite(d))
            return std::nullopt;
        return d;
    }
    const QString text = textValue(v);
    if (text.isEmpty())
        return 0.0;
    const QString upper = text.toUpper();
    if (upper == QLatin1String("TRUE"))
        return -1.0;
    if (upper == QLatin1String("FALSE"))
        return 0.0;
    return parseNumericText(text);
}

// "&H" followed by 1..8 hex digits and nothing else, as a 32-bit pattern.
std::optional<qint32> hexLong(const QString &text)
{
    if (text.size() < 3 || text.size() > 10 || text[0] != QLatin1Char('&')
        || (text[1] != QLatin1Char('H') && text[1] != QLatin1Char('h')))
        return std::nullopt;
    quint32 pattern = 0;
    for (qsizetype i = 2; i < text.size(); ++i) {
        const int digit = hexDigitValue(text[i]);
        if (digit < 0)
            return std::nullopt;
        pattern = (pattern << 4) | quint32(digit);
    }
    return qint32(pattern);
}

} // namespace

bool isBlank(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t');
}

QString trimBlanks(const QString &text)
{
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && isBlank(text[begin]))
        ++begin;
    while (end > begin && isBlank(text[end - 1]))
        --end;
    return text.mid(begin, end - begin);
}

std::optional<double> parseNumericText(const QString &text)
{
    const QString t = trimBlanks(text);
    qsizetype i = 0;
    const qsizetype n = t.size();
    std::string plain; // from_chars wants ASCII and no '+'
    plain.reserve(size_t(n));

    if (i < n && (t[i] == QLatin1Char('+') || t[i] == QLatin1Char('-'))) {
        if (t[i] == QLatin1Char('-'))
            plain += '-';
        ++i;
    }
    qsizetype mantissaDigits = 0;
    while (i < n && isAsciiDigit(t[i])) {
        plain += char(t[i].unicode());
        ++i;
        ++mantissaDigits;
    }
    if (i < n && t[i] == QLatin1Char('.')) {
        plain += '.';
        ++i;
        while (i < n && isAsciiDigit(t[i])) {
            plain += char(t[i].unicode());
            ++i;
            ++mantissaDigits;
        }
    }
    if (mantissaDigits == 0)
        return std::nullopt;
    if (i < n && (t[i] == QLatin1Char('e') || t[i] == QLatin1Char('E'))) {
        plain += 'e';
        ++i;
        if (i < n && (t[i] == QLatin1Char('+') || t[i] == QLatin1Char('-'))) {
            plain += char(t[i].unicode());
            ++i;
        }
        qsizetype exponentDigits = 0;
        while (i < n && isAsciiDigit(t[i])) {
            plain += char(t[i].unicode());
            ++i;
            ++exponentDigits;
        }
        if (exponentDigits == 0)
            return std::nullopt;
    }
    if (i != n)
        return std::nullopt;

    double value = 0.0;
    const char *first = plain.data();
    const char *last = first + plain.size();
    const auto [ptr, ec] = std::from_chars(first, last, value);
    if (ec != std::errc() || ptr != last || !std::isfinite(value))
        return std::nullopt;
    return value;
}

std::optional<qint32> roundToInt32(double d)
{
    if (!std::isfinite(d))
        return std::nullopt;
    const double r = roundHalfEven(d);
    if (r < double(std::numeric_limits<qint32>::min()) || r > double(std::numeric_limits<qint32>::max()))
        return std::nullopt;
    return qint32(r);
}

QString textValue(const QVariant &v)
{
    if (v.isNull() || !v.isValid())
        return QString();
    if (v.typeId() == QMetaType::Bool)
        return v.toBool() ? QStringLiteral("True") : QStringLiteral("False");
    return trimBlanks(v.toString());
}

qint16 integerValue(const QVariant &v)
{
    const std::optional<double> d = numericValue(v);
    if (!d)
        return 0;
    const double r = roundHalfEven(*d);
    if (r < double(std::numeric_limits<qint16>::min()) || r > double(std::numeric_limits<qint16>::max()))
        return 0;
    return qint16(r);
}

qint32 longValue(const QVariant &v)
{
    if (!isNumericType(v)) {
        if (const std::optional<qint32> hex = hexLong(textValue(v)))
            return *hex;
    }
    const std::optional<double> d = numericValue(v);
    if (!d)
        return 0;
    return roundToInt32(*d).value_or(0);
}

double doubleValue(const QVariant &v)
{
    return numericValue(v).value_or(0.0);
}

double wholePart(double d)
{
    if (!std::isfinite(d))
        return 0.0;
    // Same digits as printf("%.15G"), but never with a locale's decimal comma.
    char buffer[64];
    const auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, d, std::chars_format::general, 15);
    if (ec != std::errc())
        return 0.0;
    std::string text(buffer, end);
    if (text.find("e-") != std::string::npos)
        return 0.0;
    // From 1e15 up the text has an exponent ("1.5e+15"): the value is whole
    // already, and cutting at the point would drop the exponent with it.
    const size_t point = text.find('.');
    if (point != std::string::npos && text.find('e') == std::string::npos)
        text.erase(point);
    double whole = 0.0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), whole);
    // Near the largest doubles the rounded text no longer fits one; every
    // value up there is whole.
    if (result.ec == std::errc::result_out_of_range)
        return d;
    if (result.ec != std::errc())
        return 0.0;
    return whole + 0.0; // "-0" reads back as -0.0; callers only want plain zero
}
