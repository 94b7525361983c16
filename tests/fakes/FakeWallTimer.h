#pragma once

#include "platform/WallTimer.h"

// Remembers the moment it was armed for; fires only when a test says so.
class FakeWallTimer : public WallTimer {
public:
    QDateTime armedFor;
    bool active = false;

    void startAt(const QDateTime &moment) override;
    void stop() override;
    bool isActive() const override;
    // What the real timer does when its moment comes.
    void expire();
};
