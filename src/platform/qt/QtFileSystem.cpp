#include "platform/qt/QtFileSystem.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <unistd.h>

bool QtFileSystem::fileExists(const QString &path) const
{
    return !path.isEmpty() && QFileInfo(path).isFile();
}

bool QtFileSystem::folderWritable(const QString &path) const
{
    // access() asks the kernel, so a read-only mount counts as read-only too.
    return !path.isEmpty() && QFileInfo(path).isDir() && ::access(QFile::encodeName(path).constData(), W_OK) == 0;
}

bool QtFileSystem::copyAtomically(const QString &from, const QString &to)
{
    const QFileInfo target(to);
    if (!QDir().mkpath(target.absolutePath()))
        return false;
    const QString part = to + QStringLiteral(".part-%1").arg(QCoreApplication::applicationPid());
    QFile::remove(part);
    if (!QFile::copy(from, part))
        return false;
    // The user's own data: theirs to change, nobody else's to read. A shipped
    // file installed read-only must not stay read-only here.
    QFile::setPermissions(part, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser);
    if (std::rename(QFile::encodeName(part).constData(), QFile::encodeName(to).constData()) != 0) {
        QFile::remove(part);
        return false;
    }
    return true;
}
