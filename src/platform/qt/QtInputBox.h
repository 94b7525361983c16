#pragma once

#include "platform/InputBox.h"

// QInputDialog::getText.
class QtInputBox : public InputBox {
public:
    QString ask(const QString &prompt, const QString &title, const QString &defaultText) override;
};
