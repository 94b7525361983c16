#include "fakes/FakeWallTimer.h"

void FakeWallTimer::startAt(const QDateTime &moment)
{
    armedFor = moment;
    active = true;
}

void FakeWallTimer::stop() { active = false; }

bool FakeWallTimer::isActive() const { return active; }

void FakeWallTimer::expire()
{
    if (!active)
        return;
    active = false;
    fire();
}
