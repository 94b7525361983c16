#pragma once

#include "platform/ColourPicker.h"

#include <QColor>

// QColorDialog.
class QtColourPicker : public ColourPicker {
public:
    std::optional<qint32> pick(qint32 startColour) override;
};

// 0x00BBGGRR (red in the low byte) <-> QColor.
QColor colourFromBgr(qint32 bgr);
qint32 bgrFromColour(const QColor &colour);
