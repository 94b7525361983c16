// Faults from outside the program: files it may not write, locks held by
// other processes, a full disk, a kill in the middle of a save, broken sounds
// and pictures, an address that would fool a shell. Nothing may crash, and
// the table always holds the rows of one whole save: the old ones or the new.

#include "fakes/LoadedMainWindow.h"
#include "platform/qt/DesktopUrlOpener.h"
#include "platform/qt/PulseSoundPlayer.h"

#include <QApplication>
#include <QCheckBox>
#include <QProcess>
#include <QRandomGenerator>
#include <QtTest>

#include <csignal>
#include <cstdio>
#include <cstring>
#include <sys/fsuid.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

QStringList storedRows(const QString &db)
{
    return TestDatabase(db, QStringLiteral("peek-rows")).rows(
        "SELECT dtalarmclockmmmddyyyy, dtalarmclockhhnn, stralarmclock, strURL, strWAVEFileNamePath, booRepeat "
        "FROM tblalarmclock ORDER BY lngalarmclockid");
}

// Set A or B: distinct in every column, dated and daily rows mixed, each
// description `width` characters long.
void fillSet(frmAlarmClock *t, QChar set, int width)
{
    const int shift = set == QLatin1Char('A') ? 0 : 1;
    for (int i = 0; i < 13; ++i) {
        t->txtACDate[i]->setText((i + shift) % 2 ? QStringLiteral("Oct %1, 2031").arg(10 + i + shift) : QString());
        t->txtACTime[i]->setText(QStringLiteral("%1:%2").arg(i + 6, 2, 10, QLatin1Char('0')).arg(shift * 30 + i, 2, 10, QLatin1Char('0')));
        t->txtACDetails[i]->setText(QStringLiteral("set %1 row %2 ").arg(set).arg(i).leftJustified(width, set));
        t->txtURL[i]->setText(QStringLiteral("https://example.org/%1/%2").arg(set).arg(i));
        t->txtWAVEFileNamePath[i]->setText(QStringLiteral("/sounds/%1%2.wav").arg(set).arg(i));
        t->txtACDate_LostFocus(i);
        t->txtACTime_LostFocus(i);
    }
}

// Child mode: load a window on the folder and save the sets in `plan` ("A",
// "B"; "loop" alternates until killed, or for a minute). Prints every box.
int saveChild(const QString &folder, const QString &plan, int width)
{
    FakePlatform fp; // its own folder is left unused: a killed child would leave it behind
    fp.appDir.directory = folder;
    mdiAlarmClock w(fp.platform());
    w.MDIForm_Load();
    std::puts("ready");
    std::fflush(stdout);
    QElapsedTimer running;
    running.start();
    const bool loop = plan == QLatin1String("loop");
    for (int n = 0; loop ? running.elapsed() < 60000 : n < plan.size(); ++n) {
        fillSet(w.tableWindow(), loop ? QLatin1Char(n % 2 ? 'B' : 'A') : plan[n], width);
        w.tableWindow()->basSaveAlarmClocks();
        for (const QString &text : fp.messages.texts())
            std::printf("box: %s\n", qPrintable(QString(text).replace(QLatin1String("\r\n"), QLatin1String(" | "))));
        fp.messages.shown.clear();
    }
    return 0;
}

// Child mode: hold a lock on the database until stdin closes.
int lockChild(const QString &db, const QString &kind)
{
    TestDatabase c(db, QStringLiteral("holder"));
    const bool held = c.exec("BEGIN " + kind) && c.exec("UPDATE tblprogramsetting SET intColorPick = intColorPick");
    std::puts(held ? "held" : "failed");
    std::fflush(stdout);
    while (std::getchar() != EOF)
        continue;
    return 0;
}

// This program again, in a child mode; started, and past its first line.
// Its coverage counters go elsewhere: a child killed while writing them
// would leave the build's counters corrupt.
struct Child {
    QProcess p;
    QByteArray firstLine;
    QTemporaryDir counters;
    Child(const QStringList &args, const std::function<void()> &inChild = {})
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("GCOV_PREFIX"), counters.path());
        p.setProcessEnvironment(env);
        if (inChild)
            p.setChildProcessModifier(inChild);
        p.start(QCoreApplication::applicationFilePath(), args);
        if (p.waitForReadyRead(20000))
            firstLine = p.readLine().trimmed();
    }
    ~Child()
    {
        p.closeWriteChannel();
        if (!p.waitForFinished(20000))
            p.kill();
    }
    QByteArray rest()
    {
        p.waitForFinished(60000);
        return p.readAll();
    }
};

