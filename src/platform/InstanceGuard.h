#pragma once

#include <functional>

// The previous-instance test, and a word between the two copies. The first
// call claims the program for this process; a lock left by a crashed
// process does not count.
class InstanceGuard {
public:
    virtual ~InstanceGuard() = default;
    virtual bool previousInstanceRunning() = 0;
    // Asks the copy that runs to bring its window forward; quietly nothing
    // when it cannot be reached.
    virtual void askPreviousToShow() = 0;
    // Runs when a later copy asks this one, which claimed the program, to
    // bring its window forward.
    void onShowRequested(std::function<void()> callback) { m_showRequested = std::move(callback); }

protected:
    void showRequested() const
    {
        if (m_showRequested)
            m_showRequested();
    }

private:
    std::function<void()> m_showRequested;
};
