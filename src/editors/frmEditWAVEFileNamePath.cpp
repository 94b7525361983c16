#include "editors/frmEditWAVEFileNamePath.h"

#include "appearance/DialogScheme.h"
#include "links/AlarmState.h"
#include "links/RowEdits.h"
#include "links/SecondaryHost.h"
#include "platform/AppDirectory.h"
#include "platform/MessageBox.h"
#include "platform/SoundPlayer.h"
#include "rules/ValueConversions.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>

frmEditWAVEFileNamePath::frmEditWAVEFileNamePath(const Platform &platform, RowEdits &table,
                                                 const AlarmState &state, SecondaryHost &host, QWidget *parent)
    : QWidget(parent), m_platform(platform), m_table(table), m_state(state), m_host(host)
{
    setObjectName(QStringLiteral("frmEditWAVEFileNamePath"));
    setWindowTitle(QStringLiteral("WAV File Name Pathing:"));
    setFont(QFont(QStringLiteral("Arial"), 9));
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(12, 12, 12, 12);
    auto *rowCaption = new QLabel(QStringLiteral("Row"), this);
    rowCaption->setObjectName(QStringLiteral("lblRowCaption"));
    lblintIndex = new QLabel(this);
    lblintIndex->setObjectName(QStringLiteral("lblintIndex"));
    QFont bold = lblintIndex->font();
    bold.setBold(true);
    lblintIndex->setFont(bold);
    txtEditWAVEFileNamePath = new QLineEdit(this);
    txtEditWAVEFileNamePath->setObjectName(QStringLiteral("txtEditWAVEFileNamePath"));
    txtEditWAVEFileNamePath->setAccessibleName(QStringLiteral("Sound file path"));
    txtEditWAVEFileNamePath->setMinimumWidth(460);
    txtEditWAVEFileNamePath->installEventFilter(this);

    auto button = [&](QPushButton *&b, const char *name, const QString &caption, const QString &tip) {
        b = new QPushButton(caption, this);
        b->setObjectName(QLatin1String(name));
        b->setToolTip(tip);
        b->setAccessibleDescription(tip);
    };
    // "D" for Default, as the empty-path message tells the user.
    button(cmdSoundTest, "cmdSoundTest", QStringLiteral("Sound &Test"), QStringLiteral("Sound Test of your path."));
    button(cmdDefaultPath, "cmdDefaultPath", QStringLiteral("&Default"),
           QStringLiteral("Default Application Path & alarm.wav naming scheme."));
    button(cmdClearForm, "cmdClearForm", QStringLiteral("&Clear"), QStringLiteral("Clear writing box."));
    button(cmdApply, "cmdApply", QStringLiteral("&Apply"), QStringLiteral("Apply your changes."));

    auto *head = new QHBoxLayout;
    head->addWidget(rowCaption);
    head->addWidget(lblintIndex);
    head->addStretch(1);
    grid->addLayout(head, 0, 0, 1, 5);
    grid->addWidget(txtEditWAVEFileNamePath, 1, 0, 1, 5);
    grid->addWidget(cmdSoundTest, 2, 0);
    grid->addWidget(cmdDefaultPath, 2, 1);
    grid->setColumnStretch(2, 1);
    grid->addWidget(cmdClearForm, 2, 3);
    grid->addWidget(cmdApply, 2, 4);
    connect(cmdApply, &QPushButton::clicked, this, [this] { cmdApply_Click(); });
    connect(cmdDefaultPath, &QPushButton::clicked, this, [this] { cmdDefaultPath_Click(); });
    connect(cmdSoundTest, &QPushButton::clicked, this, [this] { cmdSoundTest_Click(); });
    connect(cmdClearForm, &QPushButton::clicked, this, [this] { cmdClearForm_Click(); });
    Form_Load();
}

void frmEditWAVEFileNamePath::editRow(int row, const QString &path)
{
    lblintIndex->setText(QString::number(row + 1));
    txtEditWAVEFileNamePath->setText(path);
}

void frmEditWAVEFileNamePath::Form_Load() { applySchemeToDialog(this, m_state.intColorPick, m_state.customColours); }

void frmEditWAVEFileNamePath::cmdApply_Click()
{
    const int row = integerValue(lblintIndex->text()) - 1;
    if (row < 0 || row >= kAlarmRows)
        return;
    // Not checked for existence: a missing file shows up at test or alarm time.
    m_table.setRowSoundPath(row, txtEditWAVEFileNamePath->text().trimmed());
    close();
    m_host.maximizeTableWindow();
}

void frmEditWAVEFileNamePath::cmdDefaultPath_Click()
{
    txtEditWAVEFileNamePath->setText(m_platform.appDir.path() + QStringLiteral("/alarm.wav"));
}

void frmEditWAVEFileNamePath::cmdSoundTest_Click()
{
    const QString path = txtEditWAVEFileNamePath->text().trimmed();
    if (path.isEmpty()) {
        m_platform.messages.show(QStringLiteral("Please enter your custom path or use the 'D'efault button to let the "
                                                "program set you a path."),
                                 MsgButtons::OkCancel, MsgIcon::None, QStringLiteral("NO PATH ENTERED"));
        return;
    }
    // The player looks for the file off this thread (a mount that hangs must
    // not freeze the window) and says so when it is not there.
    m_platform.sound.play(path, QString(), [editor = QPointer(this), path](bool found) {
        if (editor && !found)
            editor->m_platform.messages.show(QStringLiteral("Missing the file:\r\n") + path, MsgButtons::OkCancel,
                                             MsgIcon::None, QStringLiteral("PATH NOT FOUND"));
    });
}

void frmEditWAVEFileNamePath::cmdClearForm_Click() { txtEditWAVEFileNamePath->clear(); }

void frmEditWAVEFileNamePath::txtEditWAVEFileNamePath_KeyUp(int keyCode)
{
    if (keyCode == 13)
        cmdApply_Click();
}

bool frmEditWAVEFileNamePath::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == txtEditWAVEFileNamePath && event->type() == QEvent::KeyRelease) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        txtEditWAVEFileNamePath_KeyUp(key == Qt::Key_Return || key == Qt::Key_Enter ? 13 : 0);
    }
    return QWidget::eventFilter(watched, event);
}

void frmEditWAVEFileNamePath::closeEvent(QCloseEvent *event)
{
    event->accept();
    m_host.closeSequence();
}
