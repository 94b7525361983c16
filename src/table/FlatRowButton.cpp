#include "table/FlatRowButton.h"

#include <QPainter>

void FlatRowButton::paintEvent(QPaintEvent *event)
{
    QToolButton::paintEvent(event);
    if (!hasFocus())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(0x3d, 0x8e, 0xe9), 2));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 3, 3);
}
