#pragma once

#include "platform/ProgramEnd.h"

#include <exception>

// Thrown by FakeProgramEnd so that nothing after endProgram() runs.
struct ProgramEnded : std::exception {
    const char *what() const noexcept override { return "ProgramEnded"; }
};

class FakeProgramEnd : public ProgramEnd {
public:
    bool ended = false;
    [[noreturn]] void endProgram() override
    {
        ended = true;
        throw ProgramEnded();
    }
};
