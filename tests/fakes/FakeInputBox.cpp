#include "fakes/FakeInputBox.h"

QString FakeInputBox::ask(const QString &prompt, const QString &title, const QString &defaultText)
{
    asked.append({prompt, title, defaultText});
    return answers.isEmpty() ? QString() : answers.takeFirst();
}
