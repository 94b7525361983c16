#pragma once

#include "platform/FileSystem.h"

#include <QFileInfo>
#include <QStringList>

// The real disk; records every path asked about.
class FakeFileSystem : public FileSystem {
public:
    mutable QStringList asked;
    bool fileExists(const QString &path) const override
    {
        asked.append(path);
        return !path.isEmpty() && QFileInfo(path).isFile();
    }
};
