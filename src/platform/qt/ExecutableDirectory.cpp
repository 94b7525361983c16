#include "platform/qt/ExecutableDirectory.h"

#include <QCoreApplication>
#include <QStandardPaths>

QString ExecutableDirectory::path() const
{
    return QCoreApplication::applicationDirPath();
}

QString ExecutableDirectory::userDataPath() const
{
    // $XDG_DATA_HOME, or ~/.local/share when it is not set.
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
           + QStringLiteral("/quorvel-alarmclock");
}
