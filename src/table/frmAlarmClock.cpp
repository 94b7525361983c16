#include "table/frmAlarmClock.h"

#include "appearance/CustomColoursLoader.h"
#include "appearance/SchemePalette.h"
#include "appearance/WidgetColours.h"
#include "data/Database.h"
#include "data/ProgramSettings.h"
#include "editors/frmEditURL.h"
#include "editors/frmEditWAVEFileNamePath.h"
#include "platform/AppDirectory.h"
#include "platform/Clock.h"
#include "platform/FileSystem.h"
#include "platform/MessageBox.h"
#include "platform/PictureLoader.h"
#include "platform/SoundPlayer.h"
#include "platform/UrlOpener.h"
#include "platform/WallTimer.h"
#include "rules/AppError.h"
#include "rules/DateText.h"
#include "rules/TimeRowArithmetic.h"
#include "rules/TimeText.h"
#include "rules/ValueConversions.h"
#include "shell/ShellLink.h"
#include "table/ClockTick.h"
#include "table/SoundingCycle.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QEvent>
#include <QFocusEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShowEvent>
#include <QTimer>

namespace {

constexpr qint32 kJumpTypingColour = 0x0080FF;
constexpr qint32 kJumpRestColour = 0xFFFFFF;

bool isEnter(int key) { return key == Qt::Key_Return || key == Qt::Key_Enter; }

// Keys that only move the focus on; they are not typing.
bool isFocusKey(int key) { return key == Qt::Key_Tab || key == Qt::Key_Backtab; }

// Only user-driven focus changes count as leaving a box: a message box or a
// menu taking the focus away is not the user moving on.
bool isLeaving(QEvent *event)
{
    const auto reason = static_cast<QFocusEvent *>(event)->reason();
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason && reason != Qt::MenuBarFocusReason;
}

} // namespace

frmAlarmClock::frmAlarmClock(const Platform &platform, Database &db, ProgramSettings &settings, AlarmState &state,
                             ShellLink &shell, QWidget *parent)
    : QWidget(parent), m_platform(platform), m_db(db), m_settings(settings), m_state(state), m_shell(shell)
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
}

int frmAlarmClock::rowOf(QObject *control) const { return control->property("row").toInt(); }

bool frmAlarmClock::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    const QVariant jump = watched->property("jump");
    if (jump.isValid()) {
        const int b = jump.toInt();
        if (type == QEvent::FocusIn)
            txtJump_GotFocus(b);
        else if (type == QEvent::KeyPress && !isFocusKey(static_cast<QKeyEvent *>(event)->key()))
            txtJump_KeyDown(b);
        else if (type == QEvent::FocusOut && isLeaving(event))
            txtJump_LostFocus(b);
        else if (type == QEvent::MouseButtonDblClick)
            txtJump_Reset(b);
        return false;
    }
    if (watched == txtSoundOffTimes) {
        if (type == QEvent::FocusOut && isLeaving(event))
            txtSoundOffTimes_LostFocus();
        return false;
    }

    const int i = rowOf(watched);
    if (i < 0 || i >= kAlarmRows)
        return false;
    if (watched == txtACDate[i]) {
        if (type == QEvent::FocusOut && isLeaving(event))
            txtACDate_LostFocus(i);
        else if (type == QEvent::KeyRelease)
            txtACDate_KeyUp(i, isEnter(static_cast<QKeyEvent *>(event)->key()) ? 13 : 0);
        else if (type == QEvent::MouseButtonDblClick)
            txtACDate_DblClick(i);
    } else if (watched == txtACTime[i]) {
        if (type == QEvent::KeyPress) {
            auto *key = static_cast<QKeyEvent *>(event);
            // Only typed characters go through the filter; moving keys, Tab
            // and shortcuts (Ctrl+A, Ctrl+V, Alt+...) are not typing.
            if (isFocusKey(key->key()) || key->key() == Qt::Key_Delete || key->text().isEmpty()
                || (key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)))
                return false;
            const QChar original = key->text().at(0);
            QChar typed = original;
            if (!txtACTime_KeyPress(i, typed))
                return true;
            if (typed != original) {
                txtACTime[i]->insert(QString(typed));
                return true;
            }
        } else if (type == QEvent::InputMethod) {
            // Composed text (dead keys, input methods) is typing too: each
            // character goes through the same filter.
            QString passed;
            for (QChar c : static_cast<QInputMethodEvent *>(event)->commitString())
                if (txtACTime_KeyPress(i, c))
                    passed += c;
            if (!passed.isEmpty())
                txtACTime[i]->insert(passed);
            return true;
        } else if (type == QEvent::FocusOut && isLeaving(event)) {
            txtACTime_LostFocus(i);
        } else if (type == QEvent::KeyRelease) {
            txtACTime_KeyUp(i, isEnter(static_cast<QKeyEvent *>(event)->key()) ? 13 : 0);
        } else if (type == QEvent::MouseButtonDblClick) {
            txtACTime_DblClick(i);
        }
    } else if (watched == txtACDetails[i]) {
        if (type == QEvent::FocusOut && isLeaving(event))
            txtACDetails_LostFocus(i);
    }
    return false;
}

