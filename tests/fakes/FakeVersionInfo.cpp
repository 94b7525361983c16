#include "fakes/FakeVersionInfo.h"

int FakeVersionInfo::major() const
{
    return maj;
}

int FakeVersionInfo::minor() const
{
    return min;
}

int FakeVersionInfo::revision() const
{
    return rev;
}
