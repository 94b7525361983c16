#include "platform/qt/DBusNotifier.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>

namespace {

const QString kService = QStringLiteral("org.freedesktop.Notifications");
const QString kPath = QStringLiteral("/org/freedesktop/Notifications");
const QString kStopKey = QStringLiteral("stop");
// Long enough for a busy server, short enough that a hung one's pending calls
// do not pile up.
constexpr int kTimeoutMs = 5000;

QDBusMessage call(const QString &method)
{
    return QDBusMessage::createMethodCall(kService, kPath, kService, method);
}

} // namespace

DBusNotifier::DBusNotifier()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    bus.connect(kService, kPath, kService, QStringLiteral("ActionInvoked"), this,
                SLOT(actionInvoked(uint, QString)));
    bus.connect(kService, kPath, kService, QStringLiteral("NotificationClosed"), this,
                SLOT(notificationClosed(uint, uint)));
}

void DBusNotifier::show(const QString &summary, const QString &body)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    QDBusMessage message = call(QStringLiteral("Notify"));
    const QVariantMap hints{
        {QStringLiteral("urgency"), QVariant::fromValue(uchar(2))}, // critical: it stays until the alarm ends
        {QStringLiteral("desktop-entry"), QStringLiteral("quorvel-alarmclock")},
    };
    message << QStringLiteral("Quorvel Alarm Clock") << m_id << QStringLiteral("quorvel-alarmclock") << summary
            << body << QStringList{kStopKey, QStringLiteral("Stop")} << hints << qint32(0);
    ++m_pending;
    m_closeWhenShown = false;
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(message, kTimeoutMs), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *w) {
        w->deleteLater();
        --m_pending;
        const QDBusPendingReply<uint> reply = *w;
        if (reply.isError())
            return;
        m_id = reply.value();
        if (m_closeWhenShown && m_pending == 0) {
            m_closeWhenShown = false;
            close();
        }
    });
}

void DBusNotifier::close()
{
    if (m_pending > 0)
        m_closeWhenShown = true;
    if (m_id == 0)
        return;
    closeId(m_id);
    m_id = 0;
}

void DBusNotifier::closeId(uint id)
{
    QDBusMessage message = call(QStringLiteral("CloseNotification"));
    message << id;
    // Nothing to learn from the answer; the call must not wait for it.
    QDBusConnection::sessionBus().asyncCall(message, kTimeoutMs);
}

void DBusNotifier::actionInvoked(uint id, const QString &key)
{
    if (id != 0 && id == m_id && key == kStopKey)
        stopPressed();
}

void DBusNotifier::notificationClosed(uint id, uint reason)
{
    Q_UNUSED(reason);
    if (id == m_id)
        m_id = 0;
}