void expectSaveError(const FakeMessageBox &messages)
{
    QCOMPARE(messages.shown.size(), 1);
    QCOMPARE(messages.shown[0].title, QStringLiteral("ERROR"));
    QVERIFY2(messages.shown[0].text.startsWith(QStringLiteral("basSaveAlarmClocks\r\n")), qPrintable(messages.shown[0].text));
}

QByteArray wavHeader(quint32 dataBytes)
{
    QByteArray h("RIFF....WAVEfmt \x10\0\0\0\x01\0\x01\0\x40\x1f\0\0\x80\x3e\0\0\x02\0\x10\0data....", 44);
    const quint32 riff = dataBytes + 36;
    std::memcpy(h.data() + 4, &riff, 4);
    std::memcpy(h.data() + 40, &dataBytes, 4);
    return h;
}

} // namespace

class FaultsTest : public QObject {
    Q_OBJECT

private slots:
    // A file it may not write, or one another process holds locked: the save
    // through the Save button fails alone, and the window keeps the rows the
    // user typed. Under an exclusive lock the program still starts: each
    // statement waits for the lock, then fails in its own routine.
    void aSaveThatCannotWriteKeepsTheRows_data()
    {
        QTest::addColumn<QString>("fault");
        QTest::newRow("database read-only") << "file";
        QTest::newRow("folder read-only") << "folder";
        QTest::newRow("locked exclusively") << "EXCLUSIVE";
        QTest::newRow("write-locked") << "IMMEDIATE";
    }
    void aSaveThatCannotWriteKeepsTheRows()
    {
        QFETCH(QString, fault);
        if (fault == "EXCLUSIVE") {
            FakePlatform fp;
            Child holder({"--lock", fp.testDir.dbPath(), fault});
            QCOMPARE(holder.firstLine, QByteArray("held"));
            mdiAlarmClock w(fp.platform());
            w.MDIForm_Load();
            QVERIFY(!fp.messages.shown.isEmpty());
            for (const ShownMessage &box : fp.messages.shown)
                QVERIFY2(box.title == "ERROR" && box.text.endsWith("database is locked"), qPrintable(box.text));
        }
        LoadedMainWindow m;
        fillSet(m.t, QLatin1Char('A'), 20);
        m.t->cmdSave_Click();
        const QStringList before = storedRows(m.fp.testDir.dbPath());
        QCOMPARE(before.size(), 13);
        fillSet(m.t, QLatin1Char('B'), 20);
        if (fault.endsWith("LUSIVE") || fault == "IMMEDIATE") {
            Child holder({"--lock", m.fp.testDir.dbPath(), fault});
            QCOMPARE(holder.firstLine, QByteArray("held"));
            m.t->cmdSave_Click();
            QVERIFY(m.fp.messages.texts().value(0).contains(QStringLiteral("database is locked")));
        } else {
            // Root passes permission bits, so the thread also acts as "nobody" towards the file system.
            const QByteArray folder = QFile::encodeName(m.fp.testDir.path()), db = QFile::encodeName(m.fp.testDir.dbPath());
            chmod(folder, fault == "folder" ? 0555 : 0755);
            chmod(db, fault == "folder" ? 0666 : 0444);
            setfsgid(65534);
            setfsuid(65534);
            auto restore = qScopeGuard([&] { setfsuid(0), setfsgid(0), chmod(folder, 0700), chmod(db, 0644); });
            QFile probe(m.fp.testDir.filePath(fault == "folder" ? "probe" : "alarmclock.mdb"));
            if (probe.open(QIODevice::ReadWrite))
                QSKIP("write permission cannot be taken away here");
            m.t->cmdSave_Click();
        }
        expectSaveError(m.fp.messages);
        QCOMPARE(storedRows(m.fp.testDir.dbPath()), before);
        QVERIFY(m.t->bDataChanged && m.t->txtACDetails[12]->text().startsWith(QStringLiteral("set B row 12 ")));
    }

