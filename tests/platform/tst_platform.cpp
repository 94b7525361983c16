// The real platform services without a desktop; the sound player against broken sounds, a mute server, a stop and a quit.

#include "platform/qt/BuildVersionInfo.h"
#include "platform/qt/DBusNotifier.h"
#include "platform/qt/DesktopUrlOpener.h"
#include "platform/qt/ExecutableDirectory.h"
#include "platform/qt/LinuxWallTimer.h"
#include "platform/qt/LockFileInstanceGuard.h"
#include "platform/qt/HelperSoundPlayer.h"
#include "platform/qt/PulseSoundPlayer.h"
#include "platform/qt/QtColourPicker.h"
#include "platform/qt/QtFileSystem.h"
#include "platform/qt/QtInputBox.h"
#include "platform/qt/QtMessageBox.h"
#include "platform/qt/QtPictureLoader.h"
#include "platform/qt/QtTrayIcon.h"
#include "platform/qt/SystemClock.h"
#include "platform/qt/XdgAutostart.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDesktopServices>
#include <QMdiArea>
#include <QMessageBox>
#include <QtTest>

#include <csignal>
#include <cstdio>
#include <ctime>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

QString lastDialog; // the title and text of the last dialog answered

// What `open` returns once the modal dialog it opens is answered with a key.
template <typename Open>
auto answered(Qt::Key key, const Open &open)
{
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, [&] {
        if (QWidget *dialog = QApplication::activeModalWidget()) {
            lastDialog = dialog->windowTitle() + '|' + (qobject_cast<QMessageBox *>(dialog) ? qobject_cast<QMessageBox *>(dialog)->text() : QString());
            QTest::keyClick(dialog, key);
        }
    });
    answer.start(20);
    return open();
}

// Waits for the timer's call-back; the wall-clock time it came, or an invalid one.
QDateTime firedAt(LinuxWallTimer &timer, int waitMs = 3000)
{
    QDateTime fired;
    timer.onTimeout([&] { fired = QDateTime::currentDateTime(); });
    (void)QTest::qWaitFor([&] { return fired.isValid(); }, waitMs);
    return fired;
}

// The header of a mono 16-bit 8 kHz WAV file that claims `dataBytes` of samples.
QByteArray wavHeader(quint32 dataBytes)
{
    QByteArray h("RIFF....WAVEfmt \x10\0\0\0\x01\0\x01\0\x40\x1f\0\0\x80\x3e\0\0\x02\0\x10\0data....", 44);
    qToLittleEndian<quint32>(dataBytes + 36, h.data() + 4);
    qToLittleEndian<quint32>(dataBytes, h.data() + 40);
    return h;
}
QByteArray sound(double seconds) { return wavHeader(quint32(seconds * 16000)) + QByteArray(int(seconds * 16000), '\x10'); }

// A UNIX socket that takes connections (into its backlog) and never answers.
int listenMute(const QString &path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray name = QFile::encodeName(path);
    const int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
    qstrncpy(address.sun_path, name.constData(), sizeof address.sun_path); // cut if too long: the caller looks for the file
    return ::bind(fd, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0 && ::listen(fd, 16) == 0 ? fd : -1;
}

qint64 msTaken(const std::function<void()> &run)
{
    QElapsedTimer clock;
    clock.start();
    run();
    return clock.elapsed();
}

// One play, from asking to its reported end (waited for up to 10 s).
struct Played { qint64 startMs = 0, tookMs = 0; bool ended = false, found = false; };
Played playOnce(SoundPlayer &player, const QString &path, const QString &fallback)
{
    Played p;
    QElapsedTimer clock;
    clock.start();
    player.play(path, fallback, [&](bool found) { p.ended = true, p.found = found; });
    p.startMs = clock.elapsed();
    (void)QTest::qWaitFor([&] { return p.ended; }, 10000);
    p.tookMs = clock.elapsed();
    return p;
}

// A notification server on the private bus that answers Notify only when told,
// and logs "Notify <replaces> <summary> <urgency> <actions> <timeout>" and "Close <id>".
class NotificationServer : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")
public:
    QDBusConnection bus = QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), "server");
    QStringList log;
    QList<QDBusMessage> waiting;
    NotificationServer() { bus.registerObject("/org/freedesktop/Notifications", this, QDBusConnection::ExportAllSlots), bus.registerService("org.freedesktop.Notifications"); }
    ~NotificationServer() override { QDBusConnection::disconnectFromBus("server"); }
    void answer(uint id) { bus.send(waiting.takeFirst().createReply(id)); }
    void invoke(uint id) { bus.send(QDBusMessage::createSignal("/org/freedesktop/Notifications", "org.freedesktop.Notifications", "ActionInvoked") << id << QString("stop")); }
    void dismiss(uint id) { bus.send(QDBusMessage::createSignal("/org/freedesktop/Notifications", "org.freedesktop.Notifications", "NotificationClosed") << id << 2u); }
