#include "platform/qt/LockFileInstanceGuard.h"
#include "platform/qt/PulseSoundPlayer.h"
#include "platform/qt/QtColourPicker.h"
#include "platform/qt/QtFileSystem.h"
#include "platform/qt/QtMessageBox.h"
#include "platform/qt/QtPictureLoader.h"
#include "platform/qt/QtTrayIcon.h"

#include "fakes/FakePlatform.h"

#include <QApplication>
#include <QDataStream>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QKeyEvent>
#include <QMdiArea>
#include <QMessageBox>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <cstdio>

namespace {

// A mono 16-bit PCM WAV of the given length (a quiet tone).
QByteArray makeWav(int milliseconds)
{
    const quint32 rate = 22050;
    const quint32 frames = rate * quint32(milliseconds) / 1000;
    QByteArray wav;
    QDataStream out(&wav, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    out.writeRawData("RIFF", 4);
    out << quint32(36 + frames * 2);
    out.writeRawData("WAVEfmt ", 8);
    out << quint32(16) << quint16(1) << quint16(1) << rate << rate * 2 << quint16(2) << quint16(16);
    out.writeRawData("data", 4);
    out << frames * 2;
    for (quint32 i = 0; i < frames; ++i)
        out << qint16((i / 25) % 2 ? 2000 : -2000);
    return wav;
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// Child-process mode: take the lock, report, and hold it until stdin closes
// (or the parent kills us).
int holdLock(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    // Like the real program: a display name that differs from the file name.
    QCoreApplication::setApplicationName("Quorvel Alarm Clock");
    LockFileInstanceGuard guard(QString::fromLocal8Bit(argv[2]));
    std::puts(guard.previousInstanceRunning() ? "busy" : "held");
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
    return 0;
}

} // namespace

class TestPlatform : public QObject {
    Q_OBJECT

    QTemporaryDir m_tmp;
    QString m_tone;      // 600 ms
    QString m_shortTone; // 200 ms
    bool m_haveServer = false;
    // What the server adds to every play (its output latency, drained at the
    // end); a null sink adds seconds.
    qint64 m_serverDelay = 0;

    QString tmpPath(const QString &name) const { return m_tmp.filePath(name); }

private slots:
    void initTestCase()
    {
        QVERIFY(m_tmp.isValid());
        // Never let a test start a sound server of its own.
        QVERIFY(writeFile(tmpPath("client.conf"), "autospawn = no\n"));
        qputenv("PULSE_CLIENTCONFIG", QFile::encodeName(tmpPath("client.conf")));

        m_tone = tmpPath("tone.wav");
        m_shortTone = tmpPath("short.wav");
        QVERIFY(writeFile(m_tone, makeWav(600)));
        QVERIFY(writeFile(m_shortTone, makeWav(200)));
        QVERIFY(writeFile(tmpPath("notes.txt"), "not a sound at all\n"));

        // Twice: the first play may find the output idle and start faster.
        PulseSoundPlayer player;
        for (int i = 0; i < 2; ++i) {
            QElapsedTimer timer;
            timer.start();
            player.play(m_shortTone);
            m_haveServer = timer.elapsed() >= 150;
            if (!m_haveServer)
                break;
            m_serverDelay = qMax(m_serverDelay, timer.elapsed() - 200);
        }
    }

    void soundReturnsAtOnceWhenItCannotPlay_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<bool>("noServer");
        QTest::newRow("no audio server") << "tone.wav" << true;
        QTest::newRow("missing file") << "absent.wav" << false;
        QTest::newRow("not a sound file") << "notes.txt" << false;
        QTest::newRow("a folder") << "." << false;
    }

    void soundReturnsAtOnceWhenItCannotPlay()
    {
        QFETCH(QString, file);
        QFETCH(bool, noServer);
        const QByteArray savedServer = qgetenv("PULSE_SERVER");
        if (noServer)
            qputenv("PULSE_SERVER", "unix:/nonexistent/quorvel-test-socket");

        PulseSoundPlayer player;
        QElapsedTimer timer;
        timer.start();
        player.play(tmpPath(file));
        const qint64 elapsed = timer.elapsed();

        if (savedServer.isNull())
            qunsetenv("PULSE_SERVER");
        else
            qputenv("PULSE_SERVER", savedServer);
        QVERIFY2(elapsed < 400, qPrintable(QString::number(elapsed)));
    }

    // The caller's timers keep running during a play, a play started from one
    // of them works, and each play lasts as long as its own sound.
    void soundKeepsEventLoopRunningAndNests()
    {
        if (!m_haveServer)
            QSKIP("no PulseAudio server is running");

        PulseSoundPlayer player;
        int ticks = 0;
        QTimer ticker;
        QObject::connect(&ticker, &QTimer::timeout, [&] { ++ticks; });
        ticker.start(20);

        QElapsedTimer timer;
        timer.start();
        qint64 innerStart = -1, innerEnd = -1;
        QTimer::singleShot(100, [&] {
            innerStart = timer.elapsed();
            player.play(m_shortTone);
            innerEnd = timer.elapsed();
        });
        player.play(m_tone);
        const qint64 outerEnd = timer.elapsed();

        const qint64 slack = m_serverDelay + 400;
        QVERIFY(ticks >= 10);
        QVERIFY(innerStart >= 0);
        const qint64 inner = innerEnd - innerStart;
        QVERIFY2(inner >= 180 && inner < 200 + slack, qPrintable(QString::number(inner)));
        QVERIFY2(outerEnd >= 580 && outerEnd >= innerEnd && outerEnd < qMax<qint64>(600, innerEnd) + slack,
                 qPrintable(QString::number(outerEnd)));
    }

    void soundStopsWhenTheApplicationQuits()
    {
        if (!m_haveServer)
            QSKIP("no PulseAudio server is running");
        QVERIFY(writeFile(tmpPath("long.wav"), makeWav(5000)));

        PulseSoundPlayer player;
        QObject scope; // cancels this test's timers when it ends
        QElapsedTimer timer;
        qint64 returnedAfter = -1;
        QTimer::singleShot(0, &scope, [&] {
            timer.start();
            player.play(tmpPath("long.wav"));
            returnedAfter = timer.elapsed();
        });
        QTimer::singleShot(200, &scope, &QCoreApplication::quit);
        QTimer::singleShot(10000, &scope, [] { QCoreApplication::exit(1); }); // safety net
        QCOMPARE(qApp->exec(), 0);
        QVERIFY2(returnedAfter >= 0 && returnedAfter < 1000, qPrintable(QString::number(returnedAfter)));
        // Leaving scope joins the cancelled worker; the sanitizer build checks it.
    }

    void instanceGuardSeesLiveOwnerAndTakesOverDeadOne()
    {
        const QString lockPath = tmpPath("instance.lock");
        QProcess owner;
        owner.start(QCoreApplication::applicationFilePath(), {"--hold-lock", lockPath});
        QVERIFY(owner.waitForStarted());
        QVERIFY(owner.waitForReadyRead(10000));
        QCOMPARE(owner.readLine().trimmed(), QByteArray("held"));

        LockFileInstanceGuard second(lockPath);
        QVERIFY(second.previousInstanceRunning());

        // However old, a live owner's lock stands.
        QFile lockFile(lockPath);
        QVERIFY(lockFile.open(QIODevice::ReadWrite));
        QVERIFY(lockFile.setFileTime(QDateTime::currentDateTime().addDays(-2),
                                     QFileDevice::FileModificationTime));
        lockFile.close();
        QVERIFY(second.previousInstanceRunning());

        owner.kill(); // SIGKILL: the lock file stays behind
        QVERIFY(owner.waitForFinished());
        QVERIFY(QFile::exists(lockPath));

        LockFileInstanceGuard third(lockPath);
        QVERIFY(!third.previousInstanceRunning());
        QVERIFY(!third.previousInstanceRunning());
        QVERIFY(second.previousInstanceRunning());
    }

    // Every test gets its own copy of the staged files; changing it must not
    // touch the build's folder.
    void fakePlatformHasAPrivateAppFolder()
    {
        FakePlatform fake;
        const QDir staged(QStringLiteral(STAGED_APP_DIR));
        const QStringList names = staged.entryList(QDir::Files | QDir::Hidden);
        QCOMPARE(fake.appDir.path(), fake.testDir.path());
        QVERIFY(fake.testDir.path() != staged.absolutePath());
        QCOMPARE(QDir(fake.testDir.path()).entryList(QDir::Files | QDir::Hidden), names);
        if (!names.contains("alarmclock.mdb"))
            QSKIP("the application folder has not been staged");

        const qint64 stagedSize = QFileInfo(staged.filePath("alarmclock.mdb")).size();
        QVERIFY(fake.testDir.writeBytes("alarmclock.mdb", "changed"));
        QCOMPARE(QFileInfo(fake.testDir.dbPath()).size(), 7);
        QCOMPARE(QFileInfo(staged.filePath("alarmclock.mdb")).size(), stagedSize);
        QVERIFY(fake.testDir.remove("alarmclock.mdb"));
        QVERIFY(!fake.platform().files.fileExists(fake.testDir.dbPath()));
    }

    void fileSystemCountsOnlyNormalFiles()
    {
        QtFileSystem files;
        QVERIFY(files.fileExists(m_tone));
        QVERIFY(!files.fileExists(m_tmp.path()));
        QVERIFY(!files.fileExists(tmpPath("absent.wav")));
        QVERIFY(!files.fileExists(QString()));
    }

    void pictureLoader_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<bool>("mdi");
        QTest::addColumn<bool>("loaded");
        QTest::newRow("missing") << "absent.bmp" << false << false;
        QTest::newRow("corrupt") << "corrupt.bmp" << false << false;
        QTest::newRow("corrupt, mdi") << "corrupt.bmp" << true << false;
        QTest::newRow("picture") << "picture.bmp" << false << true;
        QTest::newRow("picture, mdi") << "picture.bmp" << true << true;
    }

