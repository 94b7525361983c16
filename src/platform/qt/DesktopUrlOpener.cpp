#include "platform/qt/DesktopUrlOpener.h"

#include <QDesktopServices>
#include <QUrl>

bool DesktopUrlOpener::open(const QString &address)
{
    // QDesktopServices starts the handler with an argument list, never a shell.
    return QDesktopServices::openUrl(QUrl(address, QUrl::TolerantMode));
}
