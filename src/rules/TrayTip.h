#pragma once

#include <QString>

// The tray tooltip as a fixed 64-character field, NUL-terminated when it fits.
QString trayTipField(const QString &programName, const QString &message);

// The text a tray shows for such a field: up to the first NUL, or without
// trailing blanks when there is none.
QString visibleTrayTip(const QString &field);
