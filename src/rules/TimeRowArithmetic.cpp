#include "rules/TimeRowArithmetic.h"

#include "rules/AppError.h"
#include "rules/DateText.h"
#include "rules/TimeText.h"

#include <limits>

namespace {

[[noreturn]] void overflow() { throw AppError(6, QStringLiteral("Overflow")); }

qint32 checked(qint64 v)
{
    if (v < std::numeric_limits<qint32>::min() || v > std::numeric_limits<qint32>::max())
        overflow();
    return qint32(v);
}

} // namespace

TimeRowTarget calculateDayHourMins(const QDateTime &now, qint32 days, qint32 hours, qint32 minutes)
{
    qint64 h = checked(qint64(now.time().hour()) + hours);
    qint64 m = checked(qint64(now.time().minute()) + minutes);
    qint64 d = days;

    // Carry in one step; the offsets can be far too large to count through.
    if (m > 59) {
        h = checked(h + m / 60);
        m %= 60;
    }
    if (h > 23) {
        d = checked(d + h / 24);
        h %= 24;
    }

    const QDate date = now.date().addDays(d);
    if (!date.isValid() || date.year() < 100 || date.year() > 9999)
        overflow();

    return TimeRowTarget{formatDate(date), formatTimeText(QStringLiteral("%1:%2").arg(h).arg(m))};
}
