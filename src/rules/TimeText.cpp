#include "rules/TimeText.h"

#include "rules/ValueConversions.h"

namespace {

bool isAsciiDigit(QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); }

// One or two digits; -1 otherwise.
int timeField(QStringView field)
{
    if (field.isEmpty() || field.size() > 2)
        return -1;
    int value = 0;
    for (QChar c : field) {
        if (!isAsciiDigit(c))
            return -1;
        value = value * 10 + (c.unicode() - u'0');
    }
    return value;
}

} // namespace

std::optional<QTime> parseTimeOfDay(const QString &text)
{
    const QString t = trimBlanks(text);
    if (t.size() > 8) // "hh:nn:ss"
        return std::nullopt;
    const QList<QStringView> fields = QStringView(t).split(QLatin1Char(':'));
    if (fields.size() != 2 && fields.size() != 3)
        return std::nullopt;
    const int hour = timeField(fields[0]);
    const int minute = timeField(fields[1]);
    const int second = fields.size() == 3 ? timeField(fields[2]) : 0;
    if (hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59)
        return std::nullopt;
    return QTime(hour, minute, second);
}

QString formatTimeText(const QString &text)
{
    const std::optional<QTime> time = parseTimeOfDay(text);
    return time ? time->toString(QStringLiteral("HH:mm")) : text;
}

QString timeOrEmpty(const QString &text)
{
    const std::optional<QTime> time = parseTimeOfDay(text);
    return time ? time->toString(QStringLiteral("HH:mm")) : QString();
}

QString normaliseTime(const QString &text)
{
    if (text.size() != 5)
        return QString();
    QString t = text;
    if (integerValue(t.left(2)) >= 24)
        t = QStringLiteral("00:") + t.mid(3, 2);
    if (integerValue(t.mid(3, 2)) >= 60)
        t = t.left(2) + QStringLiteral(":00");
    return timeOrEmpty(t);
}

std::optional<QChar> filterTimeKey(QChar typed)
{
    const char16_t code = typed.unicode();
    if (code == 8 || (code >= 48 && code <= 58))
        return typed;
    if (code == 32)
        return QLatin1Char(':');
    return std::nullopt;
}
