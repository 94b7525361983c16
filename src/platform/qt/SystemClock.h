#pragma once

#include "platform/Clock.h"

class SystemClock : public Clock {
public:
    QDateTime now() const override;
    qint64 sinceBootMs() const override;
    qint64 asleepMs() const override;
};
