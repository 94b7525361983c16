#include "rules/LatePolicy.h"

namespace {

constexpr qint64 kOnTimeSeconds = 60;
constexpr qint64 kLateSeconds = 30 * 60;
// Readings a tick apart differ by this much without anyone setting a clock.
constexpr qint64 kClockSlackMs = 2000;
constexpr qint64 kSleptMs = 1000;

} // namespace

Lateness latenessOf(qint64 secondsLate)
{
    if (secondsLate <= kOnTimeSeconds)
        return Lateness::OnTime;
    return secondsLate <= kLateSeconds ? Lateness::Late : Lateness::Missed;
}

GapCause gapCause(qint64 wallMs, qint64 bootMs, qint64 asleepMs)
{
    if (asleepMs >= kSleptMs)
        return GapCause::Asleep;
    return wallMs - bootMs > kClockSlackMs ? GapCause::ClockSet : GapCause::None;
}

QString lateNote(GapCause cause)
{
    switch (cause) {
    case GapCause::Asleep:
        return QStringLiteral("Late: the computer was asleep.");
    case GapCause::ClockSet:
        return QStringLiteral("Late: the clock was set forward.");
    case GapCause::None:
        break;
    }
    return QString();
}
