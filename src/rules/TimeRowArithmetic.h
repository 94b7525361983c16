#pragma once

#include <QDateTime>
#include <QString>

struct TimeRowTarget {
    QString dateText; // "Sep 05, 2031"
    QString timeText; // "hh:nn", or the raw "h:m" when an offset went negative
};

// 'now' plus the given days, hours and minutes (seconds dropped). Overflowing
// minutes and hours carry upwards; negative results are left as they are.
// Throws AppError 6 "Overflow" when the date leaves the years 100..9999 or a
// field no longer fits 32 bits.
TimeRowTarget calculateDayHourMins(const QDateTime &now, qint32 days, qint32 hours, qint32 minutes);
