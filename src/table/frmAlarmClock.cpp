#include "table/frmAlarmClock.h"

#include "appearance/CustomColoursLoader.h"
#include "appearance/SchemePalette.h"
#include "appearance/WidgetColours.h"
#include "data/Database.h"
#include "data/ProgramSettings.h"
#include "editors/frmEditURL.h"
#include "editors/frmEditWAVEFileNamePath.h"
#include "platform/AppDirectory.h"
#include "rules/AppError.h"
#include "platform/Clock.h"
#include "platform/FileSystem.h"
#include "platform/MessageBox.h"
#include "platform/Notifier.h"
#include "platform/PictureLoader.h"
#include "platform/SoundPlayer.h"
#include "platform/UrlOpener.h"
#include "platform/WallTimer.h"
#include "shell/ShellLink.h"
#include "rules/DateText.h"
#include "rules/RowState.h"
#include "table/ClockTick.h"
#include "table/FlatRowButton.h"
#include "table/SoundingCycle.h"
#include "rules/TimeRowArithmetic.h"
#include "rules/TimeText.h"
#include "rules/ValueConversions.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QEvent>
#include <QFocusEvent>
#include <QInputMethodEvent>
#include <QFrame>
#include <QIcon>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QShowEvent>
#include <QStyle>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <map>

