#include "platform/qt/QtTrayIcon.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusInterface>
#include <QTimer>

namespace {

// The test Qt makes, once per process, to choose a StatusNotifierItem host
// over an XEmbed tray.
bool statusNotifierHostRegistered()
{
    const QString watcher = QStringLiteral("org.kde.StatusNotifierWatcher");
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || !bus.interface() || !bus.interface()->isServiceRegistered(watcher))
        return false;
    QDBusInterface iface(watcher, QStringLiteral("/StatusNotifierWatcher"), watcher, bus);
    return iface.property("IsStatusNotifierHostRegistered").toBool();
}

} // namespace

QtTrayIcon::QtTrayIcon(const QIcon &icon) : m_icon(icon), m_statusNotifierHost(statusNotifierHostRegistered())
{
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
    // Asked each time: a panel may start or end while the program runs.
    return QSystemTrayIcon::isSystemTrayAvailable();
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
