#include "table/TickSchedule.h"

QDateTime nextTickAt(const QDateTime &now, bool wholeMinutes)
{
    const QTime t = now.time();
    QDateTime second = now;
    second.setTime(QTime(t.hour(), t.minute(), t.second()));
    return second.addSecs(wholeMinutes ? 60 - t.second() : 1);
}
