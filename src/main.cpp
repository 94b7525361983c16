#include "appearance/AppIcon.h"
#include "platform/Platform.h"
#include "platform/qt/BuildVersionInfo.h"
#include "platform/qt/DBusNotifier.h"
#include "platform/qt/DesktopUrlOpener.h"
#include "platform/qt/ExecutableDirectory.h"
#include "platform/qt/ExitProgramEnd.h"
#include "platform/qt/HelperSoundPlayer.h"
#include "platform/qt/HelperWakeAlarm.h"
#include "platform/qt/IniPreferences.h"
#include "platform/qt/LinuxWallTimer.h"
#include "platform/qt/LockFileInstanceGuard.h"
#include "platform/qt/LogindSleepMonitor.h"
#include "platform/qt/QtColourPicker.h"
#include "platform/qt/QtFileSystem.h"
#include "platform/qt/QtInputBox.h"
#include "platform/qt/QtMessageBox.h"
#include "platform/qt/QtPictureLoader.h"
#include "platform/qt/QtTrayIcon.h"
#include "platform/qt/SystemClock.h"
#include "platform/qt/XdgAutostart.h"
#include "shell/CursorBlinkRest.h"
#include "shell/mdiAlarmClock.h"

#include <QApplication>
#include <QPixmapCache>

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

namespace {

// The desktop entry's name, by which docks, panels and notification servers
// know the program (the Wayland app id, the X11 hints and StartupWMClass).
constexpr char kDesktopId[] = "quorvel-alarmclock";

} // namespace

int main(int argc, char *argv[])
{
    // The program takes no part in the session manager's save and restore:
    // Start at Login is the one way it starts with the session, so a restored
    // session never starts it twice. Qt registers while the application is
    // made; the manager's address is hidden from it then and given back for
    // the programs the user opens from here (a browser).
    const QByteArray sessionManager = qgetenv("SESSION_MANAGER");
    qunsetenv("SESSION_MANAGER");
    // On X11 the window's class instance is the desktop entry's name.
    std::vector<char *> arguments(argv, argv + argc);
    std::string nameOption = "-name", instanceName = kDesktopId;
    arguments.insert(arguments.begin() + std::min(argc, 1), {nameOption.data(), instanceName.data()});
    int count = int(arguments.size());
    QApplication app(count, arguments.data());
    if (!sessionManager.isEmpty())
        qputenv("SESSION_MANAGER", sessionManager);
    app.setDesktopFileName(QLatin1String(kDesktopId));
    // The name boxes without a title of their own show. Not set as the display
    // name: Qt would append that to every window's title.
    app.setApplicationName(QStringLiteral("Quorvel Alarm Clock"));
    app.setApplicationVersion(QStringLiteral(ALARMCLOCK_VERSION));
    // The window may live only as a tray icon; only Exit ends the program.
    app.setQuitOnLastWindowClosed(false);
    // The style caches each button face it draws, keyed by its palette; the
    // flashing snooze button gets a new palette every 300 ms, so with Qt's
    // 10 MB default the cache grew by megabytes over a day of alarms. The
    // faces this window needs fit in far less.
    QPixmapCache::setCacheLimit(1024);
    const CursorBlinkRest blinkRest;
    const QIcon icon = makeAppIcon();
    app.setWindowIcon(icon);

    QtMessageBox messages;
    QtInputBox input;
    // Kept past a play long enough to bridge the 15 s between an alarm's
    // plays, and past a prepare long enough for the alarm it announced.
    HelperSoundPlayer sound(QCoreApplication::applicationDirPath() + QStringLiteral("/alarmclock-sound"),
                            std::chrono::seconds(20), std::chrono::seconds(90));
    QtTrayIcon tray(icon);
    DesktopUrlOpener browser;
    QtColourPicker colours;
    SystemClock clock;
    QtFileSystem files;
    ExecutableDirectory appDir;
    LockFileInstanceGuard instance;
    BuildVersionInfo version;
    ExitProgramEnd end;
    QtPictureLoader pictures;
    LinuxWallTimer wallTimer;
    DBusNotifier notifier;
    XdgAutostart autostart(QCoreApplication::applicationFilePath());
    LogindSleepMonitor sleep;
    HelperWakeAlarm wake(appDir.path() + QStringLiteral("/quorvel-alarmclock-wake"), HelperWakeAlarm::clockCanWake());
    IniPreferences preferences;
    const Platform platform{messages, input,    sound,   tray, browser,  colours,   clock,    files,
                            appDir,   instance, version, end,  pictures, wallTimer, notifier, autostart,
                            sleep,    wake,     preferences};

    mdiAlarmClock window(platform);
    window.MDIForm_Load();
    // Closed while starting (during the start-up sound, say): a quit before
    // the event loop runs would be lost, and the process would linger.
    if (window.isUnloaded())
        return 0;
    return app.exec();
}
