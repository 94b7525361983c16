#pragma once

#include "platform/Clock.h"

// A clock that moves only when told to. Starts at 2031-09-30 14:05:00.000 local.
class FakeClock : public Clock {
public:
    QDateTime current{QDate(2031, 9, 30), QTime(14, 5, 0, 0), Qt::LocalTime};

    QDateTime now() const override;

    void set(const QDateTime &moment);
    void advanceMs(qint64 ms);
    void advanceSeconds(int seconds);
};
