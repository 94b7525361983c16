#pragma once

#include <QString>

class ProgramSettings;
class QMenu;
class QWidget;
class TrayIcon;
struct AlarmState;

// The main window's presence in the tray: the icon with its tip, the window
// hidden behind it, and the icon's mouse messages that bring the window
// back or pop up the Program menu.
class TrayPresence {
public:
    TrayPresence(TrayIcon &tray, QWidget &window, AlarmState &state, ProgramSettings &settings, QMenu *programMenu);
    ~TrayPresence();
    TrayPresence(const TrayPresence &) = delete;
    TrayPresence &operator=(const TrayPresence &) = delete;

    // Adds the icon, its tip naming the program and `zMessage`; hides the
    // window first when `bHideForm`. Throws AppError when the name cannot
    // be read.
    void subMinimizeToTray(bool bHideForm, const QString &zMessage);
    void subRemoveTrayIcon();
    // The icon's mouse message: a left double-click (515) brings the window
    // back, the right button (516) pops up the Program menu.
    void mouseMessage(int message);

private:
    TrayIcon &m_tray;
    QWidget &m_window;
    AlarmState &m_state;
    ProgramSettings &m_settings;
    QMenu *const m_programMenu;
};
