#pragma once

// Ends the process at once, with no further unload processing (the classic
// "End" statement). Never returns.
class ProgramEnd {
public:
    virtual ~ProgramEnd() = default;
    [[noreturn]] virtual void endProgram() = 0;
};
