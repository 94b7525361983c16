#pragma once

#include "platform/TrayIcon.h"

#include <QIcon>
#include <QObject>
#include <QPointer>
#include <QSystemTrayIcon>
#include <memory>
#include <optional>

// The notification-area icon through QSystemTrayIcon, on an XEmbed tray or a
// StatusNotifierItem host. Qt picks the kind once, when the first icon is
// made, and then knows only the StatusNotifierItem host it found; so this
// follows that host's comings and goings on the session bus itself, and on
// Wayland (where there is no XEmbed tray to fall back on) makes the icon only
// once a host is there, so that a panel that starts late still gets it.
class QtTrayIcon : public QObject, public TrayIcon {
    Q_OBJECT
public:
    explicit QtTrayIcon(const QIcon &icon);
    ~QtTrayIcon() override;

    bool available() const override;
    void add(const QString &tip) override;
    void remove() override;
    void setMouseHandler(std::function<void(int message)> handler) override;
    void setMenu(QMenu *menu) override;

    // The message a reason from Qt stands for, if any. A StatusNotifierItem
    // host reports its activation (a single click there) as Trigger; an
    // XEmbed tray reports every left press as Trigger and only a double
    // click as DoubleClick. A host that shows the icon's own menu needs no
    // message for the right button.
    static std::optional<int> messageFor(QSystemTrayIcon::ActivationReason reason, bool statusNotifierHost,
                                         bool ownMenu);

private slots:
    // The watcher says a host came or went: ask it whether one is there now.
    void askForHost();

private:
    void makeIcon();

    const QIcon m_image;
    std::unique_ptr<QSystemTrayIcon> m_icon;
    std::function<void(int)> m_handler;
    QPointer<QMenu> m_menu;
    QString m_tip;
    bool m_shown = false;
    // The icon goes through a StatusNotifierItem host, rather than XEmbed.
    bool m_statusNotifierHost = false;
    // A StatusNotifierItem host shows icons now, as last heard.
    bool m_hostRegistered = false;
    // A removal waiting for the event loop; an add that follows at once
    // (a new tip) cancels it, so the icon is not torn down and docked again.
    bool m_hidePending = false;
};
