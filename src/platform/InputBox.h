#pragma once

#include <QString>

// Modal one-line input. Returns the typed text, or an empty text when cancelled.
class InputBox {
public:
    virtual ~InputBox() = default;
    virtual QString ask(const QString &prompt, const QString &title, const QString &defaultText) = 0;
};
