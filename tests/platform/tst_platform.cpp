// The real platform services that work without a desktop.

#include "platform/qt/BuildVersionInfo.h"
#include "platform/qt/ExecutableDirectory.h"
#include "platform/qt/LinuxWallTimer.h"
#include "platform/qt/LockFileInstanceGuard.h"
#include "platform/qt/QtColourPicker.h"
#include "platform/qt/QtFileSystem.h"
#include "platform/qt/QtInputBox.h"
#include "platform/qt/QtMessageBox.h"
#include "platform/qt/QtPictureLoader.h"
#include "platform/qt/SystemClock.h"

#include <QApplication>
#include <QColorDialog>
#include <QDir>
#include <QInputDialog>
#include <QMdiArea>
#include <QMessageBox>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <cstdio>
#include <ctime>
#include <sys/resource.h>

// Child-process mode: take the lock, report, and hold it until killed.
static int holdLock(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName("Quorvel Alarm Clock"); // a display name unlike the file name
    LockFileInstanceGuard guard(QString::fromLocal8Bit(argv[2]));
    std::puts(guard.previousInstanceRunning() ? "busy" : "held");
    std::fflush(stdout);
    while (std::getchar() != EOF)
        continue;
    return 0;
}

// Answers the next modal dialog with a key once it is open; records its title and text.
static QString answerNextDialog(Qt::Key key, const std::function<void()> &open)
{
    QString seen;
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, [&] {
        if (QWidget *dialog = QApplication::activeModalWidget()) {
            auto *box = qobject_cast<QMessageBox *>(dialog);
            seen = dialog->windowTitle() + '|' + (box ? box->text() : QString());
            QTest::keyClick(dialog, key);
        }
    });
    answer.start(20);
    open();
    return seen;
}

// Waits for the timer's call-back; the wall-clock time it came, or an invalid one.
static QDateTime firedAt(LinuxWallTimer &timer, int waitMs = 3000)
{
    QDateTime fired;
    timer.onTimeout([&] { fired = QDateTime::currentDateTime(); });
    (void)QTest::qWaitFor([&] { return fired.isValid(); }, waitMs);
    return fired;
}

class TestPlatform : public QObject {
    Q_OBJECT

    QTemporaryDir m_tmp;
    QString tmpPath(const QString &name) const { return m_tmp.filePath(name); }

private slots:
    void initTestCase()
    {
        QFile bad(tmpPath("notes.txt"));
        QVERIFY(bad.open(QIODevice::WriteOnly) && bad.write("BM not a sound and not a bitmap\n") > 0 && bad.flush());
        QVERIFY(QFile::copy(QDir(STAGED_APP_DIR).filePath("alarm.wav"), tmpPath("alarm.wav")));
    }

    // A lock of any age stands while its owner lives; a killed owner's does not.
    void instanceGuardSeesLiveOwnerAndTakesOverDeadOne()
    {
        const QString lockPath = tmpPath("instance.lock");
        QProcess owner;
        owner.start(QCoreApplication::applicationFilePath(), {"--hold-lock", lockPath});
        QVERIFY(owner.waitForReadyRead(10000));
        QCOMPARE(owner.readLine().trimmed(), QByteArray("held"));
        QFile lockFile(lockPath);
        QVERIFY(lockFile.open(QIODevice::ReadWrite));
        QVERIFY(lockFile.setFileTime(QDateTime::currentDateTime().addDays(-2), QFileDevice::FileModificationTime));
        lockFile.close();
        LockFileInstanceGuard second(lockPath);
        QVERIFY(second.previousInstanceRunning());
        owner.kill(); // SIGKILL: the lock file stays behind
        QVERIFY(owner.waitForFinished() && QFile::exists(lockPath));
        LockFileInstanceGuard third(lockPath);
        // Asking again is not a second instance.
        QVERIFY(!third.previousInstanceRunning() && !third.previousInstanceRunning() && second.previousInstanceRunning());
        QVERIFY(LockFileInstanceGuard::defaultLockPath().endsWith(".lock"));
    }

