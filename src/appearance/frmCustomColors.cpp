#include "appearance/frmCustomColors.h"

#include "appearance/ColourText.h"
#include "appearance/CustomColoursLoader.h"
#include "appearance/WidgetColours.h"
#include "data/Database.h"
#include "links/AlarmState.h"
#include "links/CustomColorsHost.h"
#include "platform/ColourPicker.h"
#include "platform/MessageBox.h"
#include "rules/AppError.h"
#include "rules/ValueConversions.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

const char *const kSlotCaptions[8] = {"Foreground (titles and the counters)",
                                      "Background",
                                      "Alarm Clock will not trip for hours.",
                                      "8 minutes till Alarm Clock trips.",
                                      "52 minutes till Alarm Clock trips.",
                                      "The Alarm has sounded for this event.",
                                      "24 Hour Alarm Clock has just passed.",
                                      "Event Description Foreground (not the title)"};

QString slotField(int n) { return QStringLiteral("strCustomColours%1").arg(n, 2, 10, QLatin1Char('0')); }

} // namespace

frmCustomColors::frmCustomColors(const Platform &platform, Database &db, AlarmState &state, CustomColorsHost &host,
                                 QWidget *parent)
    : QWidget(parent), m_platform(platform), m_db(db), m_state(state), m_host(host)
{
    setObjectName(QStringLiteral("frmCustomColors"));
    setWindowTitle(QStringLiteral("Custom Colors"));
    setFont(QFont(QStringLiteral("Arial"), 9));
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(12, 12, 12, 12);

    // A plain-text label shows each ampersand as it is: the user reads
    // &H00C000C0&, the form a colour is typed in.
    lblHelpTip = new QLabel(QStringLiteral("HOW TO: You can enter values like: &H00C000C0& or its number 12583104. "
                                           "The internet has pallets for you to work with or try the built in Color "
                                           "Picker."),
                            this);
    lblHelpTip->setObjectName(QStringLiteral("lblHelpTip"));
    lblHelpTip->setTextFormat(Qt::PlainText);
    lblHelpTip->setWordWrap(true);
    outer->addWidget(lblHelpTip);
    // The window's own background is the scratch preview and may turn any
    // colour; the texts keep a background of their own so they stay readable.
    auto keepReadable = [](QLabel *label) {
        label->setMargin(3);
        setBackColour(label, 0xFFFFFF);
        setTextColour(label, 0x000000);
    };
    keepReadable(lblHelpTip);

    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(8);
    for (int i = 0; i < 8; ++i) {
        const int n = i + 1;
        auto *caption = new QLabel(QLatin1String(kSlotCaptions[i]), this);
        caption->setObjectName(QStringLiteral("lblCustomColours%1").arg(n, 2, 10, QLatin1Char('0')));
        keepReadable(caption);
        auto *box = new QLineEdit(this);
        box->setObjectName(QStringLiteral("txtCustomColours%1").arg(n, 2, 10, QLatin1Char('0')));
        box->setAccessibleName(QStringLiteral("Colour %1").arg(n));
        box->setMaxLength(15);
        box->setFixedWidth(120);
        box->setProperty("slot", n);
        box->installEventFilter(this);
        caption->setBuddy(box);
        auto *swatch = new QLabel(this);
        swatch->setObjectName(QStringLiteral("lblFillColor_%1").arg(i));
        swatch->setFixedSize(40, 22);
        swatch->setFrameShape(QFrame::Box);
        swatch->setAutoFillBackground(true);
        auto *picker = new QPushButton(QStringLiteral("Color Picker"), this);
        picker->setObjectName(QStringLiteral("cmdColorPicker_%1").arg(i));
        picker->setAccessibleName(picker->text());
        picker->installEventFilter(this);
        connect(picker, &QPushButton::clicked, this, [this, i] { cmdColorPicker_Click(i); });
        grid->addWidget(caption, i, 0);
        grid->addWidget(box, i, 1);
        grid->addWidget(swatch, i, 2);
        grid->addWidget(picker, i, 3);
        lblCustomColours[size_t(i)] = caption;
        txtCustomColours[size_t(i)] = box;
        lblFillColor[size_t(i)] = swatch;
        cmdColorPicker[size_t(i)] = picker;
    }
    outer->addLayout(grid);

    auto *buttons = new QHBoxLayout;
    auto button = [&](QPushButton *&b, const char *name, const QString &caption, const QString &tip) {
        b = new QPushButton(caption, this);
        b->setObjectName(QLatin1String(name));
        if (!tip.isEmpty()) {
            b->setToolTip(tip);
            b->setAccessibleDescription(tip);
        }
        b->installEventFilter(this);
        buttons->addWidget(b);
    };
    button(cmdShowLegend, "cmdShowLegend", QStringLiteral("Show Current Legend"), QString());
    buttons->addStretch(1);
    button(cmdClearForm, "cmdClearForm", QStringLiteral("Clear"), QStringLiteral("Clear writing box."));
    button(cmdApply, "cmdApply", QStringLiteral("Apply"), QStringLiteral("Apply your changes."));
    outer->addLayout(buttons);
    connect(cmdShowLegend, &QPushButton::clicked, this, [this] { cmdShowLegend_Click(); });
    connect(cmdClearForm, &QPushButton::clicked, this, [this] { cmdClearForm_Click(); });
    connect(cmdApply, &QPushButton::clicked, this, [this] { cmdApply_Click(); });

    setBackColour(this, 0xFFFFFF);
    subLoadProgramSettingCustomColours();
}

