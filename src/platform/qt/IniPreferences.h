#pragma once

#include "platform/Preferences.h"

#include <QSettings>

// $XDG_CONFIG_HOME/quorvel-alarmclock/quorvel-alarmclock.conf, an INI file.
class IniPreferences : public Preferences {
public:
    IniPreferences();

    bool wakeComputer() const override;
    void setWakeComputer(bool on) override;

private:
    QSettings m_settings;
};
