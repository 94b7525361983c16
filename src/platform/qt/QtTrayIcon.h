#pragma once

#include "platform/TrayIcon.h"

#include <QSystemTrayIcon>

// The notification-area icon through QSystemTrayIcon.
class QtTrayIcon : public TrayIcon {
public:
    explicit QtTrayIcon(const QIcon &icon);

    void add(const QString &tipField) override;
    void remove() override;
    void setMouseHandler(std::function<void(int message)> handler) override;

private:
    QSystemTrayIcon m_icon;
    std::function<void(int)> m_handler;
    // A removal waiting for the event loop; an add that follows at once
    // (a new tip) cancels it, so the icon is not torn down and docked again.
    bool m_hidePending = false;
};
