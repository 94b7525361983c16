#pragma once

#include <QDateTime>
#include <QString>

#include <functional>

// Wakes the machine from suspend for the next alarm, where the machine and
// the program may: a real-time clock that can wake it, and the rights to set
// it (a helper given them when the program is installed).
class WakeAlarm {
public:
    virtual ~WakeAlarm() = default;
    // Why waking cannot work here, or nothing when it can, as known now.
    virtual QString unavailableReason() const = 0;
    // Whether the user wants it; off, nothing is armed.
    virtual void setEnabled(bool on) = 0;
    // The moment to wake at; an invalid one when there is none. Armed (or
    // moved) only when enabled and when it changes.
    virtual void setNextAlarm(const QDateTime &moment) = 0;
    // Runs when waking turns out not to work after all, with the reason.
    void onUnavailable(std::function<void(const QString &reason)> callback) { m_unavailable = std::move(callback); }

protected:
    void becameUnavailable(const QString &reason) const
    {
        if (m_unavailable)
            m_unavailable(reason);
    }

private:
    std::function<void(const QString &)> m_unavailable;
};
