#pragma once

#include <QString>

// File-existence test as the program means it: a normal file, not a folder.
class FileSystem {
public:
    virtual ~FileSystem() = default;
    virtual bool fileExists(const QString &path) const = 0;
};
