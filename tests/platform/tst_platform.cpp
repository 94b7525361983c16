#include "platform/qt/LockFileInstanceGuard.h"
#include "platform/qt/PulseSoundPlayer.h"
#include "platform/qt/QtColourPicker.h"
#include "platform/qt/QtFileSystem.h"
#include "platform/qt/QtMessageBox.h"
#include "platform/qt/QtPictureLoader.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QMdiArea>
#include <QMessageBox>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <cstdio>

// Child-process mode: take the lock, report, and hold it until killed.
static int holdLock(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    // Like the real program: a display name that differs from the file name.
    QCoreApplication::setApplicationName("Quorvel Alarm Clock");
    LockFileInstanceGuard guard(QString::fromLocal8Bit(argv[2]));
    std::puts(guard.previousInstanceRunning() ? "busy" : "held");
    std::fflush(stdout);
    while (std::getchar() != EOF)
        continue;
    return 0;
}

class TestPlatform : public QObject {
    Q_OBJECT

    QTemporaryDir m_tmp;
    QString tmpPath(const QString &name) const { return m_tmp.filePath(name); }

private slots:
    void initTestCase()
    {
        QVERIFY(m_tmp.isValid());
        QFile bad(tmpPath("notes.txt"));
        QVERIFY(bad.open(QIODevice::WriteOnly) && bad.write("BM not a sound and not a bitmap\n") > 0 && bad.flush());
        QVERIFY(QFile::copy(QDir(STAGED_APP_DIR).filePath("alarm.wav"), tmpPath("alarm.wav")));
    }

    void soundReturnsAtOnceWhenItCannotPlay()
    {
        PulseSoundPlayer player;
        QElapsedTimer timer;
        timer.start();
        player.play(tmpPath("notes.txt"));
        player.play(m_tmp.path());
        qputenv("PULSE_SERVER", "unix:/nonexistent/quorvel-test-socket");
        player.play(tmpPath("alarm.wav"));
        QVERIFY2(timer.elapsed() < 600, qPrintable(QString::number(timer.elapsed())));
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
        QVERIFY(owner.waitForFinished());
        QVERIFY(QFile::exists(lockPath));
        LockFileInstanceGuard third(lockPath);
        QVERIFY(!third.previousInstanceRunning());
        QVERIFY(!third.previousInstanceRunning()); // asking again is not a second instance
        QVERIFY(second.previousInstanceRunning());
    }

    void foldersAndBrokenPicturesAreRefused()
    {
        QVERIFY(QtFileSystem().fileExists(tmpPath("alarm.wav")));
        QVERIFY(!QtFileSystem().fileExists(m_tmp.path()));
        QMdiArea area;
        QWidget plain;
        const QPalette before = plain.palette();
        QVERIFY(!QtPictureLoader().setBackground(&plain, tmpPath("notes.txt")));
        QVERIFY(!QtPictureLoader().setBackground(&area, tmpPath("absent.bmp")));
        QCOMPARE(plain.palette(), before);
        QVERIFY(!plain.autoFillBackground());
        QCOMPARE(area.background().style(), Qt::SolidPattern);
    }

    void colourNumbersKeepRedInTheLowByte()
    {
        QCOMPARE(colourFromBgr(0x123456), QColor(0x56, 0x34, 0x12));
        QCOMPARE(bgrFromColour(QColor(0x56, 0x34, 0x12).toHsv()), 0x123456);
    }

    // Escape gives the negative answer; an empty title falls back to the program's name.
    void messageBoxEscapeAndTitle()
    {
        QGuiApplication::setApplicationDisplayName("Quorvel Test");
        QString seen;
        QTimer answer; // closes each box once it is open
        connect(&answer, &QTimer::timeout, [&] {
            if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                seen = box->windowTitle() + '|' + box->text();
                QTest::keyClick(box, Qt::Key_Escape);
            }
        });
        answer.start(20);
        QCOMPARE(QtMessageBox().show("first\r\nsecond", MsgButtons::OkCancel, MsgIcon::Information, QString()), MsgResult::Cancel);
        QCOMPARE(seen, QString("Quorvel Test|first\nsecond"));
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
