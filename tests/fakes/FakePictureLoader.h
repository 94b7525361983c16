#pragma once

#include "platform/PictureLoader.h"
#include "rules/AppError.h"

#include <QFileInfo>
#include <QList>
#include <QPair>
#include <QWidget>

// Records (window objectName, path) for every request; "loads" any existing
// file without painting anything, or raises an error when `fails` is set.
class FakePictureLoader : public PictureLoader {
public:
    QList<QPair<QString, QString>> requests;
    bool fails = false;
    bool setBackground(QWidget *window, const QString &path) override
    {
        if (fails)
            throw AppError(481, QStringLiteral("Invalid picture"));
        requests.append({window ? window->objectName() : QString(), path});
        return QFileInfo(path).isFile();
    }
};
