#include "platform/qt/LinuxWallTimer.h"

#include <QSocketNotifier>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <sys/timerfd.h>
#include <unistd.h>

LinuxWallTimer::LinuxWallTimer()
{
    m_fd = timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC);
    if (m_fd >= 0) {
        m_notifier = new QSocketNotifier(m_fd, QSocketNotifier::Read);
        QObject::connect(m_notifier, &QSocketNotifier::activated, [this] { fdReady(); });
    }
    m_fallback.setSingleShot(true);
    m_fallback.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_fallback, &QTimer::timeout, [this] { expired(); });
}

LinuxWallTimer::~LinuxWallTimer()
{
    delete m_notifier;
    if (m_fd >= 0)
        close(m_fd);
}

void LinuxWallTimer::startAt(const QDateTime &moment)
{
    const qint64 ms = moment.toMSecsSinceEpoch();
    m_active = true;
    if (m_fd >= 0 && ms > 0) {
        itimerspec spec{};
        spec.it_value.tv_sec = time_t(ms / 1000);
        spec.it_value.tv_nsec = long(ms % 1000) * 1000000L;
        if (timerfd_settime(m_fd, TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &spec, nullptr) == 0) {
            m_fallback.stop();
            return;
        }
    }
    // An elapsed-time timer may run a little early: aim just past the moment.
    const qint64 wait = ms - QDateTime::currentMSecsSinceEpoch() + 2;
    m_fallback.start(int(std::clamp<qint64>(wait, 0, 24 * 3600 * 1000)));
}

void LinuxWallTimer::stop()
{
    m_active = false;
    m_fallback.stop();
    if (m_fd >= 0) {
        const itimerspec off{};
        timerfd_settime(m_fd, 0, &off, nullptr);
    }
}

bool LinuxWallTimer::isActive() const { return m_active; }

void LinuxWallTimer::fdReady()
{
    // Either the moment came (a count) or the clock was set (ECANCELED):
    // both mean "look at the clock now". Anything else is a stale wake-up.
    std::uint64_t count = 0;
    if (read(m_fd, &count, sizeof count) == ssize_t(sizeof count) || errno == ECANCELED)
        expired();
}

void LinuxWallTimer::expired()
{
    if (!m_active)
        return;
    m_active = false;
    fire();
}
