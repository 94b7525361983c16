#pragma once

#include <QtGlobal>

class QWidget;

// Paints one widget's text or background with a 0x00BBGGRR colour, using the
// palette role that kind of widget draws with.
void setTextColour(QWidget *w, qint32 bgr);
void setBackColour(QWidget *w, qint32 bgr);
// The colours a widget was last given with the two setters.
qint32 textColour(const QWidget *w);
qint32 backColour(const QWidget *w);
