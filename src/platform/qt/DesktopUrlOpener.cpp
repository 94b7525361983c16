#include "platform/qt/DesktopUrlOpener.h"

#include <QDesktopServices>
#include <QUrl>

bool DesktopUrlOpener::open(const QString &address)
{
    // Taken as a plain QUrl, "www.example.org" is a relative file name that
    // no handler opens. QDesktopServices starts the handler with an argument
    // list, never a shell.
    return QDesktopServices::openUrl(QUrl::fromUserInput(address));
}
