#pragma once

#include "platform/InstanceGuard.h"

class FakeInstanceGuard : public InstanceGuard {
public:
    bool running = false;
    bool previousInstanceRunning() override { return running; }
};
