#pragma once

#include <QColor>

// Colours are kept as the program's 0x00BBGGRR numbers (red in the low byte)
// everywhere; this is the one place they become Qt colours. The high byte is
// not a colour and is ignored.
inline QColor bgrToQColor(qint32 bgr)
{
    const auto v = static_cast<quint32>(bgr);
    return QColor(int(v & 0xFF), int((v >> 8) & 0xFF), int((v >> 16) & 0xFF));
}

inline qint32 qColorToBgr(const QColor &c)
{
    return qint32(c.red() | (c.green() << 8) | (c.blue() << 16));
}
