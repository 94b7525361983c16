#include "platform/MessageBox.h"
#include "rules/AppError.h"

void showErrorBox(MessageBox &box, const QString &routine, const AppError &error)
{
    box.show(routine + QStringLiteral("\r\n") + QString::number(error.number) + QStringLiteral("\r\n")
                 + error.description,
             MsgButtons::Ok, MsgIcon::None, QStringLiteral("ERROR"));
}
