#pragma once

#include "platform/TrayIcon.h"

#include <QObject>
#include <QSystemTrayIcon>
#include <optional>

// The notification-area icon through QSystemTrayIcon, on an XEmbed tray or a
// StatusNotifierItem host. Qt keeps to the kind of host it found when the
// program started; for a StatusNotifierItem host this follows the host's
// comings and goings on the session bus, which Qt does not.
class QtTrayIcon : public QObject, public TrayIcon {
    Q_OBJECT
public:
    explicit QtTrayIcon(const QIcon &icon);

    bool available() const override;
    void add(const QString &tip) override;
    void remove() override;
    void setMouseHandler(std::function<void(int message)> handler) override;

    // The message a reason from Qt stands for, if any. A StatusNotifierItem
    // host reports its activation (a single click there) as Trigger; an
    // XEmbed tray reports every left press as Trigger and only a double
    // click as DoubleClick.
    static std::optional<int> messageFor(QSystemTrayIcon::ActivationReason reason, bool statusNotifierHost);

private slots:
    // The watcher says a host came or went: ask it whether one is there now.
    void askForHost();

private:
    QSystemTrayIcon m_icon;
    std::function<void(int)> m_handler;
    bool m_statusNotifierHost = false;
    // A StatusNotifierItem host shows icons now, as last heard.
    bool m_hostRegistered = false;
    // A removal waiting for the event loop; an add that follows at once
    // (a new tip) cancels it, so the icon is not torn down and docked again.
    bool m_hidePending = false;
};
