#pragma once

#include "platform/Notifier.h"

#include <QObject>

// Alarm notifications through the desktop's notification server
// (org.freedesktop.Notifications on the session bus). Every call is
// asynchronous: a missing or hung server never holds up the window.
class DBusNotifier : public QObject, public Notifier {
    Q_OBJECT
public:
    DBusNotifier();

    void show(const QString &summary, const QString &body) override;
    void close() override;

private slots:
    void actionInvoked(uint id, const QString &key);
    void notificationClosed(uint id, uint reason);

private:
    void closeId(uint id);

    // The server's id of the notification shown, 0 for none.
    uint m_id = 0;
    // Notify calls still waiting for their id.
    int m_pending = 0;
    // close() came while a Notify was pending: close what it shows.
    bool m_closeWhenShown = false;
};
