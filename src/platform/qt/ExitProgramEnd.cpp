#include "platform/qt/ExitProgramEnd.h"

#include <cstdio>
#include <cstdlib>

void ExitProgramEnd::endProgram()
{
    // No destructors, no atexit handlers, no Qt shutdown: only buffered output survives.
    std::fflush(nullptr);
    std::_Exit(0);
}
