#include "fakes/FakeProgramEnd.h"

void FakeProgramEnd::endProgram()
{
    ended = true;
    throw ProgramEnded();
}
