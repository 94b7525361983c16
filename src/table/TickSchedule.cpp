#include "table/TickSchedule.h"

#include <algorithm>

int msUntilNextTick(int msIntoSecond)
{
    const int ms = std::clamp(msIntoSecond, 0, 999);
    return 1000 - ms + kTickOffsetMs;
}
