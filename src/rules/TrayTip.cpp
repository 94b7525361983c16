#include "rules/TrayTip.h"

namespace {
constexpr qsizetype kFieldLength = 64;
}

QString trayTipField(const QString &programName, const QString &message)
{
    QString text;
    if (message.isEmpty())
        text = QLatin1Char('[') + programName + QStringLiteral("] Double LEFT Click me.");
    else
        text = QLatin1Char('[') + programName.left(15) + QStringLiteral("..]") + message;
    text += QChar(0);
    // A text that fills the field loses its terminating NUL; the tray copes.
    return text.leftJustified(kFieldLength, QLatin1Char(' '), true);
}

QString visibleTrayTip(const QString &field)
{
    const qsizetype nul = field.indexOf(QChar(0));
    if (nul >= 0)
        return field.left(nul);
    qsizetype end = field.size();
    while (end > 0 && field[end - 1] == QLatin1Char(' '))
        --end;
    return field.left(end);
}
