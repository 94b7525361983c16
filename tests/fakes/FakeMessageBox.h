#pragma once

#include "platform/MessageBox.h"

#include <QList>
#include <QStringList>
#include <functional>

struct ShownMessage {
    QString text;
    MsgButtons buttons;
    MsgIcon icon;
    QString title;
};

// Records every box; answers from `answers` in order, then with the positive
// button of the box (Ok, or Yes for a Yes/No box).
class FakeMessageBox : public MessageBox {
public:
    QList<ShownMessage> shown;
    QList<MsgResult> answers;
    // Runs while the box is "open", before it is answered.
    std::function<void(const ShownMessage &)> onShow;

    MsgResult show(const QString &text, MsgButtons buttons, MsgIcon icon, const QString &title) override
    {
        shown.append({text, buttons, icon, title});
        if (onShow)
            onShow(shown.constLast());
        if (!answers.isEmpty())
            return answers.takeFirst();
        return buttons == MsgButtons::YesNo ? MsgResult::Yes : MsgResult::Ok;
    }
    QStringList texts() const
    {
        QStringList result;
        for (const ShownMessage &message : shown)
            result.append(message.text);
        return result;
    }
};
