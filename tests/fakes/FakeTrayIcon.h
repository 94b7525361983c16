#pragma once

#include "platform/TrayIcon.h"

#include <QStringList>

// Records "add:<tip>" and "remove" calls in order.
class FakeTrayIcon : public TrayIcon {
public:
    QStringList calls;
    bool visible = false;
    // The tooltip shown.
    QString field;
    std::function<void(int)> handler;
    // False: the desktop has no tray host.
    bool hostAvailable = true;

    bool available() const override { return hostAvailable; }
    void add(const QString &tip) override;
    void remove() override;
    void setMouseHandler(std::function<void(int message)> mouseHandler) override;

    // Delivers a mouse message (LeftDoubleClick, RightButtonDown) as the icon would.
    void sendMouse(int message);
};
