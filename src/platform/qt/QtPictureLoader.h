#pragma once

#include "platform/PictureLoader.h"

class QtPictureLoader : public PictureLoader {
public:
    bool setBackground(QWidget *window, const QString &path) override;
};
