#include "platform/qt/QtPictureLoader.h"

#include <QFileInfo>
#include <QImage>
#include <QImageReader>
#include <QMdiArea>
#include <QWidget>

namespace {

// Three bytes a pixel instead of four. Copied by hand: Qt's own conversion
// of a picture this size fans out over a thread pool.
QImage packed(const QImage &image)
{
    if (image.hasAlphaChannel() || image.format() != QImage::Format_RGB32)
        return image;
    QImage rgb(image.size(), QImage::Format_RGB888);
    for (int y = 0; y < image.height(); ++y) {
        const auto *from = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        uchar *to = rgb.scanLine(y);
        for (int x = 0; x < image.width(); ++x, to += 3) {
            to[0] = uchar(qRed(from[x]));
            to[1] = uchar(qGreen(from[x]));
            to[2] = uchar(qBlue(from[x]));
        }
    }
    return rgb;
}

} // namespace

QPixmap QtPictureLoader::picture(const QString &path)
{
    const QFileInfo file(path);
    const QDateTime modified = file.lastModified();
    if (path != m_path || modified != m_modified || m_picture.isNull()) {
        const QImage image = QImageReader(path).read();
        m_path = path;
        m_modified = modified;
        m_picture = image.isNull() ? QPixmap() : QPixmap::fromImage(packed(image), Qt::NoFormatConversion);
    }
    return m_picture;
}

bool QtPictureLoader::setBackground(QWidget *window, const QString &path)
{
    if (!window)
        return false;
    const QPixmap shown = picture(path);
    if (shown.isNull())
        return false;

    // An MDI area paints its own background; other widgets use the palette.
    if (auto *area = qobject_cast<QMdiArea *>(window)) {
        area->setBackground(QBrush(shown));
        return true;
    }
    QPalette palette = window->palette();
    palette.setBrush(QPalette::Window, QBrush(shown));
    window->setPalette(palette);
    window->setAutoFillBackground(true);
    return true;
}
