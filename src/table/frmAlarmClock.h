#pragma once

#include "platform/Platform.h"
#include "table/AlarmState.h"

#include <QDateTime>
#include <QWidget>
#include <array>
#include <memory>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTimer;
class WallTimer;
class QToolButton;
class Database;
class ProgramSettings;
class ShellLink;
class SoundingCycle;
class ClockTick;

template <typename T>
using RowArray = std::array<T *, kAlarmRows>;

// The alarm table: 13 rows, the time row, the switches, the clock read-out
// and the three timers. Handlers carry the names of the controls and events
// they serve, and are public so tests can run them as the events would.
class frmAlarmClock : public QWidget {
    Q_OBJECT
public:
    frmAlarmClock(const Platform &platform, Database &db, ProgramSettings &settings, AlarmState &state,
                  ShellLink &shell, QWidget *parent = nullptr);
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
    void subPlayRowSound(qint16 index);

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
    // Returns false when the typed character is dropped; may rewrite it.
    bool txtACTime_KeyPress(int index, QChar &typed);
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

    // Painting.
    void subSetMainForeAndBackGroundColors();
    void subSetRowDetailsBackColor(int index);

    bool bDataChanged = false;
    // The URL marker's tooltip while the row has no address.
    static QString urlMarkerTip();

    // Per-row controls, indexed 0..12.
    RowArray<QLabel> lblRowNumber{};
    RowArray<QLineEdit> txtACDate{};
    RowArray<QLineEdit> txtACTime{};
    RowArray<QLineEdit> txtACDetails{};
    RowArray<QLabel> lbl24{};
    RowArray<QLabel> lblCountDownHours{};
    RowArray<QLineEdit> txtWAVEFileNamePath{};
    RowArray<QLineEdit> txtURL{};
    RowArray<QToolButton> cmdSoundRow{};
    RowArray<QToolButton> cmdEditURL{};
    RowArray<QToolButton> cmdOpenURL{};
    RowArray<QLabel> lblUrlToolTip{};
    RowArray<QPushButton> cmdSetDateTime{};
    RowArray<QToolButton> cmdClearRow{};

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
    void subDerive24Mark(int index);
    // The row's sound file, or the default one when the row names none.
    QString soundPathOf(int index) const;
    void setDetailsBackColor(int index, qint32 bgr);
    void emptyRow(int index);
    bool askYesNo(const QString &title, const QString &text);
    int rowOf(QObject *control) const;

    // A copy: the aggregate only holds references to services that outlive the window.
    const Platform m_platform;
    Database &m_db;
    ProgramSettings &m_settings;
    AlarmState &m_state;
    ShellLink &m_shell;
    bool m_loaded = false;
    // Set while the start-up turns the sound switch on for a user who keeps it off.
    bool m_silentSwitch = false;
    bool storedSoundOn();
    SoundingCycle *m_cycle = nullptr;
    std::unique_ptr<ClockTick> m_tick;
};
