#pragma once

#include <functional>

class QAction;
class QMainWindow;
class QMenu;

// The menu bar by control name, built as a form's Ui class builds its
// widgets: the main window inherits it, calls setupMenus, and ties each
// command to its handler with onCommand.
struct MainMenu {
    QMenu *mnuProgram = nullptr;
    QAction *mnuAlarmClock = nullptr;
    QAction *mnuCancelMenu = nullptr;
    QAction *mnuExit = nullptr;
    QMenu *mnuUtilities = nullptr;
    QMenu *mnuSound = nullptr;
    QAction *mnuSoundOn = nullptr;
    QAction *mnuSoundOff = nullptr;
    QMenu *mnuOnAlarmPopupForm = nullptr;
    QAction *mnuPopupFormOn = nullptr;
    QAction *mnuPopupFormOff = nullptr;
    QMenu *mnuTimeRow = nullptr;
    QAction *mnuActivateTimeRow = nullptr;
    QAction *mnuDeactivateTimeRow = nullptr;
    QMenu *mnuMinimizeToTray = nullptr;
    QAction *mnuMinimizedToTrayOn = nullptr;
    QAction *mnuMinimizedToTrayOff = nullptr;
    QAction *mnuMinimizeToTrayNow = nullptr;
    QAction *mnuChangeProgramName = nullptr;
    QAction *mnuDonotAskAnyMoreQuestions = nullptr;
    QAction *mnuStartAtLogin = nullptr;
    QAction *mnuWakeComputer = nullptr;
    QMenu *mnuColors = nullptr;
    QAction *mnuColorRegular = nullptr;
    QAction *mnuColorMatrix = nullptr;
    QAction *mnuColorCustom = nullptr;
    QAction *mnuColorCustomModify = nullptr;
    QMenu *mnuHelp = nullptr;
    QAction *mnuAbout = nullptr;
    QAction *mnuLegend = nullptr;
    QMenu *mnuAdminMode = nullptr;
    QAction *mnuTables = nullptr;

    // The menus and commands in the window's menu bar, with their captions
    // and design-time check marks; F10 opens the bar.
    void setupMenus(QMainWindow *window);
    // Runs `handler` when the command is chosen. A check mark changes only
    // when a handler sets it, never by itself when the command is chosen.
    static void onCommand(QAction *command, std::function<void()> handler);
};
