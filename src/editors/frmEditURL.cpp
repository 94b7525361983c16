#include "editors/frmEditURL.h"

#include "appearance/DialogScheme.h"
#include "links/AlarmState.h"
#include "links/RowEdits.h"
#include "links/SecondaryHost.h"
#include "rules/ValueConversions.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

frmEditURL::frmEditURL(RowEdits &table, const AlarmState &state, SecondaryHost &host, QWidget *parent)
    : QWidget(parent), m_table(table), m_state(state), m_host(host)
{
    setObjectName(QStringLiteral("frmEditURL"));
    setWindowTitle(QStringLiteral("Editing URL Row:"));
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
    txtEditURL = new QLineEdit(this);
    txtEditURL->setObjectName(QStringLiteral("txtEditURL"));
    txtEditURL->setAccessibleName(QStringLiteral("URL"));
    txtEditURL->setMinimumWidth(420);
    txtEditURL->installEventFilter(this);
    cmdApply = new QPushButton(QStringLiteral("&Apply"), this);
    cmdApply->setObjectName(QStringLiteral("cmdApply"));
    cmdApply->setToolTip(QStringLiteral("Apply your changes."));
    cmdApply->setAccessibleDescription(cmdApply->toolTip());
    cmdClearForm = new QPushButton(QStringLiteral("&Clear"), this);
    cmdClearForm->setObjectName(QStringLiteral("cmdClearForm"));
    cmdClearForm->setToolTip(QStringLiteral("Clear writing box."));
    cmdClearForm->setAccessibleDescription(cmdClearForm->toolTip());
    auto *head = new QHBoxLayout;
    head->addWidget(rowCaption);
    head->addWidget(lblintIndex);
    head->addStretch(1);
    grid->addLayout(head, 0, 0, 1, 3);
    grid->addWidget(txtEditURL, 1, 0, 1, 3);
    grid->setColumnStretch(0, 1);
    grid->addWidget(cmdClearForm, 2, 1);
    grid->addWidget(cmdApply, 2, 2);
    connect(cmdApply, &QPushButton::clicked, this, [this] { cmdApply_Click(); });
    connect(cmdClearForm, &QPushButton::clicked, this, [this] { cmdClearForm_Click(); });
    Form_Load();
}

void frmEditURL::editRow(int row, const QString &address)
{
    lblintIndex->setText(QString::number(row + 1));
    txtEditURL->setText(address);
}

void frmEditURL::Form_Load() { applySchemeToDialog(this, m_state.intColorPick, m_state.customColours); }

void frmEditURL::cmdApply_Click()
{
    const int row = integerValue(lblintIndex->text()) - 1;
    if (row < 0 || row >= kAlarmRows)
        return;
    m_table.setRowURL(row, txtEditURL->text().trimmed());
    close();
    m_host.maximizeTableWindow();
}

void frmEditURL::cmdClearForm_Click() { txtEditURL->clear(); }

void frmEditURL::txtEditURL_KeyUp(int keyCode)
{
    if (keyCode == 13)
        cmdApply_Click();
}

bool frmEditURL::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == txtEditURL && event->type() == QEvent::KeyRelease) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        txtEditURL_KeyUp(key == Qt::Key_Return || key == Qt::Key_Enter ? 13 : 0);
    }
    return QWidget::eventFilter(watched, event);
}

void frmEditURL::closeEvent(QCloseEvent *event)
{
    event->accept();
    m_host.closeSequence();
}