namespace {

const QString kUrlMarkerTip = QStringLiteral("Reveals the URL description.");
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

// ---------------------------------------------------------------------------
// Layout

void frmAlarmClock::buildControls()
{
    auto named = [](QWidget *w, const QString &name, const QString &accessible = QString()) {
        w->setObjectName(name);
        if (!accessible.isEmpty())
            w->setAccessibleName(accessible);
        return w;
    };
    auto tip = [](QWidget *w, const QString &text) {
        w->setToolTip(text);
        w->setAccessibleDescription(text);
    };
    auto rowName = [](const char *control, int i) { return QStringLiteral("%1_%2").arg(QLatin1String(control)).arg(i); };
    // Each call of standardIcon renders a fresh set of pixmaps; thirteen
    // rows share one icon of each kind instead (about 3 MB less).
    std::map<QStyle::StandardPixmap, QIcon> icons;
    auto rowTool = [&](const char *control, int i, QStyle::StandardPixmap icon, const QString &noun,
                       const QString &tooltip) {
        auto *b = new FlatRowButton(this);
        named(b, rowName(control, i), QStringLiteral("%1 %2").arg(noun).arg(i + 1));
        auto known = icons.find(icon);
        if (known == icons.end())
            known = icons.emplace(icon, style()->standardIcon(icon)).first;
        b->setIcon(known->second);
        b->setAutoRaise(true);
        b->setFocusPolicy(Qt::TabFocus);
        tip(b, tooltip);
        return b;
    };

    // Widths follow the font, fitting the longest text each box shows.
    const QFontMetrics fm(font());
    auto fits = [&fm](const char *sample, int padding) {
        return fm.horizontalAdvance(QLatin1String(sample)) + padding;
    };

    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(8, 6, 8, 6);
    outer->setSpacing(4);

    // Clock read-out and time row.
    // The read-out and the rows each sit in a widget of their own (as the
    // bottom panel does): repainting the read-out every second then looks
    // at a handful of neighbours rather than at every control of the table.
    auto *topStrip = new QWidget(this);
    auto *top = new QHBoxLayout(topStrip);
    top->setContentsMargins(0, 0, 0, 0);
    txtCurrentDateTime = new QLabel(QStringLiteral("SYSTEM DATE AND TIME COUNTER"), topStrip);
    named(txtCurrentDateTime, QStringLiteral("txtCurrentDateTime"));
    QFont clockFont = font();
    clockFont.setPointSizeF(clockFont.pointSizeF() * 1.45);
    clockFont.setBold(true);
    txtCurrentDateTime->setFont(clockFont);
    // A fixed size, fitting the widest month: a label that may change size
    // makes every tick lay out the whole table again.
    {
        const QFontMetrics clockMetrics(clockFont);
        int widest = 0;
        for (int month = 1; month <= 12; ++month)
            widest = std::max(widest, clockMetrics.horizontalAdvance(
                                          QLocale::c().monthName(month, QLocale::ShortFormat)
                                          + QStringLiteral(" 00, 0000 00:00:00")));
        txtCurrentDateTime->setFixedSize(widest + 8, clockMetrics.height() + 4);
    }
    top->addWidget(txtCurrentDateTime);
    top->addStretch(1);
    const char *jumpNames[3] = {"txtJumpDay", "txtJumpHour", "txtJumpMinutes"};
    const QString jumpCaptions[3] = {QStringLiteral("Days"), QStringLiteral("Hours"), QStringLiteral("Minutes")};
    const QString jumpAccessible[3] = {QStringLiteral("Days offset"), QStringLiteral("Hours offset"),
                                       QStringLiteral("Minutes offset")};
    const QString jumpTips[3] = {
        QStringLiteral("Time Row: Sets the DAYS build time. (push the SET button)"),
        QStringLiteral("Time Row: Sets the HOURS build time. (push the SET button)"),
        QStringLiteral("Time Row: Sets the MINUTES build time. (push the SET button)")};
    for (int b = 0; b < 3; ++b) {
        lblJump[size_t(b)] = new QLabel(jumpCaptions[b], topStrip);
        named(lblJump[size_t(b)], QStringLiteral("lblJump_%1").arg(b));
        auto *box = new QLineEdit(QStringLiteral("0"), topStrip);
        named(box, QLatin1String(jumpNames[b]), jumpAccessible[b]);
        tip(box, jumpTips[b]);
        box->setFixedWidth(fits("00000", 14));
        box->setAlignment(Qt::AlignRight);
        box->setProperty("jump", b);
        lblJump[size_t(b)]->setBuddy(box);
        txtJump[size_t(b)] = box;
        top->addWidget(lblJump[size_t(b)]);
        top->addWidget(box);
    }
    outer->addWidget(topStrip);

    // The rows.
    auto *rowsPanel = new QWidget(this);
    rowsPanel->setObjectName(QStringLiteral("rowsPanel"));
    auto *grid = new QGridLayout(rowsPanel);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(4);
    grid->setVerticalSpacing(2);
    auto heading = [&](QLabel *&label, const char *name, const QString &caption, int column, int span = 1) {
        label = new QLabel(caption, this);
        named(label, QLatin1String(name));
        QFont f = label->font();
        f.setBold(true);
        label->setFont(f);
        grid->addWidget(label, 0, column, 1, span);
    };
    heading(lblRows, "lblRows", QStringLiteral("row #"), 0);
    heading(lblACDate, "lblACDate", QStringLiteral("DATE"), 1);
    heading(lblACTime, "lblACTime", QStringLiteral("TIME"), 2);
    heading(lblEventDesc, "lblEventDesc", QStringLiteral("EVENT DESCRIPTION"), 4);
    heading(lblSetButton, "lblSetButton", QStringLiteral("SET"), 10);
    lblSetButton->setAlignment(Qt::AlignCenter);

    for (int i = 0; i < kAlarmRows; ++i) {
        const int r = i + 1;
        lblRowNumber[i] = new QLabel(QString::number(r), this);
        named(lblRowNumber[i], rowName("lblRowNumber", i));
        lblRowNumber[i]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);

        txtACDate[i] = new QLineEdit(this);
        named(txtACDate[i], rowName("txtACDate", i), QStringLiteral("Date %1").arg(r));
        txtACDate[i]->setFixedWidth(fits("Sep 30, 2031", 18));
        txtACDate[i]->setPlaceholderText(QStringLiteral("daily"));

        txtACTime[i] = new QLineEdit(this);
        named(txtACTime[i], rowName("txtACTime", i), QStringLiteral("Time %1").arg(r));
        tip(txtACTime[i], QStringLiteral("Leave the date blank to make a 24 hr clock."));
        txtACTime[i]->setFixedWidth(fits("00:00", 16));

        lbl24[i] = new QLabel(QStringLiteral("24h"), this);
        named(lbl24[i], rowName("lbl24", i));
        tip(lbl24[i], QStringLiteral("This row is working on a 24 hour clock cycle."));
        lbl24[i]->setVisible(false);
        lbl24[i]->setFixedWidth(fits("24h", 6));

        txtACDetails[i] = new QLineEdit(this);
        named(txtACDetails[i], rowName("txtACDetails", i), QStringLiteral("Description %1").arg(r));
        tip(txtACDetails[i], QStringLiteral("Description of your date and time event."));

        lblCountDownHours[i] = new QLabel(this);
        named(lblCountDownHours[i], rowName("lblCountDownHours", i));
        // Fixed, like the read-out: a size that follows the text would lay
        // the table out again at every minute's evaluation, just before an
        // alarm sounds. Wide enough for the longest count there is.
        lblCountDownHours[i]->setFixedSize(fits("00000d 00h 00m 00s ", 4), fm.height() + 4);

        // The path and the address live in the row but are edited in their
        // own dialogs; the row shows them through its buttons and marker.
        txtWAVEFileNamePath[i] = new QLineEdit(this);
        named(txtWAVEFileNamePath[i], rowName("txtWAVEFileNamePath", i), QStringLiteral("Sound file %1").arg(r));
        txtWAVEFileNamePath[i]->setVisible(false);
        txtURL[i] = new QLineEdit(this);
        named(txtURL[i], rowName("txtURL", i), QStringLiteral("URL %1").arg(r));
        txtURL[i]->setVisible(false);

        cmdSoundRow[i] = rowTool("cmdSoundRow", i, QStyle::SP_MediaVolume, QStringLiteral("Change sound"),
                                 QStringLiteral("Change sound file path."));
        cmdEditURL[i] = rowTool("cmdEditURL", i, QStyle::SP_FileDialogDetailedView, QStringLiteral("Edit URL"),
                                QStringLiteral("Edit this rows URL."));
        cmdOpenURL[i] = rowTool("cmdOpenURL", i, QStyle::SP_ArrowRight, QStringLiteral("Open URL"),
                                QStringLiteral("Create and go to this rows event URL."));

        lblUrlToolTip[i] = new QLabel(QStringLiteral("?"), this);
        named(lblUrlToolTip[i], rowName("lblUrlToolTip", i));
        tip(lblUrlToolTip[i], kUrlMarkerTip);
        lblUrlToolTip[i]->setFixedWidth(fits("?", 6));
        lblUrlToolTip[i]->setAlignment(Qt::AlignCenter);

        cmdSetDateTime[i] = new QPushButton(QStringLiteral("SET"), this);
        named(cmdSetDateTime[i], rowName("cmdSetDateTime", i), QStringLiteral("SET %1").arg(r));
        tip(cmdSetDateTime[i], QStringLiteral("Sets the current date & time (plus the time row values) to this row."));
        cmdSetDateTime[i]->setFixedWidth(fits("SET", 20));
        cmdSetDateTime[i]->setFocusPolicy(Qt::TabFocus);

        cmdClearRow[i] = rowTool("cmdClearRow", i, QStyle::SP_DialogDiscardButton, QStringLiteral("Clear row"),
                                 QStringLiteral("Clear this row."));

        for (QWidget *w : {static_cast<QWidget *>(txtACDate[i]), static_cast<QWidget *>(txtACTime[i]),
                           static_cast<QWidget *>(txtACDetails[i]), static_cast<QWidget *>(cmdSoundRow[i]),
                           static_cast<QWidget *>(cmdEditURL[i]), static_cast<QWidget *>(cmdOpenURL[i]),
                           static_cast<QWidget *>(cmdSetDateTime[i]), static_cast<QWidget *>(cmdClearRow[i])})
            w->setProperty("row", i);

        int c = 0;
        for (QWidget *w : {static_cast<QWidget *>(lblRowNumber[i]), static_cast<QWidget *>(txtACDate[i]),
                           static_cast<QWidget *>(txtACTime[i]), static_cast<QWidget *>(lbl24[i]),
                           static_cast<QWidget *>(txtACDetails[i]), static_cast<QWidget *>(lblCountDownHours[i]),
                           static_cast<QWidget *>(cmdSoundRow[i]), static_cast<QWidget *>(cmdEditURL[i]),
                           static_cast<QWidget *>(cmdOpenURL[i]), static_cast<QWidget *>(lblUrlToolTip[i]),
                           static_cast<QWidget *>(cmdSetDateTime[i]), static_cast<QWidget *>(cmdClearRow[i])})
            grid->addWidget(w, r, c++);
    }
    grid->setColumnStretch(4, 1);
    // Airy rows at the standard size, rather than a gap under a tight grid.
    for (int r = 1; r <= kAlarmRows; ++r)
        grid->setRowMinimumHeight(r, std::max(32, fm.height() + 14));
    outer->addWidget(rowsPanel);
    outer->addStretch(1);

