#pragma once

#include "platform/WakeAlarm.h"

#include <QObject>

class QProcess;

// Wakes the machine through the helper installed beside the program
// (quorvel-alarmclock-wake, given cap_wake_alarm by the package), which
// holds one CLOCK_REALTIME_ALARM timer. It is told "ARM <seconds since the
// epoch>" or "DISARM" and answers "OK" or "ERR <reason>"; it ends, and the
// wake-up with it, when the program does.
class HelperWakeAlarm : public QObject, public WakeAlarm {
    Q_OBJECT
public:
    HelperWakeAlarm(const QString &helperPath, bool clockCanWake);
    // Whether this machine has a clock that can wake it from suspend.
    static bool clockCanWake();
    ~HelperWakeAlarm() override;

    QString unavailableReason() const override { return m_reason; }
    void setEnabled(bool on) override;
    void setNextAlarm(const QDateTime &moment) override;

private:
    // Tells the helper what it should hold now, when that has changed; off,
    // the helper ends.
    void update();
    void updateLater();
    void answered(QProcess &helper);

    const QString m_helper;
    QString m_reason;
    QProcess *m_process = nullptr;
    bool m_enabled = false;
    QDateTime m_next;
    bool m_updatePending = false;
    // What the helper holds: seconds since the epoch, or 0 for nothing.
    qint64 m_armed = 0;
};
