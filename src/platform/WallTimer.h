#pragma once

#include <QDateTime>

#include <functional>

// A one-shot wake-up at a wall-clock moment. Unlike a timer that counts
// elapsed time, it keeps to the wall clock when the system time is set or
// the machine resumes from suspend: it then calls back at once, so the
// caller can look at the clock again and re-arm.
class WallTimer {
public:
    virtual ~WallTimer() = default;
    // Replaces any earlier request. A moment already past calls back at once.
    virtual void startAt(const QDateTime &moment) = 0;
    virtual void stop() = 0;
    virtual bool isActive() const = 0;
    void onTimeout(std::function<void()> callback) { m_callback = std::move(callback); }

protected:
    void fire() const
    {
        if (m_callback)
            m_callback();
    }

private:
    std::function<void()> m_callback;
};
