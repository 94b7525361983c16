#pragma once

#include <string>

// One line of the wake-up helper's input: "ARM <seconds since the epoch>"
// or "DISARM". An ARM takes only a plain decimal moment in the future and at
// most 400 days ahead; anything else is refused with the reason.
struct WakeCommand {
    enum Kind { Arm, Disarm, Refused } kind = Refused;
    long long at = 0;   // for Arm
    std::string reason; // for Refused
};

WakeCommand parseWakeCommand(const std::string &line, long long now);
