#pragma once

#include "platform/Autostart.h"

// An XDG autostart entry ($XDG_CONFIG_HOME/autostart/quorvel-alarmclock.desktop),
// which every freedesktop session (GNOME, KDE, Xfce...) starts at login.
class XdgAutostart : public Autostart {
public:
    // `program` is the executable the entry starts.
    explicit XdgAutostart(QString program);

    bool enabled() const override;
    bool setEnabled(bool on) override;
    QString entryPath() const override;

    // The entry's text for a program path.
    static QByteArray entryText(const QString &program);

private:
    QString m_program;
};
