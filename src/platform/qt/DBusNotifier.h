#pragma once

#include "platform/Notifier.h"

#include <QObject>
#include <optional>

// Alarm notifications through the desktop's notification server
// (org.freedesktop.Notifications on the session bus). Every call is
// asynchronous: a missing or hung server never holds up the window. A
// notification asked for while the server has not yet told the id of the
// one before waits for that id, so it replaces that one rather than
// opening beside it.
class DBusNotifier : public QObject, public Notifier {
    Q_OBJECT
public:
    DBusNotifier();

    void show(const QString &summary, const QString &body, bool sounding) override;
    void close() override;
    bool available() const override { return m_available; }
    void showMissed(const QStringList &lines) override;

private slots:
    void actionInvoked(uint id, const QString &key);
    void notificationClosed(uint id, uint reason);

private:
    struct Request {
        QString summary, body;
        bool sounding;
    };
    void send(const Request &request);
    void replied(uint id, bool ok);
    // Asks the bus whether a server runs or would be started for a call.
    void askForServer();

    // The server's id of the notification shown, 0 for none.
    uint m_id = 0;
    // A Notify call is waiting for its id.
    bool m_pending = false;
    // What to do once it has it: show this one next, or close.
    std::optional<Request> m_next;
    bool m_closeNext = false;
    bool m_available = false;
    // The missed alarms' notification, apart from the alarm's own.
    uint m_missedId = 0;
    QStringList m_missed;
};
