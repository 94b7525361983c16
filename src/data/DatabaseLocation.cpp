#include "data/DatabaseLocation.h"

#include "platform/AppDirectory.h"
#include "platform/FileSystem.h"

namespace {
const QString kFileName = QStringLiteral("alarmclock.mdb");
}

QString shippedDatabasePath(const AppDirectory &appDir)
{
    // The separator is always inserted, even after a root folder's own.
    return appDir.path() + u'/' + kFileName;
}

QString locateDatabase(const AppDirectory &appDir, FileSystem &files)
{
    const QString shipped = shippedDatabasePath(appDir);
    if (files.folderWritable(appDir.path()))
        return files.fileExists(shipped) ? shipped : QString();

    const QString own = appDir.userDataPath() + u'/' + kFileName;
    if (files.fileExists(own))
        return own;
    if (!files.fileExists(shipped))
        return {};
    if (files.copyAtomically(shipped, own))
        return own;
    // No copy possible (a read-only home): the alarms still show, and a save
    // reports its error as on any read-only database.
    return shipped;
}
