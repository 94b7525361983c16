#pragma once

#include "platform/FileSystem.h"

class QtFileSystem : public FileSystem {
public:
    bool fileExists(const QString &path) const override;
    bool folderWritable(const QString &path) const override;
    bool copyAtomically(const QString &from, const QString &to) override;
};
