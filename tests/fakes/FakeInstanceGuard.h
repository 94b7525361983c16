#pragma once

#include "platform/InstanceGuard.h"

class FakeInstanceGuard : public InstanceGuard {
public:
    bool running = false;
    int calls = 0;

    bool previousInstanceRunning() override;
};