bool frmAlarmClock::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate)
        Form_Activate();
    return QWidget::event(event);
}

// ---------------------------------------------------------------------------
// Lifecycle

void frmAlarmClock::Form_Load()
{
    m_loaded = true;
    m_shell.subApplyMDIProgramSettings();
    m_state.lngAlarmPlaysLeft = 0;
    subSetMainForeAndBackGroundColors();
    m_state.bEvaluateNow = true;
    bDataChanged = false;
    m_state.bSoundOn = true;
    // The switch starts on; the stored setting is applied after the load.
    // Its audible check plays only for a user who keeps the sound on.
    m_silentSwitch = !storedSoundOn();
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
        m_shell.subResetMainWindowSize();
        m_shell.subUnloadSecondaryForms();
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
    if (path.isEmpty())
        path = m_platform.appDir.path() + QStringLiteral("/alarm.wav");
    return path;
}

void frmAlarmClock::subPlayRowSound(qint16 index)
{
    const QString path = soundPathOf(index);
    if (m_platform.files.fileExists(path)) {
        m_platform.sound.play(path);
        chkSoundOnOff->setToolTip(QStringLiteral("Played: ") + path);
    } else {
        // A missing file turns the sound off until the user turns it on again.
        chkSoundOnOff->setChecked(false);
        chkSoundOnOff->setToolTip(QStringLiteral("File Not Found: ") + path);
    }
}

// ---------------------------------------------------------------------------
// Switches

void frmAlarmClock::chkSoundOnOff_Click()
{
    m_state.bSoundOn = chkSoundOnOff->isChecked();
    if (m_state.bSoundOn) {
        chkSoundOnOff->setText(QStringLiteral("Sound [on]"));
        m_shell.setMenuPair(MenuPair::Sound, true);
        // An audible check that the sound works.
        if (!m_silentSwitch) {
            m_platform.sound.beep();
            subPlayRowSound(m_state.intAlarmRow);
        }
    } else {
        chkSoundOnOff->setText(QStringLiteral("Sound [off]"));
        m_shell.setMenuPair(MenuPair::Sound, false);
    }
    chkSoundOnOff->setAccessibleName(chkSoundOnOff->text());
}

void frmAlarmClock::chkShow_Click()
{
    const bool on = chkShow->isChecked();
    chkShow->setText(on ? QStringLiteral("On Alarm Popup the Form [on]") : QStringLiteral("On Alarm Popup the Form [off]"));
    chkShow->setAccessibleName(chkShow->text());
    m_shell.setMenuPair(MenuPair::PopupForm, on);
}

void frmAlarmClock::chkMinimizeToTray_Click()
{
    const bool on = chkMinimizeToTray->isChecked();
    chkMinimizeToTray->setText(on ? QStringLiteral("Minimize to Tray [Allowed]")
                                  : QStringLiteral("Minimize to Tray [Disabled]"));
    chkMinimizeToTray->setAccessibleName(chkMinimizeToTray->text());
    m_shell.setMenuPair(MenuPair::MinimizeToTray, on);
}

