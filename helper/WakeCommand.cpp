#include "WakeCommand.h"

namespace {

constexpr long long kFarthestAhead = 400LL * 24 * 3600;
// Enough digits for any moment up to 400 days from any time a long long holds.
constexpr std::size_t kMostDigits = 18;

WakeCommand refused(const char *reason) { return {WakeCommand::Refused, 0, reason}; }

} // namespace

WakeCommand parseWakeCommand(const std::string &line, long long now)
{
    if (line == "DISARM")
        return {WakeCommand::Disarm, 0, {}};
    const std::string arm = "ARM ";
    if (line.compare(0, arm.size(), arm) != 0)
        return refused("unknown command");
    const std::string digits = line.substr(arm.size());
    if (digits.empty() || digits.size() > kMostDigits || digits.find_first_not_of("0123456789") != std::string::npos)
        return refused("not a decimal time");
    long long at = 0;
    for (const char c : digits)
        at = at * 10 + (c - '0');
    if (at <= now)
        return refused("time not in the future");
    if (at - now > kFarthestAhead)
        return refused("time more than 400 days ahead");
    return {WakeCommand::Arm, at, {}};
}
