#include "fakes/FakePictureLoader.h"

#include <QFileInfo>
#include <QWidget>

bool FakePictureLoader::setBackground(QWidget *window, const QString &path)
{
    requests.append({window ? window->objectName() : QString(), path});
    return !path.isEmpty() && QFileInfo(path).isFile();
}
