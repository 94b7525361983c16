#pragma once

#include <QString>
#include <QTimer>

class QMenu;
class QWidget;
class TrayIcon;
struct AlarmState;

// The main window's presence in the tray: the icon with its tip, the window
// hidden behind it, and the ways it comes back: the icon's mouse messages,
// and, should the tray host go away while the window hides there, by itself.
class TrayPresence {
public:
    TrayPresence(TrayIcon &tray, QWidget &window, AlarmState &state, QMenu *programMenu);
    ~TrayPresence();
    TrayPresence(const TrayPresence &) = delete;
    TrayPresence &operator=(const TrayPresence &) = delete;

    // The name the tips show. Held here, so that a tip (an alarm's among
    // them) never waits for the database.
    void setProgramName(const QString &name) { m_programName = name; }
    // Adds the icon, its tip naming the program and `zMessage`; hides the
    // window first when `bHideForm`.
    void subMinimizeToTray(bool bHideForm, const QString &zMessage);
    void subRemoveTrayIcon();
    // The icon's mouse message: a left double-click (515) brings the window
    // back, the right button (516) pops up the Program menu.
    void mouseMessage(int message);
    // The window in its normal state, shown and in front.
    void bringBack();
    // While the window hides in the tray: a tray host that has gone away
    // leaves nothing on screen to bring it back, so it comes back itself.
    void checkTrayHost();
    // The program ends: nothing more comes back.
    void stopWatching() { m_hostCheck.stop(); }

private:
    TrayIcon &m_tray;
    QWidget &m_window;
    AlarmState &m_state;
    QMenu *const m_programMenu;
    QString m_programName;
    QTimer m_hostCheck;
};
