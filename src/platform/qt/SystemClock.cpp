#include "platform/qt/SystemClock.h"

#include <ctime>

namespace {

qint64 readMs(clockid_t clock)
{
    timespec t{};
    clock_gettime(clock, &t);
    return qint64(t.tv_sec) * 1000 + t.tv_nsec / 1000000;
}

} // namespace

QDateTime SystemClock::now() const
{
    return QDateTime::currentDateTime();
}

qint64 SystemClock::sinceBootMs() const { return readMs(CLOCK_BOOTTIME); }

qint64 SystemClock::asleepMs() const
{
    // Read so that a sleep between the two readings cannot make it negative.
    const qint64 monotonic = readMs(CLOCK_MONOTONIC);
    return readMs(CLOCK_BOOTTIME) - monotonic;
}
