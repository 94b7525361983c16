#include "platform/qt/QtTrayIcon.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusInterface>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QGuiApplication>
#include <QMenu>
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

QtTrayIcon::QtTrayIcon(const QIcon &icon) : m_image(icon), m_hostRegistered(statusNotifierHostRegistered())
{
    const bool wayland = QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
    if (m_hostRegistered || wayland) {
        QDBusConnection bus = QDBusConnection::sessionBus();
        auto *watcher = new QDBusServiceWatcher(kWatcher, bus, QDBusServiceWatcher::WatchForOwnerChange, this);
        connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &QtTrayIcon::askForHost);
        for (const char *signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
            bus.connect(kWatcher, kWatcherPath, kWatcher, QLatin1String(signal), this, SLOT(askForHost()));
    }
    // Made now, Qt settles for XEmbed when no StatusNotifierItem host runs:
    // on X11 a late tray of either kind shows XEmbed icons, on Wayland none.
    if (m_hostRegistered || !wayland)
        makeIcon();
}

QtTrayIcon::~QtTrayIcon() = default;

void QtTrayIcon::makeIcon()
{
    m_statusNotifierHost = m_hostRegistered;
    m_icon = std::make_unique<QSystemTrayIcon>(m_image);
    QObject::connect(m_icon.get(), &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        const std::optional<int> message = messageFor(reason, m_statusNotifierHost, m_menu != nullptr);
        if (m_handler && message)
            m_handler(*message);
    });
    m_icon->setContextMenu(m_menu);
    m_icon->setToolTip(m_tip);
    if (m_shown)
        m_icon->show();
}

std::optional<int> QtTrayIcon::messageFor(QSystemTrayIcon::ActivationReason reason, bool statusNotifierHost,
                                          bool ownMenu)
{
    switch (reason) {
    case QSystemTrayIcon::DoubleClick:
        return LeftDoubleClick;
    case QSystemTrayIcon::Trigger:
        if (statusNotifierHost)
            return LeftDoubleClick;
        return std::nullopt;
    case QSystemTrayIcon::Context:
        if (ownMenu)
            return std::nullopt;
        return RightButtonDown;
    default:
        return std::nullopt;
    }
}

bool QtTrayIcon::available() const
{
    // Qt asks an XEmbed tray afresh each time; its answer for a
    // StatusNotifierItem host is the one it had when the icon was made.
    if (!m_icon)
        return false;
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
        if (m_hostRegistered && !m_icon)
            makeIcon();
    });
}

void QtTrayIcon::add(const QString &tip)
{
    m_hidePending = false;
    m_tip = tip;
    m_shown = true;
    if (!m_icon)
        return;
    m_icon->setToolTip(tip);
    if (!m_icon->isVisible())
        m_icon->show();
}

void QtTrayIcon::remove()
{
    m_hidePending = true;
    QTimer::singleShot(0, this, [this] {
        if (m_hidePending) {
            m_shown = false;
            if (m_icon)
                m_icon->hide();
        }
        m_hidePending = false;
    });
}

void QtTrayIcon::setMouseHandler(std::function<void(int message)> handler)
{
    m_handler = std::move(handler);
}

void QtTrayIcon::setMenu(QMenu *menu)
{
    m_menu = menu;
    if (m_icon)
        m_icon->setContextMenu(menu);
}
