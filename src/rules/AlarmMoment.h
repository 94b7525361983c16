#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>

// Seconds from 'now' to 'date' at the time of day in 'timeText', positive when
// that moment lies ahead. Counted on the wall-clock fields (whole days plus
// the time-of-day difference), so a daylight-saving change does not shift it.
// Throws AppError 13 "Type mismatch" when the time or a date is not valid and
// AppError 6 "Overflow" when the difference does not fit 32 bits.
qint32 secondsUntil(const QDateTime &now, const QDate &date, const QString &timeText);

// A wall-clock moment as a count of seconds: the local date and time fields,
// not the instant. It steps back in the hour a clock turns back and leaps
// over the hour one skips, as the wall clock does.
qint64 wallSecond(const QDate &date, const QTime &time);
// The fields back, in a time spec that keeps them as they are (a local
// time skipped in spring would otherwise move).
QDateTime fromWallSecond(qint64 wall);
