#include "platform/qt/LogindSleepMonitor.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace {

const QString kLogin = QStringLiteral("org.freedesktop.login1");
const QString kPath = QStringLiteral("/org/freedesktop/login1");
const QString kManager = QStringLiteral("org.freedesktop.login1.Manager");

} // namespace

LogindSleepMonitor::LogindSleepMonitor()
{
    // Once the window is up: the system bus is no part of showing it.
    QMetaObject::invokeMethod(
        this,
        [this] {
            QDBusConnection bus = QDBusConnection::systemBus();
            if (!bus.isConnected())
                return;
            bus.connect(kLogin, kPath, kManager, QStringLiteral("PrepareForSleep"), this,
                        SLOT(prepareForSleepSignal(bool)));
            takeLock();
        },
        Qt::QueuedConnection);
}

void LogindSleepMonitor::takeLock()
{
    QDBusMessage inhibit = QDBusMessage::createMethodCall(kLogin, kPath, kManager, QStringLiteral("Inhibit"));
    inhibit << QStringLiteral("sleep") << QStringLiteral("Quorvel Alarm Clock")
            << QStringLiteral("Rings the alarms a sleep held and wakes for the next one") << QStringLiteral("delay");
    auto *call = new QDBusPendingCallWatcher(QDBusConnection::systemBus().asyncCall(inhibit, 5000), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *w) {
        w->deleteLater();
        const QDBusPendingReply<QDBusUnixFileDescriptor> lock = *w;
        if (!lock.isError())
            m_lock = lock.value();
    });
}

void LogindSleepMonitor::prepareForSleepSignal(bool sleeping)
{
    prepareForSleep(sleeping);
    if (sleeping)
        m_lock = QDBusUnixFileDescriptor(); // closed: the sleep goes on
    else
        takeLock();
}
