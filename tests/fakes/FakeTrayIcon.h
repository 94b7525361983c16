#pragma once

#include "platform/TrayIcon.h"

#include <QStringList>

// Records "add:<field>" and "remove" calls in order.
class FakeTrayIcon : public TrayIcon {
public:
    QStringList calls;
    bool visible = false;
    QString field;
    std::function<void(int)> handler;

    void add(const QString &tipField) override;
    void remove() override;
    void setMouseHandler(std::function<void(int message)> mouseHandler) override;

    // Delivers a mouse message (LeftDoubleClick, RightButtonDown) as the icon would.
    void sendMouse(int message);
};
