// The real platform services, run without a desktop. The sound player meets
// what the world may do to it: broken sounds, an audio server that never
// answers, a stop in mid-play, and the program quitting while a play hangs.

#include "platform/qt/BuildVersionInfo.h"
#include "platform/qt/DBusNotifier.h"
#include "platform/qt/DesktopUrlOpener.h"
#include "platform/qt/ExecutableDirectory.h"
#include "platform/qt/LinuxWallTimer.h"
#include "platform/qt/LockFileInstanceGuard.h"
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
#include <QDesktopServices>
#include <QMdiArea>
#include <QMessageBox>
#include <QtTest>

#include <cstdio>
#include <ctime>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

// Answers the next modal dialog with a key once it is open; records its title and text.
QString answerNextDialog(Qt::Key key, const std::function<void()> &open)
{
    QString seen;
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, [&] {
        if (QWidget *dialog = QApplication::activeModalWidget()) {
            seen = dialog->windowTitle() + '|' + (qobject_cast<QMessageBox *>(dialog) ? qobject_cast<QMessageBox *>(dialog)->text() : QString());
            QTest::keyClick(dialog, key);
        }
    });
    answer.start(20);
    open();
    return seen;
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
    if (fd < 0 || size_t(name.size()) >= sizeof address.sun_path)
        return -1;
    std::memcpy(address.sun_path, name.constData(), size_t(name.size()));
    return ::bind(fd, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0 && ::listen(fd, 16) == 0 ? fd : -1;
}

qint64 msToPlay(PulseSoundPlayer &player, const QString &path)
{
    const qint64 start = QDateTime::currentMSecsSinceEpoch();
    player.play(path);
    return QDateTime::currentMSecsSinceEpoch() - start;
}

} // namespace

class TestPlatform : public QObject {
    Q_OBJECT

