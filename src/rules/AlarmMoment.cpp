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