    void pictureLoader()
    {
        QFETCH(QString, file);
        QFETCH(bool, mdi);
        QFETCH(bool, loaded);
        QVERIFY(writeFile(tmpPath("corrupt.bmp"), "BM this is not really a bitmap"));
        QImage image(8, 8, QImage::Format_RGB32);
        image.fill(Qt::red);
        QVERIFY(image.save(tmpPath("picture.bmp"), "BMP"));

        QMdiArea area;
        QWidget plain;
        QWidget *window = mdi ? static_cast<QWidget *>(&area) : &plain;
        const QPalette before = window->palette();

        QtPictureLoader loader;
        QCOMPARE(loader.setBackground(window, tmpPath(file)), loaded);
        if (mdi) {
            QCOMPARE(area.background().style() == Qt::TexturePattern, loaded);
        } else {
            QCOMPARE(plain.autoFillBackground(), loaded);
            QCOMPARE(plain.palette().brush(QPalette::Window).style() == Qt::TexturePattern, loaded);
            if (!loaded)
                QCOMPARE(plain.palette(), before);
        }
    }

    void colourConversion_data()
    {
        QTest::addColumn<qint32>("bgr");
        QTest::addColumn<QColor>("colour");
        QTest::newRow("red is the low byte") << qint32(0x0000FF) << QColor(255, 0, 0);
        QTest::newRow("blue is the high byte") << qint32(0xFF0000) << QColor(0, 0, 255);
        QTest::newRow("mixed") << qint32(0x123456) << QColor(0x56, 0x34, 0x12);
        QTest::newRow("white") << qint32(0xFFFFFF) << QColor(255, 255, 255);
    }