    QTemporaryDir m_tmp;
    int m_hung = -1;   // accepts connections and never says a word
    QProcess m_server; // a private PulseAudio with a null sink, where installed
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
        QVERIFY(mkfifo(QFile::encodeName(tmpPath("fifo.wav")).constData(), 0600) == 0 && QDir().mkpath(tmpPath("pulse")));
        QVERIFY((m_hung = listenMute(tmpPath("hung"))) >= 0);
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(tmpPath("config")));
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
        for (const char *scheme : {"http", "https", "file", "mailto"})
            QDesktopServices::setUrlHandler(scheme, this, "openUrl");
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("XDG_RUNTIME_DIR", tmpPath("pulse"));
        env.insert("PULSE_RUNTIME_PATH", tmpPath("pulse"));
        m_server.setProcessEnvironment(env);
        m_server.start("pulseaudio", {"-n", "--daemonize=no", "--exit-idle-time=-1", "-Lmodule-null-sink sink_name=test",
                                      "-Lmodule-native-protocol-unix auth-anonymous=1 socket=" + tmpPath("pulse/native"), "-Lmodule-always-sink"});
        m_serverUp = m_server.waitForStarted(3000) && QTest::qWaitFor([&] { return QFile::exists(tmpPath("pulse/native")); }, 5000);
    }
    void cleanupTestCase()
    {
        for (const char *scheme : {"http", "https", "file", "mailto"})
            QDesktopServices::unsetUrlHandler(scheme);
        ::close(m_hung);
        m_server.kill();
        m_server.waitForFinished(2000);
    }

    // A lock stands while its owner lives; a killed owner's does not.
    void instanceGuardSeesLiveOwnerAndTakesOverDeadOne()
    {
        const QString lockPath = tmpPath("instance.lock");
        QProcess owner;
        owner.start(QCoreApplication::applicationFilePath(), {"--hold-lock", lockPath});
        QVERIFY(owner.waitForReadyRead(10000));
        QCOMPARE(owner.readLine().trimmed(), QByteArray("held"));
        LockFileInstanceGuard second(lockPath);
        QVERIFY(second.previousInstanceRunning());
        owner.kill(); // SIGKILL: the lock file stays behind
        QVERIFY(owner.waitForFinished() && QFile::exists(lockPath));
        LockFileInstanceGuard third(lockPath);
        // Asking again is not a second instance.
        QVERIFY(!third.previousInstanceRunning() && !third.previousInstanceRunning() && second.previousInstanceRunning());
    }

    // A folder is no file; a picture that will not load leaves the window as it was.
    void filesPicturesVersionAndClock()
    {
        QVERIFY(QtFileSystem().fileExists(tmpPath("short.wav")) && !QtFileSystem().fileExists(m_tmp.path()));
        QMdiArea area;
        QWidget plain;
        const QString picture = QDir(STAGED_APP_DIR).filePath("backgroundmatrix.bmp");
        QVERIFY(!QtPictureLoader().setBackground(&plain, tmpPath("notes.txt")) && !QtPictureLoader().setBackground(&area, tmpPath("absent.bmp")));
        QVERIFY(!plain.autoFillBackground() && area.background().style() == Qt::SolidPattern);
        QVERIFY(QtPictureLoader().setBackground(&plain, picture) && QtPictureLoader().setBackground(&area, picture));
        QVERIFY(plain.autoFillBackground() && plain.palette().brush(QPalette::Window).style() == Qt::TexturePattern && area.background().style() == Qt::TexturePattern);
        const BuildVersionInfo build;
        QCOMPARE(QStringList({QString::number(build.major()), QString::number(build.minor()), QString::number(build.revision())}),
                 QString(ALARMCLOCK_VERSION_TEXT).split('.'));
        QVERIFY(ExecutableDirectory().path() == QCoreApplication::applicationDirPath() && qAbs(SystemClock().now().msecsTo(QDateTime::currentDateTime())) < 1000);
        QCOMPARE(colourFromBgr(0x123456), QColor(0x56, 0x34, 0x12)); // red in the low byte
    }

    // Escape gives the negative answer; an empty title falls back to the program's name.
    void dialogs()
    {
        QGuiApplication::setApplicationDisplayName("Quorvel Test");
        MsgResult result{};
        QCOMPARE(answerNextDialog(Qt::Key_Escape, [&] { result = QtMessageBox().show("first\r\nsecond", MsgButtons::OkCancel, MsgIcon::Information, QString()); }),
                 QString("Quorvel Test|first\nsecond"));
        QCOMPARE(result, MsgResult::Cancel);
        answerNextDialog(Qt::Key_Escape, [&] { result = QtMessageBox().show("a <b> & c", MsgButtons::YesNo, MsgIcon::Critical, "T"); });
        QCOMPARE(result, MsgResult::No);
        QString answer;
        answerNextDialog(Qt::Key_Return, [&] { answer = QtInputBox().ask("NAME?", "", "Kitchen"); });
        QCOMPARE(answer, "Kitchen");
        answerNextDialog(Qt::Key_Escape, [&] { answer = QtInputBox().ask("NAME?", "T", "Kitchen"); });
        QCOMPARE(answer, QString());
        std::optional<qint32> picked;
        answerNextDialog(Qt::Key_Return, [&] { picked = QtColourPicker().pick(0x123456); });
        QCOMPARE(picked, std::optional<qint32>(0x123456));
    }

    // Without a timerfd (no file descriptors left) an elapsed-time timer
    // stands in; only the timerfd also wakes when the system clock is set.
    void theWallTimerWakesAtTheMoment_data()
    {
        QTest::addColumn<bool>("timerFd");
        QTest::newRow("timerfd") << true;
        QTest::newRow("elapsed-time stand-in") << false;
    }
    void theWallTimerWakesAtTheMoment()
    {
        QFETCH(bool, timerFd);
        rlimit saved{};
        getrlimit(RLIMIT_NOFILE, &saved);
        const rlimit none{0, saved.rlim_max};
        setrlimit(RLIMIT_NOFILE, timerFd ? &saved : &none);
        LinuxWallTimer timer;
        setrlimit(RLIMIT_NOFILE, &saved);
        const QDateTime moment = QDateTime::currentDateTime().addMSecs(150);
        timer.startAt(moment);
        QVERIFY(timer.isActive());
        const QDateTime fired = firedAt(timer);
        QVERIFY2(fired >= moment && fired < moment.addMSecs(500) && !timer.isActive(), qPrintable(fired.toString("hh:mm:ss.zzz")));
        // A moment already past, even before the epoch, calls back at once; stopped, it stays silent.
        timer.startAt(QDateTime(QDate(1969, 7, 20), QTime(20, 17)));
        QVERIFY(firedAt(timer, 500).isValid());
        timer.startAt(QDateTime::currentDateTime().addMSecs(100));
        timer.stop();
        QVERIFY(!timer.isActive() && !firedAt(timer, 300).isValid());
        if (!timerFd)
            return;
        // Setting the system clock (here to itself) wakes it long before its moment.
        timer.startAt(QDateTime::currentDateTime().addSecs(3600));
        timespec now{};
        clock_gettime(CLOCK_REALTIME, &now);
        if (clock_settime(CLOCK_REALTIME, &now) != 0)
            QSKIP("the system clock cannot be set here");
        QVERIFY(firedAt(timer, 1000).isValid());
    }

    // What is typed reaches the browser as one address, the whole of it.
    void addresses_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("opened"); // empty: nothing opens
        QTest::newRow("no scheme") << "www.example.org" << "http://www.example.org";
        QTest::newRow("no scheme, path") << "example.org/a b?q=1" << "http://example.org/a%20b?q=1";
        QTest::newRow("mail") << "mailto:me@example.org" << "mailto:me@example.org";
        QTest::newRow("file path") << "/tmp/page.html" << "file:///tmp/page.html";
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

    // The tray's clicks as messages (0: none). An XEmbed tray sends Trigger
    // on every left press, before a double click.
    void trayClicks()
    {
        const auto on = [](QSystemTrayIcon::ActivationReason reason, bool host) { return QtTrayIcon::messageFor(reason, host).value_or(0); };
        const int restore = TrayIcon::LeftDoubleClick, menu = TrayIcon::RightButtonDown;
        QCOMPARE(QList<int>({on(QSystemTrayIcon::Trigger, true), on(QSystemTrayIcon::Context, true), on(QSystemTrayIcon::MiddleClick, true)}),
                 QList<int>({restore, menu, 0}));
        QCOMPARE(QList<int>({on(QSystemTrayIcon::Trigger, false), on(QSystemTrayIcon::DoubleClick, false), on(QSystemTrayIcon::Context, false)}),
                 QList<int>({0, restore, menu}));
    }

    void autostartEntry()
    {
        XdgAutostart autostart("/opt/my apps/50%$off/alarmclock");
        const QString entry = tmpPath("config/autostart/quorvel-alarmclock.desktop");
        QCOMPARE(autostart.entryPath(), entry);
        QVERIFY(!autostart.enabled() && autostart.setEnabled(true) && autostart.enabled());
        QFile file(entry);
        QVERIFY(file.open(QIODevice::ReadOnly) && file.readAll().contains(R"(Exec="/opt/my apps/50%%\\$off/alarmclock")"));
        const QString validate = QStandardPaths::findExecutable("desktop-file-validate");
        if (!validate.isEmpty())
            QCOMPARE(QProcess::execute(validate, {entry}), 0);
        QVERIFY(autostart.setEnabled(false) && !QFile::exists(entry) && autostart.setEnabled(false));
    }

    // No session bus: nothing shows, nothing waits, nothing fails.
    void notificationsWithoutABus()
    {
        const qint64 start = QDateTime::currentMSecsSinceEpoch();
        DBusNotifier notifier;
        notifier.show("ALARM @ Sep, 30 at 07:30", "Wake up");
        notifier.close();
        QCOMPARE_LT(QDateTime::currentMSecsSinceEpoch() - start, 500);
    }

    // What is no sound may not wait: a FIFO would block a reader for ever. A
    // WAV that is cut short, or claims more than it holds, ends with its
    // samples, within the 2 s a server may take to want more. Where the
    // private server runs, those are decoded and streamed; otherwise they are
    // refused at the connection. A server that takes the connection and never
    // answers counts as none once those 2 s are up.
    void brokenSoundsPlayAndReturn_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes"); // written first, when given
        QTest::addColumn<QString>("server");
        QTest::addColumn<int>("withinMs");
        QTest::newRow("fifo") << "fifo.wav" << QByteArray() << "hung" << 500;
        QTest::newRow("text") << "notes.txt" << QByteArray() << "hung" << 500;
        QTest::newRow("missing") << "gone.wav" << QByteArray() << "hung" << 500;
        QTest::newRow("cut in its header") << "header.wav" << wavHeader(16000).left(20) << "hung" << 500;
        QTest::newRow("a sound, but no audio server") << "short.wav" << QByteArray() << "nobody" << 500;
        QTest::newRow("a sound, the server never answers") << "long.wav" << QByteArray() << "hung" << 2500;
        QTest::newRow("cut mid-sample") << "cut.wav" << wavHeader(16000) + QByteArray(101, '\x40') << "pulse/native" << 3000;
        QTest::newRow("claims 4 GB") << "huge.wav" << wavHeader(0xFFFFFFF0u) + QByteArray(64, '\x10') << "pulse/native" << 3000;
    }
    void brokenSoundsPlayAndReturn()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, server);
        QFETCH(int, withinMs);
        QVERIFY(bytes.isEmpty() || write(name, bytes));
        useServer(server != "pulse/native" || m_serverUp ? server : "nobody");
        PulseSoundPlayer player;
        player.prepare(tmpPath(name));
        QCOMPARE_LT(msToPlay(player, tmpPath(name)), withinMs);
    }

    void stopSilencesAPlayAtOnce()
    {
        if (!m_serverUp)
            QSKIP("no PulseAudio server could be started here");
        useServer("pulse/native");
        PulseSoundPlayer player;
        player.prepare(tmpPath("short.wav")); // a prepared play sounds in full
        QTest::qWait(200);
        QCOMPARE_GE(msToPlay(player, tmpPath("short.wav")), 350);
        qint64 stoppedAt = 0;
        QTimer::singleShot(1500, this, [&] { stoppedAt = QDateTime::currentMSecsSinceEpoch(), player.stop(); });
        const qint64 played = msToPlay(player, tmpPath("long.wav"));
        QVERIFY2(stoppedAt && QDateTime::currentMSecsSinceEpoch() - stoppedAt < 100, qPrintable(QString("played %1 ms").arg(played)));
    }

    // Last: quitting leaves this thread's event loops ended for good.
    void quittingDuringAHungPlayEndsWithinTwoSeconds()
    {
        useServer("hung");
        auto player = std::make_unique<PulseSoundPlayer>();
        QTimer::singleShot(300, [] { QCoreApplication::exit(0); });
        const qint64 start = QDateTime::currentMSecsSinceEpoch();
        player->play(tmpPath("long.wav"));
        player.reset();
        // Well within the 2 s allowed: a stop wakes the worker at once.
        QCOMPARE_LT(QDateTime::currentMSecsSinceEpoch() - start, 1000);
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
