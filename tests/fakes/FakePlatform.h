#pragma once

// One recording fake of every platform service: each remembers what it was
// asked and answers what the test set up.

#include "fakes/TestAppDir.h"
#include "platform/AppDirectory.h"
#include "platform/Autostart.h"
#include "platform/Clock.h"
#include "platform/ColourPicker.h"
#include "platform/FileSystem.h"
#include "platform/InputBox.h"
#include "platform/InstanceGuard.h"
#include "platform/MessageBox.h"
#include "platform/Notifier.h"
#include "platform/PictureLoader.h"
#include "platform/Platform.h"
#include "platform/Preferences.h"
#include "platform/SleepMonitor.h"
#include "platform/WakeAlarm.h"
#include "platform/ProgramEnd.h"
#include "platform/SoundPlayer.h"
#include "platform/TrayIcon.h"
#include "platform/UrlOpener.h"
#include "platform/VersionInfo.h"
#include "platform/WallTimer.h"
#include "platform/qt/QtFileSystem.h"
#include "rules/AppError.h"

#include <QFileInfo>
#include <QSet>
#include <QStringList>
#include <QWidget>
#include <exception>
#include <functional>

struct ShownMessage { QString text; MsgButtons buttons; MsgIcon icon; QString title; };

// Answers from `answers` in order, then with the box's positive button.
struct FakeMessageBox : MessageBox {
    QList<ShownMessage> shown;
    QList<MsgResult> answers;
    std::function<void(const ShownMessage &)> onShow; // while the box is open
    MsgResult show(const QString &text, MsgButtons buttons, MsgIcon icon, const QString &title) override
    {
        shown.append({text, buttons, icon, title});
        if (onShow)
            onShow(shown.constLast());
        return !answers.isEmpty() ? answers.takeFirst() : buttons == MsgButtons::YesNo ? MsgResult::Yes : MsgResult::Ok;
    }
    QStringList texts() const
    {
        QStringList result;
        for (const ShownMessage &m : shown)
            result << m.text;
        return result;
    }
};

struct InputRequest { QString prompt, title, defaultText; };

// Answers from `answers` in order, then "" (cancelled).
struct FakeInputBox : InputBox {
    QStringList answers;
    QList<InputRequest> asked;
    QString ask(const QString &prompt, const QString &title, const QString &defaultText) override
    {
        asked.append({prompt, title, defaultText});
        return answers.isEmpty() ? QString() : answers.takeFirst();
    }
};

// A play ends as soon as it starts, or, while `holding`, when the test ends
// it (or stop() does). A path counts as found when it is a file.
struct FakeSoundPlayer : SoundPlayer {
    QStringList played, fallbacks;
    int beeps = 0, stops = 0;
    bool holding = false;
    QList<std::function<void()>> sounding;
    std::function<void(const QString &)> onPlay; // runs inside play(), as it starts
    void play(const QString &path, const QString &fallback, Ended ended) override
    {
        played << path, fallbacks << fallback;
        if (onPlay)
            onPlay(path);
        std::function<void()> end = [ended = std::move(ended), found = QFileInfo(path).isFile()] { ended(found); };
        holding ? sounding.append(std::move(end)) : end();
    }
    void beep() override { ++beeps; }
    void stop() override { ++stops, endPlays(); }
    void prepare(const QString &, const QString &) override {}
    void endPlays() { for (const std::function<void()> &end : std::exchange(sounding, {})) end(); }
};

// Records "add:<tip>" and "remove" in order; `field` is the tip shown.
struct FakeTrayIcon : TrayIcon {
    QStringList calls;
    QString field;
    bool hostAvailable = true;
    QMenu *menu = nullptr;
    std::function<void(int)> handler;
    bool available() const override { return hostAvailable; }
    void add(const QString &tip) override { calls << "add:" + tip, field = tip; }
    void remove() override { calls << QStringLiteral("remove"); }
    void setMouseHandler(std::function<void(int)> h) override { handler = std::move(h); }
    void setMenu(QMenu *m) override { menu = m; }
    void sendMouse(int message) { handler(message); } // LeftDoubleClick, RightButtonDown...
};

struct FakeUrlOpener : UrlOpener {
    QStringList opened;
    bool result = true;
    bool open(const QString &address) override { return opened << address, result; }
};

struct FakeColourPicker : ColourPicker {
    std::optional<qint32> answer; // nullopt: cancelled
    std::optional<qint32> pick(qint32) override { return answer; }
};

// Moves only when told to: set() moves the wall clock alone, as setting the
// clock does; sleep() moves it and the boot clock, as a suspend does.
struct FakeClock : Clock {
    QDateTime current{QDate(2031, 9, 30), QTime(14, 5, 0), Qt::LocalTime};
    qint64 boot = 0, asleep = 0;
    QDateTime now() const override { return current; }
    qint64 sinceBootMs() const override { return boot; }
    qint64 asleepMs() const override { return asleep; }
    void set(const QDateTime &moment) { current = moment; }
    void sleep(qint64 seconds) { current = current.addSecs(seconds), boot += seconds * 1000, asleep += seconds * 1000; }
};