    // The save runs in a child that may not grow any file past the current
    // size of the database: the disk is full as far as it can tell.
    void aFullDiskFailsTheSaveAndKeepsTheRows()
    {
        LoadedMainWindow m;
        fillSet(m.t, QLatin1Char('A'), 20);
        m.t->basSaveAlarmClocks();
        const QString db = m.fp.testDir.dbPath();
        const QStringList before = storedRows(db);
        const rlim_t limit = rlim_t(QFileInfo(db).size() + 512);
        Child saver({"--save", m.fp.testDir.path(), "B", "3000"}, [limit] {
            const rlimit rl{limit, limit};
            setrlimit(RLIMIT_FSIZE, &rl);
            std::signal(SIGXFSZ, SIG_IGN);
        });
        QCOMPARE(saver.firstLine, QByteArray("ready"));
        const QByteArray output = saver.rest();
        QCOMPARE(saver.p.exitStatus(), QProcess::NormalExit);
        QCOMPARE(saver.p.exitCode(), 0);
        QVERIFY2(output.startsWith("box: basSaveAlarmClocks | ") && output.count("box: ") == 1, output.constData());
        QCOMPARE(storedRows(db), before);
        QCOMPARE(TestDatabase(db, "check").first("PRAGMA integrity_check"), QStringLiteral("ok"));
    }

    // ALARMCLOCK_KILLS sets the number of kills (scripts/reliability.sh runs hundreds).
    void killedWhileSavingLeavesOneWholeSet()
    {
        const int kills = qEnvironmentVariableIsSet("ALARMCLOCK_KILLS") ? qEnvironmentVariableIntValue("ALARMCLOCK_KILLS") : 20;
        TestAppDir dir;
        const QString db = dir.dbPath();
        QCOMPARE(Child({"--save", dir.path(), "A", "200"}).rest(), QByteArray());
        const QStringList setA = storedRows(db);
        QCOMPARE(Child({"--save", dir.path(), "B", "200"}).rest(), QByteArray());
        const QStringList setB = storedRows(db);
        QVERIFY(setA.size() == 13 && setB.size() == 13 && setA != setB);
        int midSave = 0;
        for (int k = 0; k < kills; ++k) {
            {
                Child saver({"--save", dir.path(), "loop", "200"});
                QCOMPARE(saver.firstLine, QByteArray("ready"));
                QTest::qSleep(QRandomGenerator::global()->bounded(200));
                saver.p.kill(); // SIGKILL
                QVERIFY(saver.p.waitForFinished(10000));
                QVERIFY2(!saver.p.readAll().contains("box:"), "a save failed before the kill");
            }
            // A journal left behind means the kill fell inside a transaction.
            if (QFileInfo(db + QStringLiteral("-journal")).size() > 0)
                ++midSave;
            const QStringList rows = storedRows(db);
            QVERIFY2(rows == setA || rows == setB, qPrintable(QStringLiteral("kill %1: %2 rows").arg(k).arg(rows.size())));
        }
        qInfo("%d kills survived, %d of them inside a save's transaction", kills, midSave);
    }

