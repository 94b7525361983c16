#include "fakes/FakeFileSystem.h"

#include "platform/qt/QtFileSystem.h"

#include <QFileInfo>

bool FakeFileSystem::fileExists(const QString &path) const
{
    asked.append(path);
    if (hidden.contains(path))
        return false;
    return !path.isEmpty() && QFileInfo(path).isFile();
}

bool FakeFileSystem::folderWritable(const QString &path) const
{
    return !readOnly.contains(path) && QtFileSystem().folderWritable(path);
}

bool FakeFileSystem::copyAtomically(const QString &from, const QString &to)
{
    copies.append(from + u'>' + to);
    return !copyFails && QtFileSystem().copyAtomically(from, to);
}
