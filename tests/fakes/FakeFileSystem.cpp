#include "fakes/FakeFileSystem.h"

#include <QFileInfo>

bool FakeFileSystem::fileExists(const QString &path) const
{
    asked.append(path);
    if (hidden.contains(path))
        return false;
    return !path.isEmpty() && QFileInfo(path).isFile();
}
