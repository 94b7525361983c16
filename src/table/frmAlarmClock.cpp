#include "table/frmAlarmClock.h"

#include "appearance/WidgetColours.h"
#include "data/Database.h"
#include "data/ProgramSettings.h"
#include "links/TableHost.h"
#include "platform/AppDirectory.h"
#include "platform/Clock.h"
#include "platform/MessageBox.h"
#include "platform/Notifier.h"
#include "platform/SleepMonitor.h"
#include "platform/SoundPlayer.h"
#include "platform/UrlOpener.h"
#include "platform/WallTimer.h"
#include "rules/AppError.h"
#include "rules/TimeRowArithmetic.h"
#include "rules/ValueConversions.h"
#include "table/ClockTick.h"
#include "table/SoundingCycle.h"

#include <QCheckBox>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QShowEvent>
#include <QTimer>

namespace {

constexpr qint32 kJumpTypingColour = 0x0080FF;
constexpr qint32 kJumpRestColour = 0xFFFFFF;

} // namespace

frmAlarmClock::frmAlarmClock(const Platform &platform, Database &db, ProgramSettings &settings, AlarmState &state,
                             TableHost &host, QWidget *parent)
    : QWidget(parent), m_platform(platform), m_db(db), m_settings(settings), m_state(state), m_host(host),
      m_rows(*this, state, *this), m_entry(*this, state, m_rows)
{
    setObjectName(QStringLiteral("frmAlarmClock"));
    // Arial by name, at the desktop's own size, so a larger default font
    // makes a larger window rather than clipped text.
    QFont arial = font();
    arial.setFamily(QStringLiteral("Arial"));
    setFont(arial);
    buildControls();
    connectHandlers();
}

frmAlarmClock::~frmAlarmClock()
{
    // The timer belongs to the platform and may outlive this window.
    tmrAlarmClock->stop();
    tmrAlarmClock->onTimeout({});
    m_platform.notifier.onStop({});
    m_platform.sleep.onPrepareForSleep({});
}

// ---------------------------------------------------------------------------
// Lifecycle

void frmAlarmClock::Form_Load()
{
    m_loaded = true;
    m_host.subApplyMDIProgramSettings();
    m_state.lngAlarmPlaysLeft = 0;
    subSetMainForeAndBackGroundColors();
    m_state.bEvaluateNow = true;
    bDataChanged = false;
    m_state.bSoundOn = true;
    // Checking the switch runs its click even when it is checked already;
    // its audible check plays only for a user who keeps the sound on. The
    // stored setting is applied after the load.
    m_silentSwitch = !storedSoundOn();
    if (chkSoundOnOff->isChecked())
        chkSoundOnOff_Click();
    else
        chkSoundOnOff->setChecked(true);
    m_silentSwitch = false;
    basLoadAlarmClocks(false);
    cmdSnooze->setVisible(false);
    armClockTimer(m_platform.clock.now());
    subApplyAlarmClockFormProgramSettings();
    // Start where a user begins: the first row's date, not a time-row box
    // (entering one of those clears its "0").
    txtACDate[0]->setFocus(Qt::OtherFocusReason);
}

bool frmAlarmClock::storedSoundOn()
{
    try {
        return m_settings.readSwitches().value_or(StoredSwitches{}).sound;
    } catch (const AppError &) {
        return true; // the settings routines report their own errors
    }
}

void frmAlarmClock::Form_Resize(int windowState)
{
    m_state.intMDIWindowState = windowState;
    if (windowState != 1)
        subWakeClock();
    if (windowState == 2) {
        m_state.bEvaluateNow = true;
        m_host.subResetMainWindowSize();
        m_host.subUnloadSecondaryForms();
    }
}

void frmAlarmClock::Form_Activate() { m_state.bEvaluateNow = true; }

// ---------------------------------------------------------------------------
// Clock tick

void frmAlarmClock::armClockTimer(const QDateTime &now) { m_tick->arm(now); }

void frmAlarmClock::subWakeClock()
{
    if (tmrAlarmClock->isActive())
        armClockTimer(m_platform.clock.now());
}

void frmAlarmClock::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    subWakeClock();
}

// The tick itself lives in ClockTick; this is the window's handler.
void frmAlarmClock::tmrAlarmClock_Timer() { m_tick->tmrAlarmClock_Timer(); }

// ---------------------------------------------------------------------------
// Sounding

// The cycle itself lives in SoundingCycle; these are the window's handlers.
void frmAlarmClock::tmrAlarmSound_Timer() { m_cycle->tmrAlarmSound_Timer(); }

