#pragma once

#include <QDateTime>

// Local wall-clock time, with milliseconds, and the machine's own clocks
// that tell a sleep from a clock that was set.
class Clock {
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;
    // Milliseconds since boot, time asleep included (CLOCK_BOOTTIME). It moves
    // with the wall clock unless someone sets the wall clock.
    virtual qint64 sinceBootMs() const = 0;
    // Of those, the milliseconds spent asleep (CLOCK_BOOTTIME less
    // CLOCK_MONOTONIC, which stands still in a sleep).
    virtual qint64 asleepMs() const = 0;
};
