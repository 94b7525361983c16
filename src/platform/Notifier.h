#pragma once

#include <QString>

#include <functional>

// The desktop notification of an alarm. At most one is open: a newer alarm
// replaces the older one's. Where no notification server runs, show() and
// close() quietly do nothing.
class Notifier {
public:
    virtual ~Notifier() = default;
    // Shows the notification. While the alarm sounds it is critical, stays
    // until closed and offers "Stop"; a silent one is of normal urgency and
    // goes when the server decides.
    virtual void show(const QString &summary, const QString &body, bool sounding) = 0;
    // Closes the notification shown, if any.
    virtual void close() = 0;
    // "Missed alarms", one line a row: of normal urgency, apart from the
    // alarm's own, and open until the user dismisses it. Rows missed while
    // it is open join its list.
    virtual void showMissed(const QStringList &lines) = 0;
    // Whether a notification server is there to show them, as last heard.
    virtual bool available() const = 0;
    // Runs when the user presses "Stop" on the notification shown now.
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
