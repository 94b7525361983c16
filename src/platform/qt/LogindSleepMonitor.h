#pragma once

#include "platform/SleepMonitor.h"

#include <QDBusUnixFileDescriptor>
#include <QObject>

// Sleep and wake as logind tells them on the system bus (PrepareForSleep),
// with a "delay" inhibitor lock held while awake. Where there is no logind
// (a container, another init) this quietly does nothing.
class LogindSleepMonitor : public QObject, public SleepMonitor {
    Q_OBJECT
public:
    LogindSleepMonitor();

private slots:
    void prepareForSleepSignal(bool sleeping);

private:
    // Asks for the lock without waiting for the answer.
    void takeLock();

    QDBusUnixFileDescriptor m_lock;
};