    // Bottom panel: switches, plays, the table buttons and the snooze button.
    auto *panel = new QFrame(this);
    picBottom = panel;
    named(panel, QStringLiteral("picBottom"));
    panel->setFrameShape(QFrame::StyledPanel);
    auto *bottom = new QGridLayout(panel);
    bottom->setContentsMargins(8, 6, 8, 6);
    bottom->setHorizontalSpacing(14);
    bottom->setVerticalSpacing(4);
    auto check = [&](QCheckBox *&box, const char *name, const QString &caption, bool checked, int row, int col) {
        box = new QCheckBox(caption, panel);
        named(box, QLatin1String(name));
        box->setChecked(checked);
        bottom->addWidget(box, row, col);
    };
    check(chkTimeRow, "chkTimeRow", QStringLiteral("Time Row [Deactivated]"), false, 0, 0);
    tip(chkTimeRow, QStringLiteral("The time row appears at the top of this application and will calculate your "
                                   "build times by either DAYS/HOURS/MINUTES."));
    check(chkSoundOnOff, "chkSoundOnOff", QStringLiteral("Sound [on]"), true, 1, 0);
    check(chkShow, "chkShow", QStringLiteral("On Alarm Popup the Form [off]"), false, 0, 1);
    check(chkMinimizeToTray, "chkMinimizeToTray", QStringLiteral("Minimize to Tray [Allowed]"), true, 1, 1);
    tip(chkMinimizeToTray,
        QStringLiteral("This allows the user to hide the application to the task icons to the bottom right."));