// The real disk, but for folders in `readOnly` and a copy that may fail.
struct FakeFileSystem : FileSystem {
    QSet<QString> readOnly;
    bool copyFails = false;
    mutable QStringList asked;
    QStringList copies; // "from>to"
    bool fileExists(const QString &path) const override { return asked << path, QFileInfo(path).isFile(); }
    bool folderWritable(const QString &path) const override { return !readOnly.contains(path) && QtFileSystem().folderWritable(path); }
    bool copyAtomically(const QString &from, const QString &to) override
    {
        copies << from + u'>' + to;
        return !copyFails && QtFileSystem().copyAtomically(from, to);
    }
};

struct FakeAppDirectory : AppDirectory {
    QString directory, userData;
    QString path() const override { return directory; }
    QString userDataPath() const override { return userData; }
};

struct FakeInstanceGuard : InstanceGuard {
    bool running = false;
    int asked = 0;
    bool previousInstanceRunning() override { return running; }
    void askPreviousToShow() override { ++asked; }
    void knock() const { showRequested(); } // a later copy asks
};

struct FakeVersionInfo : VersionInfo {
    int maj = 1, min = 0, rev = 5;
    int major() const override { return maj; }
    int minor() const override { return min; }
    int revision() const override { return rev; }
};

// Thrown so that nothing after endProgram() runs.
struct ProgramEnded : std::exception {};
struct FakeProgramEnd : ProgramEnd {
    [[noreturn]] void endProgram() override { throw ProgramEnded(); }
};

// Records (window, path) of each request; "loads" any existing file without painting.
struct FakePictureLoader : PictureLoader {
    QList<QPair<QString, QString>> requests;
    bool fails = false;
    bool setBackground(QWidget *window, const QString &path) override
    {
        if (fails)
            throw AppError(481, QStringLiteral("Invalid picture"));
        requests.append({window ? window->objectName() : QString(), path});
        return QFileInfo(path).isFile();
    }
};

// Fires only when the test says its moment came.
struct FakeWallTimer : WallTimer {
    QDateTime armedFor;
    bool active = false;
    void startAt(const QDateTime &moment) override { armedFor = moment, active = true; }
    void stop() override { active = false; }
    bool isActive() const override { return active; }
    void expire()
    {
        if (std::exchange(active, false))
            fire();
    }
};

struct FakeNotifier : Notifier {
    QStringList shown; // "summary|body", with " (silent)" when not sounding
    int closed = 0;
    bool open = false, server = true;
    std::function<void()> onShow;
    void show(const QString &summary, const QString &body, bool sounding) override
    {
        shown << summary + u'|' + body + (sounding ? "" : " (silent)"), open = true;
        if (onShow)
            onShow();
    }
    void close() override { closed += std::exchange(open, false); }
    void showMissed(const QStringList &lines) override { shown << "Missed alarms|" + lines.join(u'/'); }
    bool available() const override { return server; }
    void pressStop() const { stopPressed(); }
};

struct FakeAutostart : Autostart {
    bool on = false, works = true;
    bool enabled() const override { return on; }
    bool setEnabled(bool wanted) override
    {
        if (works)
            on = wanted;
        return works;
    }
    QString entryPath() const override { return QStringLiteral("/home/user/.config/autostart/quorvel-alarmclock.desktop"); }
};

struct FakeSleepMonitor : SleepMonitor {
    void tell(bool sleeping) const { prepareForSleep(sleeping); }
};

// The moment asked for while enabled, or an invalid one.
struct FakeWakeAlarm : WakeAlarm {
    QString reason;
    bool enabled = false;
    QDateTime next;
    QString unavailableReason() const override { return reason; }
    void setEnabled(bool on) override { enabled = on; }
    void setNextAlarm(const QDateTime &moment) override { next = moment; }
    void fail(const QString &why) const { becameUnavailable(why); }
};

struct FakePreferences : Preferences {
    bool wake = false;
    bool wakeComputer() const override { return wake; }
    void setWakeComputer(bool on) override { wake = on; }
};

// The whole set, with the application folder a fresh copy of the staged files.
struct FakePlatform {
    TestAppDir testDir;
    FakeMessageBox messages;
    FakeInputBox input;
    FakeSoundPlayer sound;
    FakeTrayIcon tray;
    FakeUrlOpener browser;
    FakeColourPicker colours;
    FakeClock clock;
    FakeFileSystem files;
    FakeAppDirectory appDir;
    FakeInstanceGuard instance;
    FakeVersionInfo version;
    FakeProgramEnd end;
    FakePictureLoader pictures;
    FakeWallTimer wallTimer;
    FakeNotifier notifier;
    FakeAutostart autostart;
    FakeSleepMonitor sleep;
    FakeWakeAlarm wake;
    FakePreferences preferences;

    FakePlatform() { appDir.directory = testDir.path(); }
    FakePlatform(const FakePlatform &) = delete;
    Platform platform() { return withServices(); }
    // The set with some services swapped for real or failing ones.
    Platform withServices(SoundPlayer *s = nullptr, TrayIcon *t = nullptr, PictureLoader *p = nullptr)
    {
        return Platform{messages, input,    s ? *s : sound, t ? *t : tray, browser,  colours,  clock, files,
                        appDir,   instance, version,        end,           p ? *p : pictures, wallTimer, notifier, autostart,
                        sleep,    wake,     preferences};
    }
};
