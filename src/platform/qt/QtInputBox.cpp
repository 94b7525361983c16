#include "platform/qt/QtInputBox.h"

#include <QGuiApplication>
#include <QInputDialog>

QString QtInputBox::ask(const QString &prompt, const QString &title, const QString &defaultText)
{
    bool ok = false;
    QString answer = QInputDialog::getText(
        nullptr, title.isEmpty() ? QGuiApplication::applicationDisplayName() : title,
        QString(prompt).replace(QStringLiteral("\r\n"), QStringLiteral("\n")), QLineEdit::Normal,
        defaultText, &ok);
    return ok ? answer : QString();
}
