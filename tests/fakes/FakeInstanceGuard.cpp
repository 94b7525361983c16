#include "fakes/FakeInstanceGuard.h"

bool FakeInstanceGuard::previousInstanceRunning()
{
    ++calls;
    return running;
}
