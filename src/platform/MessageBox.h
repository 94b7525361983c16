#pragma once

#include <QString>

enum class MsgButtons { Ok, OkCancel, YesNo };
enum class MsgIcon { None, Information, Critical };
enum class MsgResult { Ok, Cancel, Yes, No };

// Modal message box. An empty title means "no title of its own": the
// implementation then shows the program's display name.
class MessageBox {
public:
    virtual ~MessageBox() = default;
    virtual MsgResult show(const QString &text, MsgButtons buttons, MsgIcon icon,
                           const QString &title) = 0;
};

// The program-wide error report: routine name, number and description on
// three lines, OK only, titled "ERROR".
struct AppError;
void showErrorBox(MessageBox &box, const QString &routine, const AppError &error);
