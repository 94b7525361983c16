#include "platform/qt/DBusNotifier.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
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
    auto *watcher = new QDBusServiceWatcher(kService, bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &DBusNotifier::askForServer);
    askForServer();
}

void DBusNotifier::askForServer()
{
    // A server that runs, or else one the bus starts for the first call.
    const auto ask = [this](const QString &method, const QVariantList &arguments, auto answered) {
        QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                                           QStringLiteral("/org/freedesktop/DBus"),
                                                           QStringLiteral("org.freedesktop.DBus"), method);
        call.setArguments(arguments);
        auto *watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call, kTimeoutMs), this);
        connect(watcher, &QDBusPendingCallWatcher::finished, this, [answered](QDBusPendingCallWatcher *w) {
            w->deleteLater();
            answered(QDBusMessage(w->reply()).arguments().value(0));
        });
    };
    ask(QStringLiteral("NameHasOwner"), {kService}, [this, ask](const QVariant &owned) {
        if (owned.toBool())
            m_available = true;
        else
            ask(QStringLiteral("ListActivatableNames"), {}, [this](const QVariant &names) {
                m_available = names.toStringList().contains(kService);
            });
    });
}

void DBusNotifier::show(const QString &summary, const QString &body, bool sounding)
{
    m_closeNext = false;
    if (m_pending)
        m_next = Request{summary, body, sounding};
    else
        send(Request{summary, body, sounding});
}

void DBusNotifier::send(const Request &request)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    QDBusMessage message = call(QStringLiteral("Notify"));
    // Critical while it sounds: it stays until the alarm ends. A silent one
    // is of normal urgency and expires as the server decides.
    const QVariantMap hints{
        {QStringLiteral("urgency"), QVariant::fromValue(uchar(request.sounding ? 2 : 1))},
        {QStringLiteral("desktop-entry"), QStringLiteral("quorvel-alarmclock")},
    };
    const QStringList actions = request.sounding ? QStringList{kStopKey, QStringLiteral("Stop")} : QStringList{};
    message << QStringLiteral("Quorvel Alarm Clock") << m_id << QStringLiteral("quorvel-alarmclock")
            << request.summary << request.body << actions << hints << qint32(request.sounding ? 0 : -1);
    m_pending = true;
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(message, kTimeoutMs), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *w) {
        w->deleteLater();
        const QDBusPendingReply<uint> reply = *w;
        replied(reply.isError() ? 0 : reply.value(), !reply.isError());
    });
}

void DBusNotifier::replied(uint id, bool ok)
{
    m_pending = false;
    m_available = ok;
    if (ok)
        m_id = id;
    if (m_next)
        send(*std::exchange(m_next, std::nullopt));
    else if (std::exchange(m_closeNext, false))
        close();
}

void DBusNotifier::close()
{
    m_next.reset();
    if (m_pending) {
        m_closeNext = true;
        return;
    }
    if (m_id == 0)
        return;
    QDBusMessage message = call(QStringLiteral("CloseNotification"));
    message << std::exchange(m_id, 0);
    // Nothing to learn from the answer; the call must not wait for it.
    QDBusConnection::sessionBus().asyncCall(message, kTimeoutMs);
}

void DBusNotifier::showMissed(const QStringList &lines)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    for (const QString &line : lines)
        if (!m_missed.contains(line))
            m_missed << line;
    QDBusMessage message = call(QStringLiteral("Notify"));
    const QVariantMap hints{{QStringLiteral("urgency"), QVariant::fromValue(uchar(1))},
                            {QStringLiteral("desktop-entry"), QStringLiteral("quorvel-alarmclock")}};
    // No expiry: it stays until the user has read it.
    message << QStringLiteral("Quorvel Alarm Clock") << m_missedId << QStringLiteral("quorvel-alarmclock")
            << QStringLiteral("Missed alarms") << m_missed.join(u'\n') << QStringList() << hints << qint32(0);
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(message, kTimeoutMs), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *w) {
        w->deleteLater();
        const QDBusPendingReply<uint> reply = *w;
        if (!reply.isError())
            m_missedId = reply.value();
    });
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
    if (id == m_missedId) { // dismissed: the next list starts afresh
        m_missedId = 0;
        m_missed.clear();
    }
}
