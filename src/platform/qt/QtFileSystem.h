#pragma once

#include "platform/FileSystem.h"

class QtFileSystem : public FileSystem {
public:
    bool fileExists(const QString &path) const override;
};
