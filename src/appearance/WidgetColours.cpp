#include "appearance/WidgetColours.h"

#include "appearance/BgrColour.h"

#include <QAbstractButton>
#include <QLineEdit>

namespace {

QPalette::ColorRole backRole(const QWidget *w)
{
    if (qobject_cast<const QLineEdit *>(w))
        return QPalette::Base;
    if (qobject_cast<const QAbstractButton *>(w))
        return QPalette::Button;
    return QPalette::Window;
}

} // namespace

void setTextColour(QWidget *w, qint32 bgr)
{
    // Only the role the widget draws its own text with: a window's colour
    // must not spill into the boxes inside it.
    QPalette p = w->palette();
    p.setColor(qobject_cast<QLineEdit *>(w) ? QPalette::Text : QPalette::WindowText, bgrToQColor(bgr));
    w->setPalette(p);
}

void setBackColour(QWidget *w, qint32 bgr)
{
    const QPalette::ColorRole role = backRole(w);
    QPalette p = w->palette();
    p.setColor(role, bgrToQColor(bgr));
    if (role == QPalette::Window)
        w->setAutoFillBackground(true);
    w->setPalette(p);
}

qint32 textColour(const QWidget *w)
{
    return qColorToBgr(w->palette().color(qobject_cast<const QLineEdit *>(w) ? QPalette::Text : QPalette::WindowText));
}

qint32 backColour(const QWidget *w) { return qColorToBgr(w->palette().color(backRole(w))); }