    auto *timesRow = new QHBoxLayout;
    auto *timesLabel = new QLabel(QStringLiteral("Sound times"), panel);
    timesLabel->setObjectName(QStringLiteral("lblSoundOffTimes"));
    txtSoundOffTimes = new QLineEdit(QStringLiteral("1"), panel);
    named(txtSoundOffTimes, QStringLiteral("txtSoundOffTimes"), QStringLiteral("Sound times"));
    tip(txtSoundOffTimes, QStringLiteral("Number of Times to Sound off the Alarm at intervals of 15 seconds between "
                                         "WAV file plays."));
    QFont small = font();
    small.setFamily(QStringLiteral("Small Fonts"));
    txtSoundOffTimes->setFont(small);
    txtSoundOffTimes->setFixedWidth(fits("0000", 16));
    txtSoundOffTimes->setAlignment(Qt::AlignRight);
    timesLabel->setBuddy(txtSoundOffTimes);
    timesRow->addWidget(timesLabel);
    timesRow->addWidget(txtSoundOffTimes);
    timesRow->addStretch(1);
    bottom->addLayout(timesRow, 0, 2);

    auto *buttons = new QHBoxLayout;
    auto button = [&](QPushButton *&b, const char *name, const QString &caption, const QString &accessible,
                      const QString &tooltip) {
        b = new QPushButton(caption, panel);
        named(b, QLatin1String(name), accessible);
        tip(b, tooltip);
        buttons->addWidget(b);
    };
    button(cmdSave, "cmdSave", QStringLiteral("Save"), QStringLiteral("Save"),
           QStringLiteral("Save all of your changes and URL descriptions."));
    button(cmdLoad, "cmdLoad", QStringLiteral("Load"), QStringLiteral("Load"),
           QStringLiteral("Revert back to the last time this form of data was saved."));
    button(cmdClearForm, "cmdClearForm", QStringLiteral("Clear Form"), QStringLiteral("Clear form"),
           QStringLiteral("Clear the entire Form."));
    bottom->addLayout(buttons, 1, 2);

    cmdSnooze = new QPushButton(QStringLiteral("click me to turn off the alarm"), panel);
    named(cmdSnooze, QStringLiteral("cmdSnooze"));
    cmdSnooze->setMinimumHeight(40);
    QFont snoozeFont = cmdSnooze->font();
    snoozeFont.setBold(true);
    cmdSnooze->setFont(snoozeFont);
    bottom->addWidget(cmdSnooze, 0, 3, 2, 1);
    bottom->setColumnStretch(3, 1);
    cmdSnooze->setVisible(false);
    outer->addWidget(panel);

