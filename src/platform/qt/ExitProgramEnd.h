#pragma once

#include "platform/ProgramEnd.h"

class ExitProgramEnd : public ProgramEnd {
public:
    [[noreturn]] void endProgram() override;
};
