#pragma once

#include "platform/Clock.h"

class SystemClock : public Clock {
public:
    QDateTime now() const override;
};