void frmAlarmClock::chkTimeRow_Click()
{
    const bool on = chkTimeRow->isChecked();
    chkTimeRow->setText(on ? QStringLiteral("Time Row [Activated]") : QStringLiteral("Time Row [Deactivated]"));
    chkTimeRow->setAccessibleName(chkTimeRow->text());
    m_shell.setMenuPair(MenuPair::TimeRow, on);
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

bool frmAlarmClock::txtACTime_KeyPress(int, QChar &typed)
{
    const std::optional<QChar> passed = filterTimeKey(typed);
    if (!passed)
        return false;
    typed = *passed;
    return true;
}

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

void frmAlarmClock::txtACDate_LostFocus(int index)
{
    const std::optional<QDate> date = parseDate(textValue(txtACDate[index]->text()));
    // An invalid date is emptied, never reported.
    txtACDate[index]->setText(date ? formatDate(*date) : QString());
    m_state.strAlarmDates[size_t(index)] = txtACDate[index]->text();
    lblCountDownHours[index]->setText(QString());
    subDerive24Mark(index);
    m_state.bEvaluateNow = true;
    subSetRowDetailsBackColor(index);
}

void frmAlarmClock::txtACTime_LostFocus(int index)
{
    QString t = textValue(txtACTime[index]->text());
    if (t.size() == 5) {
        t = normaliseTime(t);
        lblCountDownHours[index]->setText(QString());
    } else {
        t.clear();
    }
    txtACTime[index]->setText(t);
    m_state.strAlarmTimes[size_t(index)] = t;
    subDerive24Mark(index);
    m_state.bEvaluateNow = true;
    subSetRowDetailsBackColor(index);
}

void frmAlarmClock::txtACDetails_LostFocus(int index)
{
    if (txtACDate[index]->text().isEmpty() && txtACTime[index]->text().isEmpty())
        subSetRowDetailsBackColor(index);
    m_state.bEvaluateNow = true;
}

void frmAlarmClock::subDerive24Mark(int index)
{
    if (parseDate(textValue(txtACDate[index]->text()))) {
        lbl24[index]->setVisible(false);
        return;
    }
    const QString time = textValue(txtACTime[index]->text());
    if (time.size() == 5 && time.contains(u':'))
        lbl24[index]->setVisible(true);
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
    const bool proceed = !ask || !bDataChanged || m_shell.questionsLimited()
                         || askYesNo(QStringLiteral("UNDO and RELOAD PREVIOUS DATA: ARE YOU SURE?"),
                                     QStringLiteral("You will lose any of your current work, are you sure?"));
    if (proceed) {
        try {
            Recordset rs =
                m_db.MyDB().openRecordset(QStringLiteral("SELECT * FROM tblalarmclock ORDER BY lngalarmclockid;"));
            for (int i = 0; i < kAlarmRows; ++i) {
                lblCountDownHours[i]->setText(QString());
                subSetRowDetailsBackColor(i);
                if (rs.eof()) {
                    // A short table keeps this row's address, marker and sound.
                    txtACDate[i]->setText(QString());
                    txtACTime[i]->setText(QString());
                    txtACDetails[i]->setText(QString());
                    lbl24[i]->setVisible(false);
                } else {
                    const QString dateText = textValue(rs.field(QStringLiteral("dtalarmclockmmmddyyyy")));
                    const QString url = textValue(rs.field(QStringLiteral("strURL")));
                    txtURL[i]->setText(url);
                    lblUrlToolTip[i]->setText(url.isEmpty() ? QStringLiteral("?") : QStringLiteral("*"));
                    lblUrlToolTip[i]->setToolTip(url.isEmpty() ? urlMarkerTip() : url);
                    lblUrlToolTip[i]->setAccessibleDescription(lblUrlToolTip[i]->toolTip());
                    txtWAVEFileNamePath[i]->setText(textValue(rs.field(QStringLiteral("strWAVEFileNamePath"))));
                    txtACDate[i]->setText(formatDateText(dateText));
                    // A stored time that is no time loads empty: it could never ring.
                    const QString timeText = timeOrEmpty(textValue(rs.field(QStringLiteral("dtalarmclockhhnn"))));
                    txtACTime[i]->setText(timeText);
                    // The daily mark is derived, never read from the record.
                    if (parseDate(dateText))
                        lbl24[i]->setVisible(false);
                    else if (!timeText.isEmpty())
                        lbl24[i]->setVisible(true);
                    txtACDetails[i]->setText(textValue(rs.field(QStringLiteral("stralarmclock"))));
                    rs.moveNext();
                }
                m_state.strAlarmDates[size_t(i)] = txtACDate[i]->text();
                m_state.strAlarmTimes[size_t(i)] = txtACTime[i]->text();
            }
            rs.close();
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
        DbHandle db = m_db.MyDB();
        // One transaction: a failed save leaves the rows that were stored.
        db.beginTrans();
        try {
            db.execute(QStringLiteral("delete * from tblalarmclock;"));
            Recordset rs = db.openTable(QStringLiteral("tblalarmclock"));
            for (int i = 0; i < kAlarmRows; ++i) {
                lblCountDownHours[i]->setText(QString());
                rs.addNew();
                if (parseDate(txtACDate[i]->text()))
                    rs.setField(QStringLiteral("dtalarmclockmmmddyyyy"), textValue(txtACDate[i]->text()));
                if (!txtACTime[i]->text().isEmpty())
                    rs.setField(QStringLiteral("dtalarmclockhhnn"), txtACTime[i]->text());
                if (!txtACDetails[i]->text().isEmpty())
                    rs.setField(QStringLiteral("stralarmclock"), txtACDetails[i]->text());
                rs.setField(QStringLiteral("booRepeat"), lbl24[i]->isVisibleTo(this));
                rs.setField(QStringLiteral("strURL"), textValue(txtURL[i]->text()));
                rs.setField(QStringLiteral("strWAVEFileNamePath"), textValue(txtWAVEFileNamePath[i]->text()));
                rs.update();
            }
            rs.close();
            db.commitTrans();
        } catch (...) {
            db.rollback();
            throw;
        }
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

void frmAlarmClock::emptyRow(int i)
{
    txtWAVEFileNamePath[i]->setText(QString());
    lblUrlToolTip[i]->setText(QStringLiteral("?"));
    lblUrlToolTip[i]->setToolTip(urlMarkerTip());
    lblUrlToolTip[i]->setAccessibleDescription(urlMarkerTip());
    txtURL[i]->setText(QString());
    lbl24[i]->setVisible(false);
    txtACDate[i]->setText(QString());
    txtACTime[i]->setText(QString());
    m_state.strAlarmDates[size_t(i)].clear();
    m_state.strAlarmTimes[size_t(i)].clear();
    lblCountDownHours[i]->setText(QString());
    txtACDetails[i]->setText(QString());
    subSetRowDetailsBackColor(i);
}

void frmAlarmClock::cmdClearForm_Click()
{
    if (!m_shell.questionsLimited()
        && !askYesNo(QStringLiteral("CLEAR THE FORM: ARE YOU SURE?"),
                     QStringLiteral("You will lose any of your current work, are you sure?"))) {
        m_state.bEvaluateNow = true;
        return;
    }
    const bool changed = bDataChanged;
    for (int i = 0; i < kAlarmRows; ++i)
        emptyRow(i);
    // Clearing the form leaves the unsaved-changes flag as it was.
    bDataChanged = changed;
    m_state.bEvaluateNow = true;
}

void frmAlarmClock::cmdClearRow_Click(int index)
{
    // Cleared before asking, so it stays clear whatever the answer.
    bDataChanged = false;
    if (!m_shell.questionsLimited()
        && !askYesNo(QStringLiteral("CLEAR THE ROW: ARE YOU SURE?"),
                     QStringLiteral("You will lose any changes you made to this row, are you sure?"))) {
        m_state.bEvaluateNow = true;
        return;
    }
    emptyRow(index);
    bDataChanged = false;
    m_state.bEvaluateNow = true;
}

// ---------------------------------------------------------------------------
// Row editors and the row's address

namespace {

AppError noWindow() { return AppError(91, QStringLiteral("Object variable or With block variable not set")); }

} // namespace

void frmAlarmClock::cmdSoundRow_Click(int index)
{
    try {
        auto *editor = qobject_cast<frmEditWAVEFileNamePath *>(m_shell.showForm(SecondaryForm::EditWAVEFileNamePath));
        if (!editor)
            throw noWindow();
        editor->lblintIndex->setText(QString::number(index + 1));
        editor->txtEditWAVEFileNamePath->setText(txtWAVEFileNamePath[index]->text());
    } catch (const AppError &e) {
        showErrorBox(m_platform.messages, QStringLiteral("cmdSoundRow_Click"), e);
    }
}

void frmAlarmClock::cmdEditURL_Click(int index)
{
    try {
        auto *editor = qobject_cast<frmEditURL *>(m_shell.showForm(SecondaryForm::EditURL));
        if (!editor)
            throw noWindow();
        editor->lblintIndex->setText(QString::number(index + 1));
        editor->txtEditURL->setText(txtURL[index]->text());
    } catch (const AppError &e) {
        showErrorBox(m_platform.messages, QStringLiteral("cmdEditURL_Click"), e);
    }
}

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

// ---------------------------------------------------------------------------
// Painting

void frmAlarmClock::setDetailsBackColor(int index, qint32 bgr) { setBackColour(txtACDetails[index], bgr); }

void frmAlarmClock::subSetRowDetailsBackColor(int index)
{
    if (const auto palette = schemePalette(m_state.intColorPick, m_state.customColours))
        setDetailsBackColor(index, palette->background);
}

void frmAlarmClock::subSetMainForeAndBackGroundColors()
{
    const int scheme = m_state.intColorPick;
    if (scheme == 2)
        subGloballyLoadfrmAlarmClockColours(m_db, m_state.customColours);
    const auto palette = schemePalette(scheme, m_state.customColours);
    if (!palette)
        return;

    const qint32 text = palette->text;
    setTextColour(lblRows, text);
    setTextColour(lblSetButton, text);
    setTextColour(this, palette->windowText);
    for (QWidget *w : {static_cast<QWidget *>(chkSoundOnOff), static_cast<QWidget *>(chkShow),
                       static_cast<QWidget *>(chkTimeRow), static_cast<QWidget *>(chkMinimizeToTray),
                       static_cast<QWidget *>(lblACDate), static_cast<QWidget *>(lblACTime),
                       static_cast<QWidget *>(lblEventDesc), static_cast<QWidget *>(txtCurrentDateTime)})
        setTextColour(w, text);
    // Labels of this build's own (not in the classic layout) follow the
    // scheme's text colour, so they never inherit the window's white.
    for (QLabel *label : lblJump)
        setTextColour(label, text);
    if (auto *timesLabel = findChild<QLabel *>(QStringLiteral("lblSoundOffTimes")))
        setTextColour(timesLabel, text);
    for (int i = 0; i < kAlarmRows; ++i) {
        setTextColour(lblRowNumber[i], palette->rowNumberText);
        setTextColour(txtURL[i], text);
        setTextColour(lbl24[i], palette->rowNumberText);
        setTextColour(txtACDate[i], text);
        setTextColour(txtACTime[i], text);
        setTextColour(lblCountDownHours[i], text);
        setTextColour(txtACDetails[i], palette->detailsText);
        setTextColour(lblUrlToolTip[i], text);
    }

    // The colours replace the window's brush; a picture that fails to load
    // below must leave the previous one, so keep it.
    const QBrush previousPicture = QWidget::palette().brush(QPalette::Window);
    const qint32 back = palette->background;
    setBackColour(picBottom, back);
    for (QWidget *w : {static_cast<QWidget *>(chkSoundOnOff), static_cast<QWidget *>(chkShow),
                       static_cast<QWidget *>(chkTimeRow), static_cast<QWidget *>(chkMinimizeToTray),
                       static_cast<QWidget *>(lblRows), static_cast<QWidget *>(lblSetButton)})
        setBackColour(w, back);
    setBackColour(this, back);
    for (QWidget *w : {static_cast<QWidget *>(chkSoundOnOff), static_cast<QWidget *>(chkShow),
                       static_cast<QWidget *>(chkTimeRow), static_cast<QWidget *>(chkMinimizeToTray),
                       static_cast<QWidget *>(lblACDate), static_cast<QWidget *>(lblACTime),
                       static_cast<QWidget *>(lblEventDesc), static_cast<QWidget *>(txtCurrentDateTime)})
        setBackColour(w, back);
    for (int i = 0; i < kAlarmRows; ++i) {
        for (QWidget *w : {static_cast<QWidget *>(lblRowNumber[i]), static_cast<QWidget *>(txtURL[i]),
                           static_cast<QWidget *>(lbl24[i]), static_cast<QWidget *>(txtACDate[i]),
                           static_cast<QWidget *>(txtACTime[i]), static_cast<QWidget *>(lblCountDownHours[i]),
                           static_cast<QWidget *>(txtACDetails[i])})
            setBackColour(w, back);
    }

    // A missing or broken picture leaves the colours and the old picture.
    const QString picture = m_platform.appDir.path() + QLatin1Char('/') + QLatin1String(schemePictureName(scheme));
    if (!m_platform.pictures.setBackground(this, picture) && previousPicture.style() == Qt::TexturePattern) {
        QPalette withPicture = QWidget::palette();
        withPicture.setBrush(QPalette::Window, previousPicture);
        setPalette(withPicture);
    }
    if (QWidget *main = m_shell.mainPictureTarget())
        m_platform.pictures.setBackground(main, picture);
}
