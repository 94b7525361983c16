#pragma once

#include "platform/WallTimer.h"

#include <QTimer>

class QSocketNotifier;

// A CLOCK_REALTIME timerfd with an absolute expiry, cancelled (and so
// reported at once) when the system clock is set. Falls back to a precise
// elapsed-time timer if the kernel refuses a timerfd.
class LinuxWallTimer : public WallTimer {
public:
    LinuxWallTimer();
    ~LinuxWallTimer() override;
    LinuxWallTimer(const LinuxWallTimer &) = delete;
    LinuxWallTimer &operator=(const LinuxWallTimer &) = delete;

    void startAt(const QDateTime &moment) override;
    void stop() override;
    bool isActive() const override;

private:
    void fdReady();
    void expired();

    int m_fd = -1;
    bool m_active = false;
    QSocketNotifier *m_notifier = nullptr;
    QTimer m_fallback;
};
