#include "rules/AlarmMoment.h"

#include "rules/AppError.h"
#include "rules/TimeText.h"

#include <limits>
#include <optional>

qint32 secondsUntil(const QDateTime &now, const QDate &date, const QString &timeText)
{
    const std::optional<QTime> time = parseTimeOfDay(timeText);
    if (!time || !date.isValid() || !now.date().isValid() || !now.time().isValid())
        throw AppError(13, QStringLiteral("Type mismatch"));

    // Whole seconds only: the milliseconds of 'now' must not round anything.
    const qint64 nowSecond = now.time().msecsSinceStartOfDay() / 1000;
    const qint64 targetSecond = time->msecsSinceStartOfDay() / 1000;
    const qint64 seconds = now.date().daysTo(date) * 86400 + targetSecond - nowSecond;
    if (seconds < std::numeric_limits<qint32>::min() || seconds > std::numeric_limits<qint32>::max())
        throw AppError(6, QStringLiteral("Overflow"));
    return qint32(seconds);
}

qint64 wallSecond(const QDate &date, const QTime &time)
{
    return date.toJulianDay() * 86400 + time.msecsSinceStartOfDay() / 1000;
}

QDateTime fromWallSecond(qint64 wall)
{
    const qint64 day = wall >= 0 ? wall / 86400 : (wall - 86399) / 86400;
    return QDateTime(QDate::fromJulianDay(day), QTime::fromMSecsSinceStartOfDay(int(wall - day * 86400) * 1000),
                     Qt::UTC);
}
