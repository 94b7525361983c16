#pragma once

#include "data/Database.h"
#include "data/ProgramSettings.h"
#include "links/AlarmState.h"
#include "links/CustomColorsHost.h"
#include "links/TableHost.h"
#include "platform/Platform.h"
#include "shell/MainMenu.h"
#include "shell/SecondaryForms.h"

#include <QMainWindow>
#include <functional>
#include <memory>

class QCheckBox;
class QMdiArea;
class QMdiSubWindow;
class TrayPresence;
class frmAlarmClock;

// The main window: menu bar, tray icon, start-up and shutdown. It holds the
// table window, opens the secondary windows, and answers what they ask.
class mdiAlarmClock : public QMainWindow, public MainMenu, public TableHost, public CustomColorsHost {
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
    void mnuWakeComputer_Click();
    void mnuColorRegular_Click();
    void mnuColorMatrix_Click();
    void mnuColorCustom_Click();
    void mnuColorCustomModify_Click();
    void mnuAbout_Click();
    void mnuLegend_Click();
    void mnuTables_Click();

    // Tray.
    void trayMouseMessage(int message);

    // What the table window asks.
    void setMenuPair(MenuPair pair, bool on) override;
    bool questionsLimited() const override;
    void subApplyMDIProgramSettings() override;
    void subMinimizeToTray(bool bHideForm, const QString &zMessage) override;
    void subRemoveTrayIcon() override;
    void restoreMainWindow() override;
    void subResetMainWindowSize() override;
    void subUnloadSecondaryForms() override;
    QWidget *mainPictureTarget() override;
    void editRowSound(int row, const QString &path) override;
    void editRowURL(int row, const QString &address) override;

    // What the secondary windows ask.
    void closeSequence() override;
    void maximizeTableWindow() override;
    void showLegend() override;
    void setColourMarks(int scheme) override;
    void subSetMainForeAndBackGroundColors() override;

    // Shows a secondary window, loading it first when it is not open.
    QWidget *showForm(SecondaryForm form);
    // The open secondary window, or null.
    QWidget *form(SecondaryForm form) const;

    frmAlarmClock *tableWindow() const { return m_table; }
    TrayPresence &trayPresence() const { return *m_trayPresence; }
    QMdiSubWindow *tableSubWindow() const { return m_tableSub; }
    AlarmState &state() { return m_state; }
    Database &database() { return m_db; }
    ProgramSettings &settings() { return m_settings; }

protected:
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void connectMenus();
    void windowStatesChanged(Qt::WindowStates states);
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
    std::unique_ptr<TrayPresence> m_trayPresence;
    bool m_unloaded = false;
    // A minimize is on its way to the tray.
    bool m_goingToTray = false;
};
