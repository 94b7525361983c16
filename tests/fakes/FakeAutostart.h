#pragma once

#include "platform/Autostart.h"

class FakeAutostart : public Autostart {
public:
    bool on = false;
    // False: creating or removing the entry fails.
    bool works = true;

    bool enabled() const override { return on; }
    bool setEnabled(bool wanted) override;
    QString entryPath() const override { return QStringLiteral("/home/user/.config/autostart/quorvel-alarmclock.desktop"); }
};