    tmrAlarmClock = &m_platform.wallTimer;
    m_cycle = new SoundingCycle(m_platform.sound, m_platform.notifier, m_state, cmdSnooze,
                                [this](qint16 row) { subPlayRowSound(row); }, this);
    TickControls tickControls{txtCurrentDateTime, lblCountDownHours, txtACDetails, txtSoundOffTimes, chkShow,
                              [this](int row) { return soundPathOf(row); }};
    m_tick = std::make_unique<ClockTick>(m_platform, m_state, m_shell, *m_cycle, std::move(tickControls));
    tmrAlarmSound = m_cycle->tmrAlarmSound;
    tmrAlarmSoundFlash = m_cycle->tmrAlarmSoundFlash;

    for (QWidget *w : {static_cast<QWidget *>(chkTimeRow), static_cast<QWidget *>(chkSoundOnOff),
                       static_cast<QWidget *>(chkShow), static_cast<QWidget *>(chkMinimizeToTray)})
        w->setAccessibleName(static_cast<QCheckBox *>(w)->text());
    for (QLineEdit *box : txtJump)
        box->setVisible(false);
    for (QLabel *label : lblJump)
        label->setVisible(false);
}

void frmAlarmClock::connectHandlers()
{
    for (int i = 0; i < kAlarmRows; ++i) {
        connect(txtACDate[i], &QLineEdit::textChanged, this, [this, i] { txtACDate_Change(i); });
        connect(txtACTime[i], &QLineEdit::textChanged, this, [this, i] { txtACTime_Change(i); });
        connect(txtACDetails[i], &QLineEdit::textChanged, this, [this, i] { txtACDetails_Change(i); });
        for (QLineEdit *box : {txtACDate[i], txtACTime[i], txtACDetails[i]})
            box->installEventFilter(this);
        connect(cmdSetDateTime[i], &QPushButton::clicked, this, [this, i] { cmdSetDateTime_Click(i); });
        connect(cmdClearRow[i], &QToolButton::clicked, this, [this, i] { cmdClearRow_Click(i); });
        connect(cmdSoundRow[i], &QToolButton::clicked, this, [this, i] { cmdSoundRow_Click(i); });
        connect(cmdEditURL[i], &QToolButton::clicked, this, [this, i] { cmdEditURL_Click(i); });
        connect(cmdOpenURL[i], &QToolButton::clicked, this, [this, i] { cmdOpenURL_Click(i); });
    }
    for (QLineEdit *box : txtJump)
        box->installEventFilter(this);
    txtSoundOffTimes->installEventFilter(this);

    // A check box's click runs whenever its value changes, by hand or by code.
    connect(chkSoundOnOff, &QCheckBox::toggled, this, [this] { chkSoundOnOff_Click(); });
    connect(chkShow, &QCheckBox::toggled, this, [this] { chkShow_Click(); });
    connect(chkMinimizeToTray, &QCheckBox::toggled, this, [this] { chkMinimizeToTray_Click(); });
    connect(chkTimeRow, &QCheckBox::toggled, this, [this] { chkTimeRow_Click(); });

    connect(cmdSnooze, &QPushButton::clicked, this, [this] { cmdSnooze_Click(); });
    connect(cmdSave, &QPushButton::clicked, this, [this] { cmdSave_Click(); });
    connect(cmdLoad, &QPushButton::clicked, this, [this] { cmdLoad_Click(); });
    connect(cmdClearForm, &QPushButton::clicked, this, [this] { cmdClearForm_Click(); });

    tmrAlarmClock->onTimeout([this] { tmrAlarmClock_Timer(); });
    m_platform.notifier.onStop([this] { cmdSnooze_Click(); });
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
                    lblUrlToolTip[i]->setToolTip(url.isEmpty() ? kUrlMarkerTip : url);
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
    lblUrlToolTip[i]->setToolTip(kUrlMarkerTip);
    lblUrlToolTip[i]->setAccessibleDescription(kUrlMarkerTip);
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
