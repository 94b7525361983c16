#include "fakes/FakeAutostart.h"

bool FakeAutostart::setEnabled(bool wanted)
{
    if (works)
        on = wanted;
    return works;
}
