#pragma once

#include "platform/PictureLoader.h"

#include <QDateTime>
#include <QPixmap>

// Both windows show the same picture: it is decoded once, at 24 bits a
// pixel (the pictures have no transparency), and the two share it.
class QtPictureLoader : public PictureLoader {
public:
    bool setBackground(QWidget *window, const QString &path) override;

private:
    // The picture at `path`, decoded only when it is not the one held.
    QPixmap picture(const QString &path);

    QString m_path;
    QDateTime m_modified;
    QPixmap m_picture;
};