    void colourConversion()
    {
        QFETCH(qint32, bgr);
        QFETCH(QColor, colour);
        QCOMPARE(colourFromBgr(bgr), colour);
        QCOMPARE(bgrFromColour(colour), bgr);
        QCOMPARE(bgrFromColour(colour.toHsv()), bgr);
    }

    void trayTipText_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("shown");
        const QChar nul(0);
        QTest::newRow("cut at the first NUL") << QString("Alarm" + QString(3, nul) + "junk") << "Alarm";
        QTest::newRow("blanks before the NUL stay") << QString("Alarm " + QString(nul)) << "Alarm ";
        QTest::newRow("no NUL: padding removed") << QString("Alarm at 7:00" + QString(51, ' '))
                                                 << "Alarm at 7:00";
        QTest::newRow("empty") << QString() << QString();
    }

    void trayTipText()
    {
        QFETCH(QString, field);
        QFETCH(QString, shown);
        QCOMPARE(visibleTipText(field), shown);
    }

    // The test platform has no notification area: nothing may crash or complain.
    void trayIconWithoutATray()
    {
        QPixmap pixmap(16, 16);
        pixmap.fill(Qt::green);
        QtTrayIcon tray{QIcon(pixmap)};
        int messages = 0;
        tray.setMouseHandler([&](int) { ++messages; });
        tray.add("Alarm" + QString(59, QChar(0)));
        tray.remove();
        tray.add(QString(64, ' '));
        QCOMPARE(messages, 0);
    }

    void messageBox_data()
    {
        QTest::addColumn<MsgButtons>("buttons");
        QTest::addColumn<int>("key");
        QTest::addColumn<MsgResult>("result");
        QTest::newRow("ok, escape") << MsgButtons::Ok << int(Qt::Key_Escape) << MsgResult::Ok;
        QTest::newRow("ok/cancel, escape") << MsgButtons::OkCancel << int(Qt::Key_Escape) << MsgResult::Cancel;
        QTest::newRow("ok/cancel, enter") << MsgButtons::OkCancel << int(Qt::Key_Return) << MsgResult::Ok;
        QTest::newRow("yes/no, escape") << MsgButtons::YesNo << int(Qt::Key_Escape) << MsgResult::No;
        QTest::newRow("yes/no, enter") << MsgButtons::YesNo << int(Qt::Key_Return) << MsgResult::Yes;
    }

    void messageBox()
    {
        QFETCH(MsgButtons, buttons);
        QFETCH(int, key);
        QFETCH(MsgResult, result);
        QGuiApplication::setApplicationDisplayName("Quorvel Test");

        QString title, text;
        QObject scope; // cancels this test's timers when it ends
        QTimer::singleShot(0, &scope, [&] {
            if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                title = box->windowTitle();
                text = box->text();
                QTest::keyClick(box, Qt::Key(key));
            }
        });
        QTimer::singleShot(5000, &scope, [] { // the box was not found: do not hang
            if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget()))
                box->done(0);
        });
        QtMessageBox messages;
        QCOMPARE(messages.show("first\r\nsecond", buttons, MsgIcon::Information, QString()), result);
        QCOMPARE(title, QString("Quorvel Test"));
        QCOMPARE(text, QString("first\nsecond"));
    }
};

int main(int argc, char **argv)
{
    if (argc == 3 && qstrcmp(argv[1], "--hold-lock") == 0)
        return holdLock(argc, argv);
    QApplication app(argc, argv);
    TestPlatform test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_platform.moc"