void frmCustomColors::subLoadProgramSettingCustomColours()
{
    try {
        Recordset rs = m_db.MyDB().openTable(QStringLiteral("tblprogramsetting"));
        if (!rs.eof()) {
            rs.moveFirst();
            for (int n = 1; n <= 8; ++n) {
                const QString text = textValue(rs.field(slotField(n)));
                m_state.customColours.setSlot(n, colourFromText(text));
                setBackColour(lblFillColor[size_t(n - 1)], m_state.customColours.slot(n));
                txtCustomColours[size_t(n - 1)]->setText(text);
            }
        }
        rs.close();
    } catch (const AppError &e) {
        showErrorBox(m_platform.messages, QStringLiteral("subLoadProgramSettingCustomColours"), e);
    }
}

void frmCustomColors::preview(int n)
{
    // The window itself is the scratch preview; the swatch copies it.
    setBackColour(this, colourFromText(txtCustomColours[size_t(n - 1)]->text()));
    setBackColour(lblFillColor[size_t(n - 1)], backColour(this));
}

void frmCustomColors::txtCustomColours_KeyUp(int n, int keyCode)
{
    if (keyCode == 13)
        preview(n);
}

void frmCustomColors::txtCustomColours_GotFocus(int n) { preview(n); }

void frmCustomColors::cmdColorPicker_Click(int index)
{
    const std::optional<qint32> chosen = m_platform.colours.pick(m_pickerColour);
    if (!chosen)
        return; // cancelled: nothing changes
    m_pickerColour = *chosen;
    if (index < 8)
        txtCustomColours[size_t(index)]->setText(QString::number(*chosen));
    setBackColour(this, *chosen);
    setBackColour(lblFillColor[size_t(index)], *chosen);
}

void frmCustomColors::cmdShowLegend_Click()
{
    // In memory only: the legend and the Custom rows preview these until
    // the dialog closes and reloads the stored ones.
    for (int n = 1; n <= 8; ++n)
        m_state.customColours.setSlot(n, colourFromText(txtCustomColours[size_t(n - 1)]->text()));
    m_previewed = true;
    m_host.showLegend();
}

void frmCustomColors::cmdApply_Click()
{
    try {
        for (int n = 1; n <= 8; ++n)
            m_state.customColours.setSlot(n, colourFromText(txtCustomColours[size_t(n - 1)]->text()));
        m_previewed = true; // until the close reads back what was stored
        {
            Recordset rs = m_db.MyDB().openTable(QStringLiteral("tblprogramsetting"));
            if (!rs.eof()) {
                rs.moveFirst();
                rs.edit();
                // The text as typed (trimmed), not the number it reads as.
                for (int n = 1; n <= 8; ++n)
                    rs.setField(slotField(n), txtCustomColours[size_t(n - 1)]->text().trimmed());
                rs.update();
                rs.close();
            }
        }
        m_host.subUnloadSecondaryForms();
        m_host.setColourMarks(2);
        m_state.intColorPick = 2;
        m_db.MyDB().execute(QStringLiteral("UPDATE tblprogramsetting set intColorPick = 2;"));
        m_host.subSetMainForeAndBackGroundColors();
        m_host.subResetMainWindowSize();
        m_state.bEvaluateNow = true;
    } catch (const AppError &e) {
        showErrorBox(m_platform.messages, QStringLiteral("Err_subSetColorPicked"), e);
    }
}

void frmCustomColors::cmdClearForm_Click()
{
    for (QLineEdit *box : txtCustomColours)
        box->clear();
}

void frmCustomColors::button_GotFocus() { setBackColour(this, 0xFFFFFF); }

bool frmCustomColors::eventFilter(QObject *watched, QEvent *event)
{
    const QVariant slot = watched->property("slot");
    if (slot.isValid()) {
        if (event->type() == QEvent::FocusIn)
            txtCustomColours_GotFocus(slot.toInt());
        else if (event->type() == QEvent::KeyRelease) {
            const int key = static_cast<QKeyEvent *>(event)->key();
            txtCustomColours_KeyUp(slot.toInt(), key == Qt::Key_Return || key == Qt::Key_Enter ? 13 : 0);
        }
    } else if (event->type() == QEvent::FocusIn && qobject_cast<QPushButton *>(watched)) {
        button_GotFocus();
    }
    return QWidget::eventFilter(watched, event);
}

void frmCustomColors::closeEvent(QCloseEvent *event)
{
    event->accept();
    // Colours previewed but not applied are thrown away.
    // Only then: closing (which an alarm's pop-up may do) reads nothing else.
    if (m_previewed)
        subGloballyLoadfrmAlarmClockColours(m_db, m_state.customColours);
    m_host.closeSequence();
}
