// The table window's controls, their layout, and the wiring of their events
// to the handlers.

#include "table/frmAlarmClock.h"

#include "appearance/WidgetColours.h"
#include "platform/Notifier.h"
#include "platform/SleepMonitor.h"
#include "platform/WallTimer.h"
#include "table/ClockTick.h"
#include "table/FlatRowButton.h"
#include "table/SoundingCycle.h"

#include <QCheckBox>
#include <QFocusEvent>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

#include <map>

namespace {

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
    // Each call of standardIcon renders a fresh set of pixmaps at several
    // sizes; thirteen rows share one icon of each kind instead (about 3 MB
    // less), kept only at the size the buttons show.
    std::map<QStyle::StandardPixmap, QIcon> icons;
    auto rowTool = [&](const char *control, int i, QStyle::StandardPixmap icon, const QString &noun,
                       const QString &tooltip) {
        auto *b = new FlatRowButton(this);
        named(b, rowName(control, i), QStringLiteral("%1 %2").arg(noun).arg(i + 1));
        auto known = icons.find(icon);
        if (known == icons.end())
            known = icons.emplace(icon, QIcon(style()->standardIcon(icon).pixmap(b->iconSize(), devicePixelRatioF())))
                        .first;
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
        tip(lblUrlToolTip[i], AlarmRows::urlMarkerTip());
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
    // Hidden and greyed, as a stopped alarm leaves it: a screen reader must
    // not find a button to press before there is an alarm.
    cmdSnooze->setVisible(false);
    cmdSnooze->setEnabled(false);
    outer->addWidget(panel);

    tmrAlarmClock = &m_platform.wallTimer;
    m_cycle = new SoundingCycle(m_platform.sound, m_platform.notifier, m_state, cmdSnooze,
                                [this](qint16 row, std::function<void()> ended) { subPlayRowSound(row, std::move(ended)); },
                                this);
    TickControls tickControls{txtCurrentDateTime, lblCountDownHours, txtACDetails, txtSoundOffTimes, chkShow,
                              [this](int row) { return soundPathOf(row); }, defaultSoundPath()};
    m_tick = std::make_unique<ClockTick>(m_platform, m_state, m_host, *m_cycle, std::move(tickControls));
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
    // Awake again: what the sleep held is handled now, not at the next tick.
    m_platform.sleep.onPrepareForSleep([this](bool sleeping) {
        if (!sleeping && tmrAlarmClock->isActive())
            tmrAlarmClock_Timer();
    });
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
        if (type == QEvent::KeyPress || type == QEvent::InputMethod) {
            return m_entry.filterTyping(i, event);
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
