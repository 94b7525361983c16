#include "rules/DateText.h"

#include "rules/ValueConversions.h"

#include <QLocale>
#include <array>
#include <cstdio>
#include <vector>

namespace {

enum class TokenKind { Number, Word, Slash, Dash, Comma };

struct Token {
    TokenKind kind;
    int value = 0;  // number value, or month 1..12 for a word
    int digits = 0; // number of digits as typed
};

// More than this many tokens never makes a date; stopping there keeps
// arbitrary long input cheap.
constexpr int kMaxTokens = 6;
// Leading zeros are fine, but a field never needs more significant digits.
constexpr int kMaxSignificantDigits = 5;
constexpr int kMaxWordLength = 9; // "September"

int monthFromWord(const QString &word)
{
    static const std::array<const char *, 12> names = {
        "january", "february", "march", "april", "may", "june",
        "july", "august", "september", "october", "november", "december"};
    const QString lower = word.toLower();
    for (int m = 0; m < 12; ++m) {
        const QLatin1String full(names[size_t(m)]);
        if (lower == full || lower == full.left(3))
            return m + 1;
    }
    return 0;
}

bool isAsciiLetter(QChar c)
{
    const char16_t u = c.unicode();
    return (u >= u'a' && u <= u'z') || (u >= u'A' && u <= u'Z');
}

bool isAsciiDigit(QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); }

// Splits into numbers, month words and separators; nullopt on anything else.
std::optional<std::vector<Token>> tokenize(const QString &text)
{
    std::vector<Token> tokens;
    const qsizetype n = text.size();
    qsizetype i = 0;
    while (i < n) {
        const QChar c = text[i];
        if (isBlank(c)) {
            ++i;
            continue;
        }
        if (int(tokens.size()) == kMaxTokens)
            return std::nullopt;
        if (isAsciiDigit(c)) {
            Token t{TokenKind::Number};
            int significant = 0;
            while (i < n && isAsciiDigit(text[i])) {
                const int digit = text[i].unicode() - u'0';
                if (significant > 0 || digit != 0)
                    ++significant;
                if (significant > kMaxSignificantDigits)
                    return std::nullopt;
                t.value = t.value * 10 + digit;
                ++t.digits;
                ++i;
            }
            tokens.push_back(t);
        } else if (isAsciiLetter(c)) {
            const qsizetype start = i;
            while (i < n && isAsciiLetter(text[i])) {
                if (i - start == kMaxWordLength)
                    return std::nullopt;
                ++i;
            }
            const int month = monthFromWord(text.mid(start, i - start));
            if (month == 0)
                return std::nullopt;
            tokens.push_back(Token{TokenKind::Word, month});
        } else if (c == QLatin1Char('/')) {
            tokens.push_back(Token{TokenKind::Slash});
            ++i;
        } else if (c == QLatin1Char('-')) {
            tokens.push_back(Token{TokenKind::Dash});
            ++i;
        } else if (c == QLatin1Char(',')) {
            tokens.push_back(Token{TokenKind::Comma});
            ++i;
        } else {
            return std::nullopt;
        }
    }
    return tokens;
}

std::optional<QDate> makeDate(int year, int month, int day)
{
    if (year < 100 || year > 9999 || !QDate::isValid(year, month, day))
        return std::nullopt;
    return QDate(year, month, day);
}

// A written-out year: at least three digits, so "Sep 30 31" is not a date.
bool isFullYear(const Token &t) { return t.kind == TokenKind::Number && t.digits >= 3; }

bool isKind(const std::vector<Token> &t, std::initializer_list<TokenKind> kinds)
{
    if (t.size() != kinds.size())
        return false;
    size_t i = 0;
    for (TokenKind k : kinds)
        if (t[i++].kind != k)
            return false;
    return true;
}

} // namespace

std::optional<QDate> parseDate(const QString &text)
{
    std::optional<std::vector<Token>> parsed = tokenize(text);
    if (!parsed)
        return std::nullopt;
    std::vector<Token> &t = *parsed;
    using K = TokenKind;

    if (isKind(t, {K::Number, K::Slash, K::Number, K::Slash, K::Number})) {
        int year = t[4].value;
        if (t[4].digits <= 2)
            year += year < 30 ? 2000 : 1900;
        return makeDate(year, t[0].value, t[2].value);
    }
    if (isKind(t, {K::Number, K::Dash, K::Number, K::Dash, K::Number})) {
        if (!isFullYear(t[0]))
            return std::nullopt;
        return makeDate(t[0].value, t[2].value, t[4].value);
    }

    // Word forms: one optional comma between any two fields.
    for (auto it = t.begin(); it != t.end(); ++it) {
        if (it->kind == K::Comma) {
            if (it == t.begin() || it + 1 == t.end())
                return std::nullopt;
            t.erase(it);
            break;
        }
    }
    if (isKind(t, {K::Word, K::Number, K::Number}) && isFullYear(t[2]))
        return makeDate(t[2].value, t[0].value, t[1].value);
    if (isKind(t, {K::Number, K::Word, K::Number}) && isFullYear(t[2]))
        return makeDate(t[2].value, t[1].value, t[0].value);
    return std::nullopt;
}

QString formatDate(const QDate &d)
{
    return QLocale::c().toString(d, QStringLiteral("MMM dd, yyyy"));
}

QString formatDateText(const QString &text)
{
    const std::optional<QDate> d = parseDate(text);
    return d ? formatDate(*d) : text;
}

QString formatNowText(const QDateTime &now)
{
    // Runs every second for the life of the program: written out directly
    // rather than by parsing a format each time.
    static constexpr char kMonths[12][4] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                            "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const QDate d = now.date();
    const QTime t = now.time();
    if (!d.isValid() || !t.isValid() || d.year() < 1 || d.year() > 9999)
        return QLocale::c().toString(now, QStringLiteral("MMM dd, yyyy HH:mm:ss"));
    char text[24];
    const int n = std::snprintf(text, sizeof text, "%s %02d, %04d %02d:%02d:%02d", kMonths[d.month() - 1], d.day(),
                                d.year(), t.hour(), t.minute(), t.second());
    return QString::fromLatin1(text, n);
}

QString formatAlarmTipTime(const QDateTime &now)
{
    const QLocale c = QLocale::c();
    return c.toString(now.date(), QStringLiteral("MMM, dd")) + QStringLiteral(" at ")
        + c.toString(now.time(), QStringLiteral("HH:mm"));
}
