#include "rules/TickSchedule.h"

QDateTime nextTickAt(const QDateTime &now, bool wholeMinutes)
{
    // Counted on the instant, not by setting clock fields: in the hour a
    // clock turns back, "02:00:00" names two instants and a field-wise
    // truncation would pick the later one, an hour ahead.
    const QTime t = now.time();
    const qint64 into = (wholeMinutes ? t.second() * 1000 : 0) + t.msec();
    return now.addMSecs((wholeMinutes ? 60000 : 1000) - into);
}
