#pragma once

#include <QString>

// Whether the program starts with the user's desktop session. The entry's
// presence is the setting; nothing is stored elsewhere.
class Autostart {
public:
    virtual ~Autostart() = default;
    virtual bool enabled() const = 0;
    // Creates or removes the entry. False when that failed.
    virtual bool setEnabled(bool on) = 0;
    // The entry's file, for the message when it cannot be changed.
    virtual QString entryPath() const = 0;
};
