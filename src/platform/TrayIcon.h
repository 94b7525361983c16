#pragma once

#include <QString>
#include <functional>

// The notification-area icon. The tip is the fixed 64-character field as the
// program builds it (see shell/TrayTip.h); the implementation shows the text up
// to its first NUL. Mouse events arrive as the two classic message numbers.
class TrayIcon {
public:
    static constexpr int LeftDoubleClick = 515;
    static constexpr int RightButtonDown = 516;

    virtual ~TrayIcon() = default;
    virtual void add(const QString &tipField) = 0;
    virtual void remove() = 0;
    virtual void setMouseHandler(std::function<void(int message)> handler) = 0;
};
