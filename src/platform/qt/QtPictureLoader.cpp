#include "platform/qt/QtPictureLoader.h"

#include <QMdiArea>
#include <QPixmap>
#include <QWidget>

bool QtPictureLoader::setBackground(QWidget *window, const QString &path)
{
    if (!window)
        return false;
    const QPixmap picture(path);
    if (picture.isNull())
        return false;

    // An MDI area paints its own background; other widgets use the palette.
    if (auto *area = qobject_cast<QMdiArea *>(window)) {
        area->setBackground(QBrush(picture));
        return true;
    }
    QPalette palette = window->palette();
    palette.setBrush(QPalette::Window, QBrush(picture));
    window->setPalette(palette);
    window->setAutoFillBackground(true);
    return true;
}
