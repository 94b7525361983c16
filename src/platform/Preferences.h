#pragma once

// The program's own settings that the database does not hold (its tables
// and columns stay as they are): a file in the user's configuration folder.
class Preferences {
public:
    virtual ~Preferences() = default;
    virtual bool wakeComputer() const = 0;
    virtual void setWakeComputer(bool on) = 0;
};