void frmAlarmClock::tmrAlarmSoundFlash_Timer() { m_cycle->tmrAlarmSoundFlash_Timer(); }

void frmAlarmClock::cmdSnooze_Click() { subStopAlarm(); }

void frmAlarmClock::subStopAlarm() { m_cycle->subStopAlarm(); }

void frmAlarmClock::subShowPlaysLeft() { m_cycle->subShowPlaysLeft(); }

QString frmAlarmClock::soundPathOf(int index) const
{
    QString path;
    if (index > -1 && index < kAlarmRows)
        path = textValue(txtWAVEFileNamePath[index]->text());
    return path.isEmpty() ? defaultSoundPath() : path;
}

QString frmAlarmClock::defaultSoundPath() const { return m_platform.appDir.path() + QStringLiteral("/alarm.wav"); }

void frmAlarmClock::subPlayRowSound(qint16 index, std::function<void()> ended)
{
    // The file is checked where it is opened, off this thread: a missing one
    // leaves the sound on and plays the default one (or a tone) instead.
    const QString path = soundPathOf(index);
    m_platform.sound.play(path, defaultSoundPath(),
                          [window = QPointer(this), path, ended = std::move(ended)](bool found) {
                              if (!window)
                                  return;
                              window->chkSoundOnOff->setToolTip(
                                  (found ? QStringLiteral("Played: ") : QStringLiteral("File Not Found: ")) + path);
                              if (ended)
                                  ended();
                          });
}

// ---------------------------------------------------------------------------
// Switches

void frmAlarmClock::chkSoundOnOff_Click()
{
    m_state.bSoundOn = chkSoundOnOff->isChecked();
    if (m_state.bSoundOn) {
        chkSoundOnOff->setText(QStringLiteral("Sound [on]"));
        m_host.setMenuPair(MenuPair::Sound, true);
        // An audible check that the sound works.
        if (!m_silentSwitch) {
            m_platform.sound.beep();
            subPlayRowSound(m_state.intAlarmRow);
        }
    } else {
        chkSoundOnOff->setText(QStringLiteral("Sound [off]"));
        m_host.setMenuPair(MenuPair::Sound, false);
    }
    chkSoundOnOff->setAccessibleName(chkSoundOnOff->text());
}

void frmAlarmClock::chkShow_Click()
{
    const bool on = chkShow->isChecked();
    chkShow->setText(on ? QStringLiteral("On Alarm Popup the Form [on]") : QStringLiteral("On Alarm Popup the Form [off]"));
    chkShow->setAccessibleName(chkShow->text());
    m_host.setMenuPair(MenuPair::PopupForm, on);
}

void frmAlarmClock::chkMinimizeToTray_Click()
{
    const bool on = chkMinimizeToTray->isChecked();
    chkMinimizeToTray->setText(on ? QStringLiteral("Minimize to Tray [Allowed]")
                                  : QStringLiteral("Minimize to Tray [Disabled]"));
    chkMinimizeToTray->setAccessibleName(chkMinimizeToTray->text());
    m_host.setMenuPair(MenuPair::MinimizeToTray, on);
}

void frmAlarmClock::chkTimeRow_Click()
{
    const bool on = chkTimeRow->isChecked();
    chkTimeRow->setText(on ? QStringLiteral("Time Row [Activated]") : QStringLiteral("Time Row [Deactivated]"));
    chkTimeRow->setAccessibleName(chkTimeRow->text());
    m_host.setMenuPair(MenuPair::TimeRow, on);
    for (int b = 0; b < 3; ++b) {
        txtJump[size_t(b)]->setVisible(on);
        lblJump[size_t(b)]->setVisible(on);
    }
    for (int b = 0; b < 3; ++b)
        txtJump_Reset(b);
}

void frmAlarmClock::txtSoundOffTimes_LostFocus()
{
    txtSoundOffTimes->setText(QString::number(integerValue(txtSoundOffTimes->text())));
    if (integerValue(txtSoundOffTimes->text()) < 1)
        txtSoundOffTimes->setText(QStringLiteral("1"));
    try {
        m_settings.execute(QStringLiteral("UPDATE tblprogramsetting set intSoundAlarmTimes = ")
                           + QString::number(integerValue(txtSoundOffTimes->text())));
    } catch (const AppError &e) {
        showErrorBox(m_platform.messages, QStringLiteral("txtSoundOffTimes_LostFocus"), e);
    }
}

