#include "platform/qt/QtTrayIcon.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusInterface>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QTimer>

namespace {

const QString kWatcher = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString kWatcherPath = QStringLiteral("/StatusNotifierWatcher");

// The test Qt makes, once per process, to choose a StatusNotifierItem host
// over an XEmbed tray.
bool statusNotifierHostRegistered()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || !bus.interface() || !bus.interface()->isServiceRegistered(kWatcher))
        return false;
    QDBusInterface iface(kWatcher, kWatcherPath, kWatcher, bus);
    return iface.property("IsStatusNotifierHostRegistered").toBool();
}

} // namespace

QtTrayIcon::QtTrayIcon(const QIcon &icon)
    : m_icon(icon), m_statusNotifierHost(statusNotifierHostRegistered()), m_hostRegistered(m_statusNotifierHost)
{
    if (m_statusNotifierHost) {
        QDBusConnection bus = QDBusConnection::sessionBus();
        auto *watcher = new QDBusServiceWatcher(kWatcher, bus, QDBusServiceWatcher::WatchForOwnerChange, this);
        connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &QtTrayIcon::askForHost);
        for (const char *signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
            bus.connect(kWatcher, kWatcherPath, kWatcher, QLatin1String(signal), this, SLOT(askForHost()));
    }
    QObject::connect(&m_icon, &QSystemTrayIcon::activated, &m_icon,
                     [this](QSystemTrayIcon::ActivationReason reason) {
                         const std::optional<int> message = messageFor(reason, m_statusNotifierHost);
                         if (m_handler && message)
                             m_handler(*message);
                     });
}

std::optional<int> QtTrayIcon::messageFor(QSystemTrayIcon::ActivationReason reason, bool statusNotifierHost)
{
    switch (reason) {
    case QSystemTrayIcon::DoubleClick:
        return LeftDoubleClick;
    case QSystemTrayIcon::Trigger:
        if (statusNotifierHost)
            return LeftDoubleClick;
        return std::nullopt;
    case QSystemTrayIcon::Context:
        return RightButtonDown;
    default:
        return std::nullopt;
    }
}

bool QtTrayIcon::available() const
{
    // Qt asks an XEmbed tray afresh each time; its answer for a
    // StatusNotifierItem host is the one it had at start-up.
    return m_statusNotifierHost ? m_hostRegistered : QSystemTrayIcon::isSystemTrayAvailable();
}

void QtTrayIcon::askForHost()
{
    QDBusMessage get = QDBusMessage::createMethodCall(kWatcher, kWatcherPath,
                                                      QStringLiteral("org.freedesktop.DBus.Properties"),
                                                      QStringLiteral("Get"));
    get << kWatcher << QStringLiteral("IsStatusNotifierHostRegistered");
    // Asked without waiting: a watcher that hangs must not hold up the window.
    auto *reply = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(get, 2000), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *call) {
        call->deleteLater();
        const QDBusPendingReply<QDBusVariant> answer = *call;
        m_hostRegistered = !answer.isError() && answer.value().variant().toBool();
    });
}

void QtTrayIcon::add(const QString &tip)
{
    m_hidePending = false;
    m_icon.setToolTip(tip);
    if (!m_icon.isVisible())
        m_icon.show();
}

void QtTrayIcon::remove()
{
    m_hidePending = true;
    QTimer::singleShot(0, &m_icon, [this] {
        if (m_hidePending)
            m_icon.hide();
        m_hidePending = false;
    });
}

void QtTrayIcon::setMouseHandler(std::function<void(int message)> handler)
{
    m_handler = std::move(handler);
}