    void filesPicturesVersionAndClock()
    {
        QVERIFY(QtFileSystem().fileExists(tmpPath("alarm.wav")) && !QtFileSystem().fileExists(m_tmp.path()));
        QMdiArea area;
        QWidget plain;
        const QPalette before = plain.palette();
        QVERIFY(!QtPictureLoader().setBackground(&plain, tmpPath("notes.txt")));
        QVERIFY(!QtPictureLoader().setBackground(&area, tmpPath("absent.bmp")));
        QVERIFY(!QtPictureLoader().setBackground(nullptr, QDir(STAGED_APP_DIR).filePath("backgroundmatrix.bmp")));
        QVERIFY(plain.palette() == before && !plain.autoFillBackground() && area.background().style() == Qt::SolidPattern);
        QVERIFY(QtPictureLoader().setBackground(&plain, QDir(STAGED_APP_DIR).filePath("backgroundmatrix.bmp")));
        QVERIFY(QtPictureLoader().setBackground(&area, QDir(STAGED_APP_DIR).filePath("backgroundmatrix.bmp")));
        QVERIFY(plain.autoFillBackground() && plain.palette().brush(QPalette::Window).style() == Qt::TexturePattern && area.background().style() == Qt::TexturePattern);

        const QStringList version = QString(ALARMCLOCK_VERSION_TEXT).split('.');
        const BuildVersionInfo build;
        QCOMPARE(QStringList({QString::number(build.major()), QString::number(build.minor()), QString::number(build.revision())}), version);
        QVERIFY(ExecutableDirectory().path() == QCoreApplication::applicationDirPath() && qAbs(SystemClock().now().msecsTo(QDateTime::currentDateTime())) < 1000);
        QCOMPARE(colourFromBgr(0x123456), QColor(0x56, 0x34, 0x12)); // red in the low byte
        QCOMPARE(bgrFromColour(QColor(0x56, 0x34, 0x12).toHsv()), 0x123456);
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
        answerNextDialog(Qt::Key_Return, [&] { result = QtMessageBox().show("x", MsgButtons::YesNo, MsgIcon::None, "T"); });
        QCOMPARE(result, MsgResult::Yes);
        answerNextDialog(Qt::Key_Escape, [&] { result = QtMessageBox().show("x", MsgButtons::Ok, MsgIcon::None, "T"); });
        QCOMPARE(result, MsgResult::Ok);
        QString answer;
        answerNextDialog(Qt::Key_Return, [&] { answer = QtInputBox().ask("NAME?", "", "Kitchen"); });
        QCOMPARE(answer, "Kitchen");
        answerNextDialog(Qt::Key_Escape, [&] { answer = QtInputBox().ask("NAME?", "T", "Kitchen"); });
        QCOMPARE(answer, QString());
        std::optional<qint32> picked = 1;
        answerNextDialog(Qt::Key_Escape, [&] { picked = QtColourPicker().pick(0xFF); });
        QCOMPARE(picked, std::nullopt);
        answerNextDialog(Qt::Key_Return, [&] { picked = QtColourPicker().pick(0x123456); });
        QCOMPARE(picked, std::optional<qint32>(0x123456));
    }

    void theWallTimerWakesAtTheMomentOrWhenTheClockIsSet()
    {
        LinuxWallTimer timer;
        QVERIFY(!timer.isActive());
        const QDateTime moment = QDateTime::currentDateTime().addMSecs(150);
        timer.startAt(moment);
        QVERIFY(timer.isActive());
        const QDateTime fired = firedAt(timer);
        QVERIFY2(fired >= moment && fired < moment.addMSecs(500), qPrintable(fired.toString("hh:mm:ss.zzz")));
        QVERIFY(!timer.isActive());
        // A moment already past, even before the epoch, calls back at once.
        timer.startAt(QDateTime(QDate(1969, 7, 20), QTime(20, 17)));
        QVERIFY(firedAt(timer, 500).isValid());
        // Stopped, it stays silent; a new request replaces the old.
        timer.startAt(QDateTime::currentDateTime().addMSecs(100));
        timer.stop();
        QVERIFY(!timer.isActive() && !firedAt(timer, 300).isValid());
        timer.startAt(QDateTime::currentDateTime().addSecs(3600));
        timer.startAt(QDateTime::currentDateTime().addMSecs(50));
        QVERIFY(firedAt(timer, 1000).isValid());

        // Setting the system clock (here to itself) wakes it long before its moment.
        timer.startAt(QDateTime::currentDateTime().addSecs(3600));
        timespec now{};
        clock_gettime(CLOCK_REALTIME, &now);
        if (clock_settime(CLOCK_REALTIME, &now) != 0)
            QSKIP("the system clock cannot be set here");
        QVERIFY(firedAt(timer, 1000).isValid());
    }

    // Without a timerfd (no file descriptors left) an elapsed-time timer stands in.
    void theWallTimerFallsBackWithoutATimerFd()
    {
        rlimit saved{};
        getrlimit(RLIMIT_NOFILE, &saved);
        const rlimit none{0, saved.rlim_max};
        setrlimit(RLIMIT_NOFILE, &none);
        LinuxWallTimer timer;
        setrlimit(RLIMIT_NOFILE, &saved);
        const QDateTime moment = QDateTime::currentDateTime().addMSecs(100);
        timer.startAt(moment);
        QVERIFY(timer.isActive());
        const QDateTime fired = firedAt(timer);
        QVERIFY(fired >= moment);
        timer.startAt(QDateTime::currentDateTime().addMSecs(100));
        timer.stop();
        QVERIFY(!firedAt(timer, 300).isValid());
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
