#include "fakes/FakeMessageBox.h"

MsgResult FakeMessageBox::show(const QString &text, MsgButtons buttons, MsgIcon icon, const QString &title)
{
    shown.append({text, buttons, icon, title});
    if (onShow)
        onShow(shown.constLast());
    if (!answers.isEmpty())
        return answers.takeFirst();
    return buttons == MsgButtons::YesNo ? MsgResult::Yes : MsgResult::Ok;
}

QStringList FakeMessageBox::texts() const
{
    QStringList result;
    for (const ShownMessage &message : shown)
        result.append(message.text);
    return result;
}
