#pragma once

#include "platform/PictureLoader.h"

#include <QList>
#include <QPair>

// Records (window objectName, path) for every request; "loads" any existing
// file without painting anything.
class FakePictureLoader : public PictureLoader {
public:
    QList<QPair<QString, QString>> requests;

    bool setBackground(QWidget *window, const QString &path) override;
};
