#pragma once

#include "platform/FileSystem.h"

#include <QSet>
#include <QStringList>

// The real disk, except for the paths in `hidden`, which never exist.
class FakeFileSystem : public FileSystem {
public:
    QSet<QString> hidden;
    mutable QStringList asked;

    bool fileExists(const QString &path) const override;
};