    void brokenSoundsPlayAndReturn_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("rowSound"); // the row names the file; otherwise the default alarm.wav
        QTest::newRow("alarm.wav cut in its header") << "alarm.wav" << wavHeader(16000).left(20) << false;
        QTest::newRow("alarm.wav cut mid-sample") << "alarm.wav" << wavHeader(16000) + QByteArray(101, '\x40') << false;
        QTest::newRow("row sound claims 4 GB") << "huge.wav" << wavHeader(0xFFFFFFF0u) + QByteArray(64, '\x10') << true;
        QTest::newRow("row sound not audio") << "notes.wav" << QByteArray("RIFF but only words\n").repeated(50) << true;
    }
    void brokenSoundsPlayAndReturn()
    {
        QFETCH(QString, file);
        QFETCH(QByteArray, bytes);
        QFETCH(bool, rowSound);
        PulseSoundPlayer player;
        LoadedMainWindow m([&](FakePlatform &fp) { QVERIFY(fp.testDir.writeBytes(file, bytes)); },
                           [&](FakePlatform &fp) { return withServices(fp, &player); });
        m.t->txtSoundOffTimes->setText(QStringLiteral("2"));
        m.t->txtWAVEFileNamePath[0]->setText(rowSound ? m.fp.testDir.filePath(file) : QString());
        m.setRow(0, QString(), QStringLiteral("14:06"));
        QElapsedTimer took;
        took.start();
        m.tickAt(QDateTime(QDate(2031, 9, 30), QTime(14, 6, 0)));
        // The clock moves on, so a real tick during the next play is no trip.
        m.fp.clock.set(QDateTime(QDate(2031, 9, 30), QTime(14, 6, 15)));
        m.t->tmrAlarmSound_Timer();
        QVERIFY2(took.elapsed() < 10000, qPrintable(QString::number(took.elapsed())));
        QVERIFY(!m.t->tmrAlarmSound->isActive());
        QVERIFY(m.t->chkSoundOnOff->isChecked());
    }

    // The browser gets the address as one argument and no shell sees it: a
    // stand-in xdg-open on a bare PATH records what arrived. The offscreen
    // platform opens nothing at all, so a child on linuxfb (which needs no
    // device for this) takes the desktop platforms' own launch path.
    void anAddressReachesTheBrowserAsOneWord()
    {
        QTemporaryDir bin;
        const QString args = bin.filePath(QStringLiteral("args"));
        const QString owned = bin.filePath(QStringLiteral("owned"));
        const QString address = QStringLiteral("x; touch ") + owned;
        QFile opener(bin.filePath(QStringLiteral("xdg-open")));
        QVERIFY(opener.open(QIODevice::WriteOnly));
        opener.write(QStringLiteral("#!/bin/sh\nprintf '%s\\n' \"$#\" \"$@\" > '%1.tmp' && /bin/mv '%1.tmp' '%1'\n").arg(args).toUtf8());
        opener.close();
        opener.setPermissions(QFileDevice::ExeOwner | QFileDevice::ReadOwner);
        QVERIFY(!DesktopUrlOpener().open(address));
        QProcess child;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        for (const char *name : {"BROWSER", "DEFAULT_BROWSER", "XDG_CURRENT_DESKTOP", "KDE_FULL_SESSION", "DESKTOP_SESSION"})
            env.remove(QString::fromLatin1(name));
        env.insert(QStringLiteral("PATH"), bin.path());
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("linuxfb"));
        env.insert(QStringLiteral("GCOV_PREFIX"), bin.path());
        child.setProcessEnvironment(env);
        child.start(QCoreApplication::applicationFilePath(), {"--open", address});
        QVERIFY(child.waitForFinished(20000));
        if (child.readAllStandardOutput().trimmed() != "opened")
            QSKIP("linuxfb cannot launch a browser here");
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(args), 10000);
        QFile arrived(args);
        QVERIFY(arrived.open(QIODevice::ReadOnly));
        const QList<QByteArray> lines = arrived.readAll().split('\n');
        QCOMPARE(lines.value(0), QByteArray("1"));
        QCOMPARE(QUrl::fromEncoded(lines.value(1)).toString(), address);
        QTest::qWait(200);
        QVERIFY(!QFile::exists(owned));
    }
};

int main(int argc, char **argv)
{
    if (argc == 5 && qstrcmp(argv[1], "--save") == 0) {
        QApplication app(argc, argv);
        return saveChild(QString::fromLocal8Bit(argv[2]), QString::fromLatin1(argv[3]), atoi(argv[4]));
    }
    if (argc == 3 && qstrcmp(argv[1], "--open") == 0) {
        QApplication app(argc, argv);
        const bool opened = DesktopUrlOpener().open(QString::fromLocal8Bit(argv[2]));
        std::puts(opened ? "opened" : "refused");
        std::fflush(stdout); // a leak check at exit may end the process without flushing
        return 0;
    }
    if (argc == 4 && qstrcmp(argv[1], "--lock") == 0) {
        QCoreApplication app(argc, argv);
        return lockChild(QString::fromLocal8Bit(argv[2]), QString::fromLatin1(argv[3]));
    }
    QApplication app(argc, argv);
    FaultsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_faults.moc"
