#include "shell/FrontWindow.h"

#include <QApplication>
#include <QWidget>

void bringToFront(QWidget &window)
{
    // Wayland has no request to restore a minimized window, and a compositor
    // may minimize one without telling it: a window shown anew is a new
    // toplevel, which every compositor maps.
    if (QGuiApplication::platformName().startsWith(QLatin1String("wayland")) && window.isVisible())
        window.hide();
    // Normal size even from maximized: the window as it was laid out.
    window.setWindowState((window.windowState() & ~(Qt::WindowMinimized | Qt::WindowMaximized)) | Qt::WindowActive);
    window.show();
    window.raise();
    window.activateWindow();
    // Where the desktop does not let a program take the focus, it marks the
    // window as wanting attention instead.
    QApplication::alert(&window);
}
