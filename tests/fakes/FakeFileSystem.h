#pragma once

#include "platform/FileSystem.h"

#include <QSet>
#include <QStringList>

// The real disk, except for the paths in `hidden`, which never exist, and the
// folders in `readOnly`, which this user may not write to.
class FakeFileSystem : public FileSystem {
public:
    QSet<QString> hidden;
    QSet<QString> readOnly;
    bool copyFails = false;
    mutable QStringList asked;
    // "from>to" of each copy asked for.
    QStringList copies;

    bool fileExists(const QString &path) const override;
    bool folderWritable(const QString &path) const override;
    bool copyAtomically(const QString &from, const QString &to) override;
};
