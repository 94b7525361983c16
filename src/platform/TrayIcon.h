#pragma once

#include <QString>
#include <functional>

class QMenu;

// The notification-area icon. Mouse events arrive as the two classic message
// numbers, whatever kind of tray host shows the icon.
class TrayIcon {
public:
    static constexpr int LeftDoubleClick = 515;
    static constexpr int RightButtonDown = 516;

    virtual ~TrayIcon() = default;
    // Whether a tray host shows icons now. It may come and go while the
    // program runs (a panel that restarts or starts late); without one an
    // icon is never seen, so a window must not stay hidden behind it.
    virtual bool available() const = 0;
    // Shows the icon with this tooltip, or changes the tooltip of the icon
    // shown; an icon shown before its host comes appears when it does.
    virtual void add(const QString &tip) = 0;
    virtual void remove() = 0;
    virtual void setMouseHandler(std::function<void(int message)> handler) = 0;
    // The icon's own menu. Hosts that show it themselves (every
    // StatusNotifierItem host asks for it over D-Bus, and Qt pops it up on an
    // XEmbed tray) send no right-button message.
    virtual void setMenu(QMenu *menu) = 0;
};
