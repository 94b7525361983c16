#include "fakes/FakeClock.h"

QDateTime FakeClock::now() const
{
    return current;
}

void FakeClock::set(const QDateTime &moment)
{
    current = moment;
}

void FakeClock::advanceMs(qint64 ms)
{
    current = current.addMSecs(ms);
}

void FakeClock::advanceSeconds(int seconds)
{
    current = current.addSecs(seconds);
}