void frmAlarmClock::subApplyAlarmClockFormProgramSettings()
{
    try {
        const std::optional<qint16> times = m_settings.readSoundAlarmTimes();
        txtSoundOffTimes->setText(times ? QString::number(*times) : QStringLiteral("0"));
    } catch (const AppError &e) {
        showErrorBox(m_platform.messages, QStringLiteral("subApplyAlarmClockFormProgramSettings"), e);
    }
}

// ---------------------------------------------------------------------------
// Time row

void frmAlarmClock::subCalculateDayHourMins(int index, int what)
{
    try {
        const TimeRowTarget target =
            calculateDayHourMins(m_platform.clock.now(), longValue(txtJumpDay->text()),
                                 longValue(txtJumpHour->text()), longValue(txtJumpMinutes->text()));
        if (what == 1 || what == 3) {
            txtACDate[index]->setText(target.dateText);
            m_state.strAlarmDates[size_t(index)] = target.dateText;
            txtACDate_LostFocus(index);
        }
        if (what == 2 || what == 3) {
            txtACTime[index]->setText(target.timeText);
            m_state.strAlarmTimes[size_t(index)] = target.timeText;
            txtACTime_LostFocus(index);
        }
    } catch (const AppError &e) {
        showErrorBox(m_platform.messages, QStringLiteral("subCalculateDayHourMins"), e);
    }
}

void frmAlarmClock::cmdSetDateTime_Click(int index)
{
    bDataChanged = true;
    subCalculateDayHourMins(index, 3);
    m_state.bEvaluateNow = true;
}

void frmAlarmClock::txtJump_GotFocus(int box)
{
    // A resting "0" is cleared so the user types over it.
    if (txtJump[size_t(box)]->text() == QLatin1String("0"))
        txtJump[size_t(box)]->clear();
}

void frmAlarmClock::txtJump_KeyDown(int box) { setBackColour(txtJump[size_t(box)], kJumpTypingColour); }

void frmAlarmClock::txtJump_LostFocus(int box)
{
    txtJump[size_t(box)]->setText(QString::number(longValue(txtJump[size_t(box)]->text())));
}

void frmAlarmClock::txtJump_Reset(int box)
{
    txtJump[size_t(box)]->setText(QStringLiteral("0"));
    setBackColour(txtJump[size_t(box)], kJumpRestColour);
}

// ---------------------------------------------------------------------------
// Date, time and description entry

void frmAlarmClock::txtACDate_Change(int index)
{
    bDataChanged = true;
    lbl24[index]->setVisible(false);
    lblCountDownHours[index]->setText(QString());
    subSetRowDetailsBackColor(index);
}

void frmAlarmClock::txtACTime_Change(int index) { txtACDate_Change(index); }

void frmAlarmClock::txtACDetails_Change(int) { bDataChanged = true; }

void frmAlarmClock::txtACDate_KeyUp(int index, int keyCode)
{
    if (keyCode == 13)
        txtACDate_LostFocus(index);
}

void frmAlarmClock::txtACTime_KeyUp(int index, int keyCode)
{
    if (keyCode == 13)
        txtACTime_LostFocus(index);
}

void frmAlarmClock::txtACDate_LostFocus(int index) { m_entry.commitDate(index); }

void frmAlarmClock::txtACTime_LostFocus(int index) { m_entry.commitTime(index); }

void frmAlarmClock::txtACDetails_LostFocus(int index)
{
    if (txtACDate[index]->text().isEmpty() && txtACTime[index]->text().isEmpty())
        subSetRowDetailsBackColor(index);
    m_state.bEvaluateNow = true;
}

void frmAlarmClock::txtACDate_DblClick(int index)
{
    if (textValue(txtACDate[index]->text()).isEmpty()) {
        subCalculateDayHourMins(index, 1);
    } else {
        m_state.strAlarmDates[size_t(index)].clear();
        txtACDate[index]->setText(QString());
    }
    lblCountDownHours[index]->setText(QString());
    m_state.bEvaluateNow = true;
}

void frmAlarmClock::txtACTime_DblClick(int index)
{
    if (textValue(txtACTime[index]->text()).isEmpty()) {
        subCalculateDayHourMins(index, 2);
    } else {
        m_state.strAlarmTimes[size_t(index)].clear();
        txtACTime[index]->setText(QString());
    }
    lblCountDownHours[index]->setText(QString());
    m_state.bEvaluateNow = true;
}

// ---------------------------------------------------------------------------
// Loading, saving and clearing

