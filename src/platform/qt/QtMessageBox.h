#pragma once

#include "platform/MessageBox.h"

// QMessageBox, shown modally.
class QtMessageBox : public MessageBox {
public:
    MsgResult show(const QString &text, MsgButtons buttons, MsgIcon icon, const QString &title) override;
};
