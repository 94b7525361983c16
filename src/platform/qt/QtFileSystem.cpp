#include "platform/qt/QtFileSystem.h"

#include <QFileInfo>

bool QtFileSystem::fileExists(const QString &path) const
{
    return !path.isEmpty() && QFileInfo(path).isFile();
}
