#include "platform/qt/ExecutableDirectory.h"

#include <QCoreApplication>

QString ExecutableDirectory::path() const
{
    return QCoreApplication::applicationDirPath();
}
