#pragma once

#include <QString>

// The few file operations the program needs.
class FileSystem {
public:
    virtual ~FileSystem() = default;
    // File-existence test as the program means it: a normal file, not a folder.
    virtual bool fileExists(const QString &path) const = 0;
    // Whether this user may create and change files in the folder.
    virtual bool folderWritable(const QString &path) const = 0;
    // Copies a file, making the target's folder when needed. The copy is
    // written under a temporary name and then renamed, so the target is
    // either absent or complete, even if the program dies half-way.
    virtual bool copyAtomically(const QString &from, const QString &to) = 0;
};