public slots:
    uint Notify(const QString &, uint replaces, const QString &, const QString &summary, const QString &body, const QStringList &actions,
                const QVariantMap &hints, int timeout, const QDBusMessage &call)
    {
        log << QStringLiteral("Notify %1 %2 %3 %4 %5").arg(replaces).arg(summary).arg(hints["urgency"].toInt()).arg(actions.value(0, "-")).arg(timeout)
                   + (body.isEmpty() ? QString() : " | " + body);
        call.setDelayedReply(true);
        waiting << call;
        return 0;
    }
    void CloseNotification(uint id) { log << QStringLiteral("Close %1").arg(id); }
};

} // namespace

class TestPlatform : public QObject {
    Q_OBJECT

    QTemporaryDir m_tmp;
    QProcess m_server; // a private PulseAudio with a null sink, where installed
    QProcess m_listener; // records the sink, so that it plays in real time as a sound card would
    QProcess m_bus; // a private session bus
    bool m_serverUp = false;
    QList<QUrl> m_opened;

    QString tmpPath(const QString &name) const { return m_tmp.filePath(name); }
    bool write(const QString &name, const QByteArray &bytes)
    {
        QFile file(tmpPath(name));
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    }
    void useServer(const QString &name) { qputenv("PULSE_SERVER", "unix:" + QFile::encodeName(tmpPath(name))); }

public:
    // Stands in for the browser: what the opener hands to the desktop.
    Q_INVOKABLE void openUrl(const QUrl &url) { m_opened.append(url); }

private slots:
    void initTestCase()
    {
        QVERIFY(write("notes.txt", "BM not a sound and not a bitmap\n") && write("short.wav", sound(0.4)) && write("long.wav", sound(20)));
        QVERIFY(write("header.wav", wavHeader(16000).left(20)) && write("cut.wav", wavHeader(16000) + QByteArray(101, '\x40'))
                && write("huge.wav", wavHeader(0xFFFFFFF0u) + QByteArray(64, '\x10')));
        QVERIFY(mkfifo(QFile::encodeName(tmpPath("fifo.wav")).constData(), 0600) == 0 && QDir().mkpath(tmpPath("pulse")));
        QVERIFY(listenMute(tmpPath("hung")) >= 0 && QFile::exists(tmpPath("hung"))); // open till the end
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(tmpPath("config")));
        m_bus.start("dbus-daemon", {"--session", "--nofork", "--print-address=1"});
        QVERIFY(m_bus.waitForReadyRead(5000));
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.readLine().trimmed());
        for (const char *scheme : {"http", "https"})
            QDesktopServices::setUrlHandler(scheme, this, "openUrl");
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("XDG_RUNTIME_DIR", tmpPath("pulse"));
        env.insert("PULSE_RUNTIME_PATH", tmpPath("pulse"));
        m_server.setProcessEnvironment(env);
        m_server.start("pulseaudio", {"-n", "--daemonize=no", "--exit-idle-time=-1", "-Lmodule-null-sink sink_name=test",
                                      "-Lmodule-native-protocol-unix auth-anonymous=1 socket=" + tmpPath("pulse/native"), "-Lmodule-always-sink"});
        m_serverUp = m_server.waitForStarted(3000) && QTest::qWaitFor([&] { return QFile::exists(tmpPath("pulse/native")); }, 5000);
        env.insert("PULSE_SERVER", "unix:" + tmpPath("pulse/native"));
        m_listener.setProcessEnvironment(env);
        m_listener.setStandardOutputFile(QProcess::nullDevice());
        m_listener.start("parec", {"--device=test.monitor", "--raw"});
        m_serverUp = m_serverUp && m_listener.waitForStarted(3000);
        if (m_serverUp) { // a fresh server holds its first stream back for a while
            useServer("pulse/native");
            PulseSoundPlayer warm;
            playOnce(warm, tmpPath("short.wav"), QString());
        }
    }
    void cleanupTestCase()
    {
        for (const char *scheme : {"http", "https"})
            QDesktopServices::unsetUrlHandler(scheme);
        for (QProcess *p : {&m_listener, &m_server, &m_bus}) {
            p->kill();
            p->waitForFinished(2000);
        }
    }

    // A lock stands while its owner lives; a killed owner's does not.
    void instanceGuardSeesLiveOwnerAndTakesOverDeadOne()
    {
        const QString lockPath = tmpPath("instance.lock");
        QProcess owner;
        owner.start(QCoreApplication::applicationFilePath(), {"--hold-lock", lockPath});
        QVERIFY(owner.waitForReadyRead(10000) && owner.readLine().trimmed() == "held");
        LockFileInstanceGuard second(lockPath);
        QVERIFY(second.previousInstanceRunning());
        owner.kill(); // SIGKILL: the lock file stays behind
        QVERIFY(owner.waitForFinished() && QFile::exists(lockPath));
        LockFileInstanceGuard third(lockPath);
        QVERIFY(!third.previousInstanceRunning() && !third.previousInstanceRunning() && second.previousInstanceRunning()); // asked twice, still none
        // A later copy knocks at the one that holds the lock.
        int knocks = 0;
        third.onShowRequested([&] { ++knocks; });
        second.askPreviousToShow();
        QTRY_COMPARE(knocks, 1);
    }

    // A folder is no file; a picture that will not load leaves the window as it was. The tray's
    // clicks as messages (0: none): without a host, XEmbed sends Trigger on every left press too.
    void filesPicturesVersionClockAndTray()
    {
        QVERIFY(QtFileSystem().fileExists(tmpPath("short.wav")) && !QtFileSystem().fileExists(m_tmp.path()));
        QMdiArea area;
        QWidget plain;
        const QString picture = QDir(STAGED_APP_DIR).filePath("backgroundmatrix.bmp");
        QVERIFY(!QtPictureLoader().setBackground(&area, tmpPath("notes.txt")) && area.background().style() == Qt::SolidPattern);
        QVERIFY(QtPictureLoader().setBackground(&plain, picture) && QtPictureLoader().setBackground(&area, picture));
        QVERIFY(plain.autoFillBackground() && plain.palette().brush(QPalette::Window).style() == Qt::TexturePattern && area.background().style() == Qt::TexturePattern);
        // One picture for both windows, three bytes a pixel; a file changed since is read again.
        QtPictureLoader loader;
        QVERIFY(loader.setBackground(&plain, picture) && loader.setBackground(&area, picture));
        const QPixmap shared = plain.palette().brush(QPalette::Window).texture();
        QVERIFY(shared.cacheKey() == area.background().texture().cacheKey() && shared.toImage().format() == QImage::Format_RGB888);
        const QString copy = tmpPath("picture.bmp");
        QVERIFY(QFile::copy(picture, copy) && loader.setBackground(&plain, copy) && QFile::remove(copy));
        QVERIFY(!loader.setBackground(&area, copy));
        const BuildVersionInfo build;
        QCOMPARE(QString("%1.%2.%3").arg(build.major()).arg(build.minor()).arg(build.revision()), ALARMCLOCK_VERSION_TEXT);
        QVERIFY(ExecutableDirectory().path() == QCoreApplication::applicationDirPath() && qAbs(SystemClock().now().msecsTo(QDateTime::currentDateTime())) < 1000);
        QCOMPARE(colourFromBgr(0x123456), QColor(0x56, 0x34, 0x12)); // red in the low byte
        using enum QSystemTrayIcon::ActivationReason;
        const auto on = [](QSystemTrayIcon::ActivationReason reason, bool host, bool ownMenu = false) { return QtTrayIcon::messageFor(reason, host, ownMenu).value_or(0); };
        const int restore = TrayIcon::LeftDoubleClick, menu = TrayIcon::RightButtonDown;
        QCOMPARE(QList<int>({on(Trigger, true), on(Context, true), on(MiddleClick, true), on(Trigger, false), on(DoubleClick, false), on(Context, false), on(Context, false, true)}),
                 QList<int>({restore, menu, 0, 0, restore, menu, 0})); // a host that shows the menu itself needs no message
    }

    // Escape gives the negative answer; an empty title falls back to the program's name.
    void dialogs()
    {
        QCOMPARE(answered(Qt::Key_Escape, [] { return QtMessageBox().show("first\r\nsecond", MsgButtons::OkCancel, MsgIcon::Information, QString()); }),
                 MsgResult::Cancel);
        QCOMPARE(lastDialog, QGuiApplication::applicationDisplayName() + "|first\nsecond");
        QCOMPARE(answered(Qt::Key_Escape, [] { return QtMessageBox().show("a <b> & c", MsgButtons::YesNo, MsgIcon::Critical, "T"); }), MsgResult::No);
        QCOMPARE(answered(Qt::Key_Return, [] { return QtInputBox().ask("NAME?", "", "Kitchen"); }), "Kitchen");
        QCOMPARE(answered(Qt::Key_Return, [] { return QtColourPicker().pick(0x123456); }), std::optional<qint32>(0x123456));
    }

    // Without a timerfd (no file descriptors left) an elapsed-time timer
    // stands in; only the timerfd also wakes when the system clock is set.
    void theWallTimerWakesAtTheMoment()
    {
        for (const bool timerFd : {true, false}) { // the sanitizers need a file descriptor on their first look at the class
            rlimit saved{};
            getrlimit(RLIMIT_NOFILE, &saved);
            const rlimit none{0, saved.rlim_max};
            setrlimit(RLIMIT_NOFILE, timerFd ? &saved : &none);
            LinuxWallTimer timer;
            setrlimit(RLIMIT_NOFILE, &saved);
            const QDateTime moment = QDateTime::currentDateTime().addMSecs(150);
            timer.startAt(moment);
            const QDateTime fired = firedAt(timer);
            QVERIFY2(fired >= moment && fired < moment.addMSecs(500) && !timer.isActive(), qPrintable(fired.toString("hh:mm:ss.zzz ") + (timerFd ? "timerfd" : "stand-in")));
            timer.startAt(QDateTime::currentDateTime().addMSecs(100));
            timer.stop();
            QVERIFY(!timer.isActive() && !firedAt(timer, 300).isValid());
            if (!timerFd)
                continue;
            // Setting the system clock (here to itself) wakes it long before its moment.
            timer.startAt(QDateTime::currentDateTime().addSecs(3600));
            timespec now{};
            clock_gettime(CLOCK_REALTIME, &now);
            if (clock_settime(CLOCK_REALTIME, &now) == 0)
                QVERIFY(firedAt(timer, 1000).isValid());
            else
                qWarning("the system clock cannot be set here: the wake-up on setting it is not checked");
        }
    }

    // What is typed reaches the browser as one address, the whole of it.
    void addresses_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("opened"); // empty: nothing opens
        QTest::newRow("no scheme, path") << "example.org/a b?q=1" << "http://example.org/a%20b?q=1";
        QTest::newRow("shell words") << "https://example.org/'; touch /tmp/owned; '" << "https://example.org/';%20touch%20/tmp/owned;%20'";
        QTest::newRow("nothing typed") << "" << "";
    }
    void addresses()
    {
        QFETCH(QString, typed);
        QFETCH(QString, opened);
        m_opened.clear();
        QCOMPARE(DesktopUrlOpener().open(typed), !opened.isEmpty());
        QCOMPARE(m_opened.size(), opened.isEmpty() ? 0 : 1);
        QCOMPARE(m_opened.value(0).toString(QUrl::FullyEncoded), opened);
    }

    // The entry starts the program from a path of spaces and reserved characters; the desktops
    // switch it off in place. No notification server: a notification waits for nothing, fails nowhere.
    void autostartAndNotifications()
    {
        XdgAutostart autostart("/opt/my apps/50%$off/alarmclock");
        const QString entry = tmpPath("config/autostart/quorvel-alarmclock.desktop");
        QCOMPARE(autostart.entryPath(), entry);
        QVERIFY(!autostart.enabled() && autostart.setEnabled(true) && autostart.enabled());
        QFile file(entry);
        QVERIFY(file.open(QIODevice::ReadOnly) && file.readAll().contains(R"(Exec="/opt/my apps/50%%\\$off/alarmclock")"));
        for (const auto &[text, on] : {std::pair{"[Desktop Entry]\nHidden=true\n", false}, {"[Desktop Entry]\nX-GNOME-Autostart-enabled = false\n", false},
                                       {"[Desktop Entry]\nHidden=false\n[Desktop Action x]\nHidden=true\n", true}}) {
            QVERIFY(write("config/autostart/quorvel-alarmclock.desktop", text));
            QCOMPARE(autostart.enabled(), on);
        }
        QVERIFY(autostart.setEnabled(false) && !QFile::exists(entry) && autostart.setEnabled(false));
        const qint64 start = QDateTime::currentMSecsSinceEpoch();
        DBusNotifier notifier;
        notifier.show("ALARM @ Sep, 30 at 07:30", "Wake up", true);
        notifier.close();
        QCOMPARE_LT(QDateTime::currentMSecsSinceEpoch() - start, 500);
        QTest::qWait(100);
        QVERIFY(!notifier.available());
    }

    // One notification at a time: one asked for while the server has not told the last one's id
    // waits for it and replaces that one. Silent ones are not critical and expire; a Stop counts
    // from the notification shown only.
    void notificationsReplaceTheirOwn()
    {
        NotificationServer server;
        DBusNotifier notifier;
        QTRY_VERIFY(notifier.available());
        int stops = 0;
        notifier.onStop([&] { ++stops; });
        notifier.show("first", "", true);
        QTRY_COMPARE(server.log.size(), 1);
        notifier.show("second", "", false);
        server.answer(7);
        QTRY_COMPARE(server.log, QStringList({"Notify 0 first 2 stop 0", "Notify 7 second 1 - -1"}));
        server.answer(7);
        server.invoke(3);
        server.invoke(7);
        QTRY_COMPARE(stops, 1);
        notifier.close();
        QTRY_COMPARE(server.log.last(), "Close 7");

        // Missed alarms: one notification that never expires, growing by the rows not listed yet,
        // and starting afresh once dismissed.
        server.log.clear();
        notifier.showMissed({"07:00 Run", "08:00 Eat"});
        QTRY_COMPARE(server.log.size(), 1);
        server.answer(9);
        QTest::qWait(200);
        notifier.showMissed({"08:00 Eat", "21:00 Read"});
        QTRY_COMPARE(server.log.size(), 2);
        server.answer(9);
        server.dismiss(9);
        QTest::qWait(200);
        notifier.showMissed({"06:00 Up"});
        QTRY_COMPARE(server.log, QStringList({"Notify 0 Missed alarms 1 - 0 | 07:00 Run\n08:00 Eat",
                                              "Notify 9 Missed alarms 1 - 0 | 07:00 Run\n08:00 Eat\n21:00 Read",
                                              "Notify 0 Missed alarms 1 - 0 | 06:00 Up"}));
    }

    // What is no sound may not wait: a FIFO would block a reader for ever. play() returns at once;
    // a WAV cut short or claiming more than it holds ends with its samples, within the 2 s a server
    // may take to want more (without the private server it is refused at the connection); a mute
    // server counts as none after those 2 s. What is no sound is reported as not found, and gives
    // way to the fallback (20 s: still sounding when stopped after 3.5 s, and silent within 0.1 s),
    // and that to the pips. A prepared play sounds in full.
    void soundsEndReportAndFallBack_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("fallback");
        QTest::addColumn<QString>("server");
        QTest::addColumn<int>("fromMs"); // -1: still sounding after 3.5 s
        QTest::addColumn<int>("underMs");
        QTest::newRow("fifo") << "fifo.wav" << "" << "hung" << 0 << 500;
        QTest::newRow("text") << "notes.txt" << "" << "hung" << 0 << 500;
        QTest::newRow("a folder") << "pulse" << "" << "hung" << 0 << 500;
        QTest::newRow("cut in its header") << "header.wav" << "" << "hung" << 0 << 500;
        QTest::newRow("a sound, but no audio server") << "short.wav" << "" << "nobody" << 0 << 500;
        QTest::newRow("a sound, the server never answers") << "long.wav" << "" << "hung" << 0 << 2500;
        QTest::newRow("cut mid-sample") << "cut.wav" << "" << "pulse/native" << 0 << 3000;
        QTest::newRow("claims 4 GB") << "huge.wav" << "" << "pulse/native" << 0 << 3000;
        QTest::newRow("found") << "short.wav" << "long.wav" << "pulse/native" << 350 << 3400;
        QTest::newRow("missing, the fallback") << "gone.wav" << "long.wav" << "pulse/native" << -1 << 3600;
        QTest::newRow("neither, the pips") << "gone.wav" << "notes.txt" << "pulse/native" << 600 << 3400;
        QTest::newRow("no fallback, nothing") << "gone.wav" << "" << "pulse/native" << 0 << 200;
    }
    void soundsEndReportAndFallBack()
    {
        QFETCH(QString, name);
        QFETCH(QString, fallback);
        QFETCH(QString, server);
        QFETCH(int, fromMs);
        QFETCH(int, underMs);
        if (!fallback.isEmpty() && !m_serverUp)
            QSKIP("no PulseAudio server could be started here");
        useServer(server != "pulse/native" || m_serverUp ? server : "nobody");
        PulseSoundPlayer player;
        player.prepare(tmpPath(name), fallback.isEmpty() ? QString() : tmpPath(fallback));
        QTimer stopper;
        stopper.setTimerType(Qt::PreciseTimer);
        stopper.callOnTimeout([&] { player.stop(); });
        stopper.start(3500);
        const Played play = playOnce(player, tmpPath(name), fallback.isEmpty() ? QString() : tmpPath(fallback));
        QVERIFY2(play.startMs < 50 && play.ended && play.tookMs >= qMax(fromMs, 0) && play.tookMs < underMs && (fromMs < 0) == (play.tookMs >= 3450),
                 qPrintable(QString::number(play.tookMs)));
        QCOMPARE(play.found, name.endsWith(".wav") && name != "fifo.wav" && name != "header.wav" && name != "gone.wav");
    }

    // The sound stack runs in a helper started when a sound is near: plays asked for meanwhile
    // start once it is up, a stop silences them too, and it ends once idle. Without the helper, or
    // when it dies mid-play, a play ends, never hangs, and the next one starts a new helper.
    void theSoundHelperRunsOnlyWhileASoundIsNear()
    {
        using namespace std::chrono_literals;
        const auto helpers = [] { // this test's children that are sound helpers
            QList<pid_t> found;
            for (const QString &pid : QDir("/proc").entryList({"[0-9]*"})) {
                QFile stat("/proc/" + pid + "/stat");
                const QList<QByteArray> f = stat.open(QIODevice::ReadOnly) ? stat.readAll().split(' ') : QList<QByteArray>();
                if (f.size() > 3 && f[1] == "(alarmclock-soun)" && f[3].toLongLong() == QCoreApplication::applicationPid())
                    found.append(pid.toInt());
            }
            return found;
        };
        QVERIFY(QFile::copy(tmpPath("short.wav"), tmpPath("a b%\n.wav")));
        for (const QString &helper : {QStringLiteral(SOUND_HELPER), tmpPath("gone")}) {
            HelperSoundPlayer player(helper, 300ms, 300ms);
            std::optional<bool> first, second, third;
            player.prepare(tmpPath("a b%\n.wav"), QString());
            player.play(tmpPath("a b%\n.wav"), QString(), [&](bool found) { first = found; });
            player.play(tmpPath("long.wav"), QString(), [&](bool found) { second = found; });
            player.stop();
            player.play(tmpPath("nothing.wav"), QString(), [&](bool found) { third = found; });
            QVERIFY(!first && !second && !third); // never reported before the caller goes on
            QTRY_VERIFY_WITH_TIMEOUT(first && second && third, 5000);
            QCOMPARE(QList<bool>({*first, *second, *third}), QList<bool>({helper == SOUND_HELPER, helper == SOUND_HELPER, false}));
            QTRY_VERIFY_WITH_TIMEOUT(helpers().isEmpty(), 3000);
        }
        HelperSoundPlayer player(SOUND_HELPER, 300ms, 300ms);
        std::optional<bool> killed, next;
        player.prepare(tmpPath("long.wav"), QString());
        player.play(tmpPath("long.wav"), QString(), [&](bool found) { killed = found; });
        QTest::qWait(1000); // a play outlasts the helper's idle time
        QCOMPARE(helpers().size(), 1);
        ::kill(helpers().front(), SIGKILL);
        QTRY_VERIFY_WITH_TIMEOUT(killed.value_or(false), 3000);
        player.play(tmpPath("short.wav"), QString(), [&](bool found) { next = found; });
        QTRY_VERIFY_WITH_TIMEOUT(next.value_or(false), 5000);
        QTRY_VERIFY_WITH_TIMEOUT(helpers().isEmpty(), 3000);
    }

    // The player's end stops every play, and waits for no audio server.
    void endingDuringAHungPlayTakesUnderASecond()
    {
        useServer("hung");
        auto player = std::make_unique<PulseSoundPlayer>();
        bool ended = false;
        player->play(tmpPath("long.wav"), QString(), [&](bool) { ended = true; });
        QTest::qWait(300);
        QCOMPARE_LT(msTaken([&] { player.reset(); }), 1000);
        QTest::qWait(50);
        QVERIFY(!ended); // nobody is left to tell
    }
};

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    if (argc == 3 && qstrcmp(argv[1], "--hold-lock") == 0) { // child mode: hold the lock until stdin closes
        QCoreApplication::setApplicationName("Quorvel Alarm Clock"); // a display name unlike the file name
        LockFileInstanceGuard guard(QString::fromLocal8Bit(argv[2]));
        std::puts(guard.previousInstanceRunning() ? "busy" : "held");
        std::fflush(stdout);
        while (std::getchar() != EOF)
            continue;
        return 0;
    }
    TestPlatform test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_platform.moc"
