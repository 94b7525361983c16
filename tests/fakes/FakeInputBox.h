#pragma once

#include "platform/InputBox.h"

#include <QList>

struct InputRequest {
    QString prompt, title, defaultText;
};

// Answers from `answers` in order, then "" (as if cancelled).
class FakeInputBox : public InputBox {
public:
    QList<QString> answers;
    QList<InputRequest> asked;
    QString ask(const QString &prompt, const QString &title, const QString &defaultText) override
    {
        asked.append({prompt, title, defaultText});
        return answers.isEmpty() ? QString() : answers.takeFirst();
    }
};
