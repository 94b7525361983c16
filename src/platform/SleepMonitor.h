#pragma once

#include <functional>

// The machine's sleep, as its login manager tells it: a word just before it
// sleeps and just after it wakes. While the program runs it holds a lock
// that delays a sleep for a moment, so that it hears of it in time.
class SleepMonitor {
public:
    virtual ~SleepMonitor() = default;
    // Runs with true before the machine sleeps, with false after it wakes.
    // The sleep goes on when the call returns: the lock is let go then, and
    // taken again after the wake.
    void onPrepareForSleep(std::function<void(bool sleeping)> callback) { m_prepare = std::move(callback); }

protected:
    void prepareForSleep(bool sleeping) const
    {
        if (m_prepare)
            m_prepare(sleeping);
    }

private:
    std::function<void(bool)> m_prepare;
};
