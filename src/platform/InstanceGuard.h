#pragma once

// The previous-instance test. The first call claims the program for this
// process; a lock left by a crashed process does not count.
class InstanceGuard {
public:
    virtual ~InstanceGuard() = default;
    virtual bool previousInstanceRunning() = 0;
};
