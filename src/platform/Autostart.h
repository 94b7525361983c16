#pragma once

#include <QString>

// Whether the program starts with the user's desktop session. The entry is
// the setting, nothing is stored elsewhere: present and not switched off by
// the desktop's own settings (Hidden, X-GNOME-Autostart-enabled).
class Autostart {
public:
    virtual ~Autostart() = default;
    virtual bool enabled() const = 0;
    // Writes an entry that is on, or removes it. False when that failed.
    virtual bool setEnabled(bool on) = 0;
    // The entry's file, for the message when it cannot be changed.
    virtual QString entryPath() const = 0;
};
