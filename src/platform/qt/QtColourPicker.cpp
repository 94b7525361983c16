#include "platform/qt/QtColourPicker.h"

#include <QColorDialog>

QColor colourFromBgr(qint32 bgr)
{
    return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF);
}

qint32 bgrFromColour(const QColor &colour)
{
    const QColor rgb = colour.toRgb();
    return qint32(rgb.red()) | (qint32(rgb.green()) << 8) | (qint32(rgb.blue()) << 16);
}

std::optional<qint32> QtColourPicker::pick(qint32 startColour)
{
    const QColor chosen = QColorDialog::getColor(colourFromBgr(startColour));
    if (!chosen.isValid())
        return std::nullopt;
    return bgrFromColour(chosen);
}