bool frmAlarmClock::askYesNo(const QString &title, const QString &text)
{
    return m_platform.messages.show(text, MsgButtons::YesNo, MsgIcon::None, title) == MsgResult::Yes;
}

void frmAlarmClock::basLoadAlarmClocks(bool ask)
{
    const bool proceed = !ask || !bDataChanged || m_host.questionsLimited()
                         || askYesNo(QStringLiteral("UNDO and RELOAD PREVIOUS DATA: ARE YOU SURE?"),
                                     QStringLiteral("You will lose any of your current work, are you sure?"));
    if (proceed) {
        try {
            m_rows.load(m_db);
        } catch (const AppError &e) {
            showErrorBox(m_platform.messages, QStringLiteral("basLoadAlarmClocks"), e);
            return;
        }
    }
    // Cleared even after a No, so a second Load reloads without asking.
    bDataChanged = false;
    for (int b = 0; b < 3; ++b)
        txtJump_LostFocus(b);
    m_state.bEvaluateNow = true;
}

bool frmAlarmClock::basSaveAlarmClocks()
{
    const bool changed = bDataChanged;
    bDataChanged = false;
    try {
        m_rows.save(m_db);
        m_state.bEvaluateNow = true;
        return true;
    } catch (const AppError &e) {
        // Nothing was stored, so what the user typed is still unsaved.
        bDataChanged = changed;
        showErrorBox(m_platform.messages, QStringLiteral("basSaveAlarmClocks"), e);
        return false;
    }
}

void frmAlarmClock::cmdLoad_Click()
{
    basLoadAlarmClocks(true);
    m_state.intMDIWindowState = 0;
    m_state.bEvaluateNow = true;
}

void frmAlarmClock::cmdSave_Click()
{
    // Only a stored save is read back: after a failed one the reload would
    // replace what the user typed with the old rows.
    if (basSaveAlarmClocks())
        basLoadAlarmClocks(false);
    m_state.intMDIWindowState = 0;
    m_state.bEvaluateNow = true;
}

void frmAlarmClock::cmdClearForm_Click()
{
    if (!m_host.questionsLimited()
        && !askYesNo(QStringLiteral("CLEAR THE FORM: ARE YOU SURE?"),
                     QStringLiteral("You will lose any of your current work, are you sure?"))) {
        m_state.bEvaluateNow = true;
        return;
    }
    const bool changed = bDataChanged;
    for (int i = 0; i < kAlarmRows; ++i)
        m_rows.empty(i);
    // Clearing the form leaves the unsaved-changes flag as it was.
    bDataChanged = changed;
    m_state.bEvaluateNow = true;
}

void frmAlarmClock::cmdClearRow_Click(int index)
{
    // Cleared before asking, so it stays clear whatever the answer.
    bDataChanged = false;
    if (!m_host.questionsLimited()
        && !askYesNo(QStringLiteral("CLEAR THE ROW: ARE YOU SURE?"),
                     QStringLiteral("You will lose any changes you made to this row, are you sure?"))) {
        m_state.bEvaluateNow = true;
        return;
    }
    m_rows.empty(index);
    bDataChanged = false;
    m_state.bEvaluateNow = true;
}

// ---------------------------------------------------------------------------
// Row editors and the row's address

void frmAlarmClock::cmdSoundRow_Click(int index) { m_host.editRowSound(index, txtWAVEFileNamePath[index]->text()); }

void frmAlarmClock::cmdEditURL_Click(int index) { m_host.editRowURL(index, txtURL[index]->text()); }

void frmAlarmClock::cmdOpenURL_Click(int index)
{
    try {
        const QString address = txtURL[index]->text().trimmed();
        if (address.isEmpty()) {
            // No address yet: lead the user to enter one.
            cmdEditURL_Click(index);
            return;
        }
        // Handed over as typed, never through a shell; a new window each time.
        if (!m_platform.browser.open(address))
            throw AppError(429, QStringLiteral("No web browser could be started for this address."));
    } catch (const AppError &e) {
        showErrorBox(m_platform.messages, QStringLiteral("cmdOpenURL_Click"), e);
    }
}

void frmAlarmClock::setRowURL(int row, const QString &address)
{
    bDataChanged = true;
    m_rows.markUrl(row, address, false);
    txtURL[row]->setText(address);
}

void frmAlarmClock::setRowSoundPath(int row, const QString &path)
{
    bDataChanged = true;
    txtWAVEFileNamePath[row]->setText(path);
}
