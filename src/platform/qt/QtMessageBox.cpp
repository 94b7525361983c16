#include "platform/qt/QtMessageBox.h"

#include <QGuiApplication>
#include <QMessageBox>
#include <QPushButton>

MsgResult QtMessageBox::show(const QString &text, MsgButtons buttons, MsgIcon icon, const QString &title)
{
    QMessageBox box;
    box.setWindowTitle(title.isEmpty() ? QGuiApplication::applicationDisplayName() : title);
    // Plain text: routine names and descriptions may contain '<' and '&'.
    box.setTextFormat(Qt::PlainText);
    box.setText(QString(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n")));

    switch (icon) {
    case MsgIcon::None: box.setIcon(QMessageBox::NoIcon); break;
    case MsgIcon::Information: box.setIcon(QMessageBox::Information); break;
    case MsgIcon::Critical: box.setIcon(QMessageBox::Critical); break;
    }

    // Escape and the close button give the "negative" answer of each set.
    MsgResult escapeResult = MsgResult::Ok;
    switch (buttons) {
    case MsgButtons::Ok:
        box.setStandardButtons(QMessageBox::Ok);
        box.setEscapeButton(QMessageBox::Ok);
        break;
    case MsgButtons::OkCancel:
        box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
        box.setDefaultButton(QMessageBox::Ok);
        box.setEscapeButton(QMessageBox::Cancel);
        escapeResult = MsgResult::Cancel;
        break;
    case MsgButtons::YesNo:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box.setDefaultButton(QMessageBox::Yes);
        box.setEscapeButton(QMessageBox::No);
        escapeResult = MsgResult::No;
        break;
    }

    box.exec();

    switch (box.standardButton(box.clickedButton())) {
    case QMessageBox::Ok: return MsgResult::Ok;
    case QMessageBox::Cancel: return MsgResult::Cancel;
    case QMessageBox::Yes: return MsgResult::Yes;
    case QMessageBox::No: return MsgResult::No;
    default: return escapeResult;
    }
}
