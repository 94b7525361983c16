#include "platform/qt/BuildVersionInfo.h"

int BuildVersionInfo::major() const
{
    return ALARMCLOCK_VERSION_MAJOR;
}

int BuildVersionInfo::minor() const
{
    return ALARMCLOCK_VERSION_MINOR;
}

int BuildVersionInfo::revision() const
{
    return ALARMCLOCK_VERSION_PATCH;
}
