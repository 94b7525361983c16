#pragma once

#include "data/Database.h"
#include "data/ProgramSettings.h"
#include "platform/Platform.h"
#include "shell/ShellLink.h"
#include "table/AlarmState.h"

#include <QMainWindow>
#include <functional>
#include <memory>

class QAction;
class QCheckBox;
class QMdiArea;
class QMdiSubWindow;
class QMenu;
class SecondaryForms;
class frmAlarmClock;

// The main window: menu bar, tray icon, start-up and shutdown. It holds the
// table window and opens the secondary windows.
class mdiAlarmClock : public QMainWindow, public ShellLink {
    Q_OBJECT
public:
    explicit mdiAlarmClock(const Platform &platform, QWidget *parent = nullptr);
    ~mdiAlarmClock() override;

    // Start-up and shutdown.
    void MDIForm_Load();
    void MDIForm_Unload();
    void subStartupFileCheck();
    void subShowWindows();
    void subAlarmclockCaption();
    void subAlarmclockCaptionModify();
    void subSetDonotAskAnyMoreQuestions();
    bool isUnloaded() const { return m_unloaded; }

    // Menu commands.
    void mnuAlarmClock_Click();
    void mnuCancelMenu_Click();
    void mnuExit_Click();
    void mnuSoundOn_Click();
    void mnuSoundOff_Click();
    void mnuPopupFormOn_Click();
    void mnuPopupFormOff_Click();
    void mnuActivateTimeRow_Click();
    void mnuDeactivateTimeRow_Click();
    void mnuMinimizedToTrayOn_Click();
    void mnuMinimizedToTrayOff_Click();
    void mnuMinimizeToTrayNow_Click();
    void mnuChangeProgramName_Click();
    void mnuDonotAskAnyMoreQuestions_Click();
    void mnuStartAtLogin_Click();
    void mnuColorRegular_Click();
    void mnuColorMatrix_Click();
    void mnuColorCustom_Click();
    void mnuColorCustomModify_Click();
    void mnuAbout_Click();
    void mnuLegend_Click();
    void mnuTables_Click();

    // Hooks that open the secondary windows built elsewhere. Whoever owns
    // those windows sets them; while one is unset its command does nothing.

    // Tray.
    void trayMouseMessage(int message);

    // ShellLink
    void setMenuPair(MenuPair pair, bool on) override;
    bool questionsLimited() const override;
    void subMinimizeToTray(bool bHideForm, const QString &zMessage) override;
    void subRemoveTrayIcon() override;
    void restoreMainWindow() override;
    void subResetMainWindowSize() override;
    void subUnloadSecondaryForms() override;
    void maximizeTableWindow() override;
    void subApplyMDIProgramSettings() override;
    QWidget *mainPictureTarget() override;
    void setColourMarks(int scheme) override;
    QWidget *showForm(SecondaryForm form) override;
    // The open secondary window, or null.
    QWidget *form(SecondaryForm form) const;

    frmAlarmClock *tableWindow() const { return m_table; }
    QMdiSubWindow *tableSubWindow() const { return m_tableSub; }
    AlarmState &state() { return m_state; }
    Database &database() { return m_db; }
    ProgramSettings &settings() { return m_settings; }

    // The menu tree, by control name.
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


protected:
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void buildMenus();
    void checkColourCommand(int scheme);
    QCheckBox *pairSwitch(MenuPair pair) const;
    enum class OnError { GoOn, Stop };
    void switchPair(MenuPair pair, bool on, const QString &statement, OnError onError);
    void selectColourScheme(qint16 scheme, const QString &statement);
    void openSecondary(SecondaryForm form);
    void endOnUnhandledError(const std::function<void()> &command);

    // A copy: the aggregate only holds references to services that outlive the window.
    const Platform m_platform;
    Database m_db;
    ProgramSettings m_settings;
    AlarmState m_state;
    QMdiArea *m_mdiArea = nullptr;
    frmAlarmClock *m_table = nullptr;
    QMdiSubWindow *m_tableSub = nullptr;
    std::unique_ptr<SecondaryForms> m_forms;
    bool m_unloaded = false;
    // Counts the menu pairs' choices, to tell a later one made during a play.
    quint64 m_pairChoices = 0;
};
