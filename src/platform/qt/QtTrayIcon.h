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
};

// The text a tip field shows: up to the first NUL, or without its trailing
// padding when it has none.
QString visibleTipText(const QString &tipField);
