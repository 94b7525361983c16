#pragma once

#include <QString>

#include <functional>

// A desktop notification for a ringing alarm, with a "Stop" action. Where no
// notification server runs, show() and close() quietly do nothing.
class Notifier {
public:
    virtual ~Notifier() = default;
    // Shows the notification, replacing the one shown before.
    virtual void show(const QString &summary, const QString &body) = 0;
    // Closes the notification shown, if any.
    virtual void close() = 0;
    // Runs when the user presses the notification's "Stop" action.
    void onStop(std::function<void()> callback) { m_stop = std::move(callback); }

protected:
    void stopPressed() const
    {
        if (m_stop)
            m_stop();
    }

private:
    std::function<void()> m_stop;
};
