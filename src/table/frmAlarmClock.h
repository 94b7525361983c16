#pragma once

#include "links/RowEdits.h"
#include "platform/Platform.h"
#include "table/AlarmRows.h"
#include "table/RowControls.h"
#include "table/RowEntry.h"

#include <QDateTime>
#include <QWidget>
#include <array>
#include <memory>

class QCheckBox;
class QTimer;
class WallTimer;
class Database;
class ProgramSettings;
class TableHost;
class SoundingCycle;
class ClockTick;

// The alarm table: 13 rows, the time row, the switches, the clock read-out
// and the three timers. Handlers carry the names of the controls and events
// they serve, and are public so tests can run them as the events would; the
// rows' storage and entry rules live in AlarmRows and RowEntry.
class frmAlarmClock : public QWidget, public RowControls, public RowEdits {
    Q_OBJECT
public:
    frmAlarmClock(const Platform &platform, Database &db, ProgramSettings &settings, AlarmState &state,
                  TableHost &host, QWidget *parent = nullptr);
    ~frmAlarmClock() override;

    // Window lifecycle.
    void Form_Load();
    bool isLoaded() const { return m_loaded; }
    void Form_Resize(int windowState);
    void Form_Activate();
    // The window came back into view: tick at the next second again, not
    // at the next minute as while it was out of sight.
    void subWakeClock();

    // Clock tick and sounding.
    void tmrAlarmClock_Timer();
    void tmrAlarmSound_Timer();
    void tmrAlarmSoundFlash_Timer();
    void cmdSnooze_Click();
    void subStopAlarm();
    void subShowPlaysLeft();
    // Plays the row's sound (-1: the default one) without waiting, the
    // default one where the row's cannot be played; `ended` runs after.
    void subPlayRowSound(qint16 index, std::function<void()> ended = {});

    // Switches and the sound-times box.
    void chkSoundOnOff_Click();
    void chkShow_Click();
    void chkMinimizeToTray_Click();
    void chkTimeRow_Click();
    void txtSoundOffTimes_LostFocus();
    void subApplyAlarmClockFormProgramSettings();

    // Time row.
    void subCalculateDayHourMins(int index, int what);
    void cmdSetDateTime_Click(int index);
    void txtJump_GotFocus(int box);
    void txtJump_KeyDown(int box);
    void txtJump_LostFocus(int box);
    void txtJump_Reset(int box);

    // Date, time and description entry.
    void txtACDate_Change(int index);
    void txtACTime_Change(int index);
    void txtACDetails_Change(int index);
    void txtACDate_KeyUp(int index, int keyCode);
    void txtACTime_KeyUp(int index, int keyCode);
    void txtACDate_LostFocus(int index);
    void txtACTime_LostFocus(int index);
    void txtACDetails_LostFocus(int index);
    void txtACDate_DblClick(int index);
    void txtACTime_DblClick(int index);

    // Loading, saving and clearing.
    void basLoadAlarmClocks(bool ask);
    // False when the database refused the save (the rows stay as typed).
    bool basSaveAlarmClocks();
    void cmdLoad_Click();
    void cmdSave_Click();
    void cmdClearForm_Click();
    void cmdClearRow_Click(int index);

    // Row editors and the row's address.
    void cmdSoundRow_Click(int index);
    void cmdEditURL_Click(int index);
    void cmdOpenURL_Click(int index);

    // What the row editors report.
    void setRowURL(int row, const QString &address) override;
    void setRowSoundPath(int row, const QString &path) override;

    // Painting.
    void subSetMainForeAndBackGroundColors();
    void subSetRowDetailsBackColor(int index);

    bool bDataChanged = false;

    // Window-wide controls.
    QLabel *txtCurrentDateTime = nullptr;
    QLabel *lblRows = nullptr;
    QLabel *lblACDate = nullptr;
    QLabel *lblACTime = nullptr;
    QLabel *lblEventDesc = nullptr;
    QLabel *lblSetButton = nullptr;
    std::array<QLineEdit *, 3> txtJump{}; // days, hours, minutes
    QLineEdit *&txtJumpDay = txtJump[0];
    QLineEdit *&txtJumpHour = txtJump[1];
    QLineEdit *&txtJumpMinutes = txtJump[2];
    std::array<QLabel *, 3> lblJump{};
    QCheckBox *chkTimeRow = nullptr;
    QCheckBox *chkSoundOnOff = nullptr;
    QCheckBox *chkShow = nullptr;
    QCheckBox *chkMinimizeToTray = nullptr;
    QLineEdit *txtSoundOffTimes = nullptr;
    QPushButton *cmdSnooze = nullptr;
    QPushButton *cmdSave = nullptr;
    QPushButton *cmdLoad = nullptr;
    QPushButton *cmdClearForm = nullptr;
    QWidget *picBottom = nullptr;
    WallTimer *tmrAlarmClock = nullptr;
    QTimer *tmrAlarmSound = nullptr;
    QTimer *tmrAlarmSoundFlash = nullptr;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    bool event(QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void buildControls();
    void connectHandlers();
    void armClockTimer(const QDateTime &now);
    // The row's sound file, or the default one when the row names none.
    QString soundPathOf(int index) const;
    QString defaultSoundPath() const;
    bool askYesNo(const QString &title, const QString &text);
    int rowOf(QObject *control) const;

    // A copy: the aggregate only holds references to services that outlive the window.
    const Platform m_platform;
    Database &m_db;
    ProgramSettings &m_settings;
    AlarmState &m_state;
    TableHost &m_host;
    AlarmRows m_rows;
    RowEntry m_entry;
    bool m_loaded = false;
    // Set while the start-up turns the sound switch on for a user who keeps it off.
    bool m_silentSwitch = false;
    bool storedSoundOn();
    SoundingCycle *m_cycle = nullptr;
    std::unique_ptr<ClockTick> m_tick;
};
