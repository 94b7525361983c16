#pragma once

#include <QString>

class QWidget;

// Loads a picture file as a window's background. Returns false, leaving the
// window as it was, when the file is missing or not a picture.
class PictureLoader {
public:
    virtual ~PictureLoader() = default;
    virtual bool setBackground(QWidget *window, const QString &path) = 0;
};
