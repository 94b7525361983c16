#include "info/frmTables.h"

#include <QFrame>
#include <QLabel>
#include <QVBoxLayout>

namespace {

struct Caption {
    const char *name;
    const char *text;
    bool unused; // stored in the database but not used: drawn in red
};

// Both tables in the order their columns are listed; the first entry of each
// is the table's own name.
constexpr Caption alarmTable[] = {
    {"Label2", "tblAlarmClock", false},
    {"Label5", "lngalarmclockid", false},
    {"Label6", "dtalarmclockmmmddyyyy", false},
    {"Label8", "dtalarmclockhhnn", false},
    {"Label9", "stralarmclock (description)", false},
    {"Label7", "strURL (text 220)", false},
    {"Label4", "strWAVEFileNamePath (text 220)", false},
    {"Label3", "strSecondsCountDown (text 20)", true},
    {"Label24", "strRepeatTheTimeDDHHMM (text 8)", true},
};

constexpr Caption settingsTable[] = {
    {"Label1", "tblProgramSetting", false},
    {"Label15", "lngprogramsettingid", false},
    {"Label10", "booTimeRow", false},
    {"Label11", "booAlarmPopupForm", false},
    {"Label12", "booSound", false},
    {"Label13", "booMinimizeToTray", false},
    {"Label14", "intSoundAlarmTimes", false},
    {"Label17", "intColorPick", false},
    {"Label18", "booDonotAskAnyMore", false},
    {"Label19", "strVersion (text 10)", false},
    // The misspelling is the real column name.
    {"Label23", "intRemaingLowerMinutes", false},
    {"Label27", "intRemaingHigherMinutes", false},
    {"Label20", "strCustomColours01 (text 15)", false},
    {"Label21", "...", false},
    {"Label22", "strCustomColours08 (text 15)", false},
    {"Label25", "strCustomColours09 (text 15)", true},
    {"Label26", "strCustomColours10 (text 15)", true},
};

constexpr Caption keyLabel{"Label16", "RED means its in the database but not in use.", true};

QLabel *captionLabel(const Caption &c, QWidget *parent)
{
    auto *label = new QLabel(QString::fromLatin1(c.text), parent);
    label->setObjectName(QString::fromLatin1(c.name));
    if (c.unused) {
        QPalette red = label->palette();
        red.setColor(QPalette::WindowText, QColor(255, 0, 0));
        label->setPalette(red);
    }
    return label;
}

template <size_t N>
QFrame *tableFrame(const char *name, const QString &accessible, const Caption (&captions)[N], QWidget *parent)
{
    auto *frame = new QFrame(parent);
    frame->setObjectName(QString::fromLatin1(name));
    frame->setAccessibleName(accessible);
    frame->setFrameShape(QFrame::StyledPanel);
    frame->setFrameShadow(QFrame::Sunken);
    // A sheet of paper look. The colour changes rather than the background
    // role, so the labels keep drawing with WindowText and their red shows.
    QPalette paper = frame->palette();
    paper.setColor(QPalette::Window, paper.color(QPalette::Base));
    frame->setPalette(paper);
    frame->setAutoFillBackground(true);

    auto *column = new QVBoxLayout(frame);
    column->setContentsMargins(14, 12, 14, 14);
    column->setSpacing(3);
    for (size_t i = 0; i < N; ++i) {
        QLabel *label = captionLabel(captions[i], frame);
        if (i == 0) {
            QFont heading = label->font();
            heading.setBold(true);
            heading.setPointSize(heading.pointSize() + 2);
            label->setFont(heading);
            column->addWidget(label);
            column->addSpacing(6);
        } else {
            label->setIndent(10);
            column->addWidget(label);
        }
    }
    column->addStretch(1);
    return frame;
}

} // namespace

frmTables::frmTables(QWidget *parent) : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("frmTables"));
    setWindowTitle(QStringLiteral("Table Design"));
    setFont(QFont(QStringLiteral("Arial"), 9));

    Picture2 = tableFrame("Picture2", QStringLiteral("Alarm rows table"), alarmTable, this);
    Picture1 = tableFrame("Picture1", QStringLiteral("Program settings table"), settingsTable, this);

    auto *tables = new QHBoxLayout;
    tables->setSpacing(14);
    tables->addWidget(Picture2, 1);
    tables->addWidget(Picture1, 1);

    auto *root = new QVBoxLayout(this);
    root->setContentsMargins(14, 14, 14, 12);
    root->setSpacing(10);
    root->addLayout(tables, 1);
    root->addWidget(captionLabel(keyLabel, this));
}
