// A kill in the middle of a save: the table always holds the rows of one
// whole save, the old ones or the new. (A save that fails on its own is
// the table tests' business.)

#include "fakes/LoadedMainWindow.h"

#include <QApplication>
#include <QProcess>
#include <QRandomGenerator>
#include <QtTest>

#include <cstdio>

namespace {

QStringList storedRows(const QString &db)
{
    return TestDatabase(db, QStringLiteral("peek-rows")).rows(
        "SELECT dtalarmclockmmmddyyyy, dtalarmclockhhnn, stralarmclock, strURL, strWAVEFileNamePath, booRepeat "
        "FROM tblalarmclock ORDER BY lngalarmclockid");
}

// Set A or B, every row distinct from the other set's.
void fillSet(frmAlarmClock *t, QChar set)
{
    for (int i = 0; i < 13; ++i) {
        t->txtACTime[i]->setText(QStringLiteral("%1:%2").arg(i + 6, 2, 10, QLatin1Char('0')).arg(set == QLatin1Char('A') ? 0 : 30));
        t->txtACDetails[i]->setText(QStringLiteral("set %1 row %2 ").arg(set).arg(i).leftJustified(200, set));
    }
}

// Child mode: load a window on the folder and save the sets in `plan` ("A",
// "B"; "loop" alternates until killed, or for a minute). Prints every box.
int saveChild(const QString &folder, const QString &plan)
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
        fillSet(w.tableWindow(), loop ? QLatin1Char(n % 2 ? 'B' : 'A') : plan[n]);
        w.tableWindow()->basSaveAlarmClocks();
        for (const QString &text : fp.messages.texts())
            std::printf("box: %s\n", qPrintable(QString(text).replace(QLatin1String("\r\n"), QLatin1String(" | "))));
        fp.messages.shown.clear();
    }
    return 0;
}

// This program again, saving in a child; started, and past its first line.
// Its coverage counters go elsewhere: a child killed while writing them
// would leave the build's counters corrupt.
struct Child {
    QProcess p;
    QByteArray firstLine;
    QTemporaryDir counters;
    Child(const QString &folder, const QString &plan)
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("GCOV_PREFIX"), counters.path());
        p.setProcessEnvironment(env);
        p.start(QCoreApplication::applicationFilePath(), {"--save", folder, plan});
        if (p.waitForReadyRead(20000))
            firstLine = p.readLine().trimmed();
    }
    ~Child()
    {
        if (!p.waitForFinished(20000))
            p.kill();
    }
    QByteArray rest()
    {
        p.waitForFinished(60000);
        return p.readAll();
    }
};

} // namespace

class FaultsTest : public QObject {
    Q_OBJECT

private slots:
    // ALARMCLOCK_KILLS sets the number of kills (scripts/reliability.sh runs hundreds).
    void killedWhileSavingLeavesOneWholeSet()
    {
        const int kills = qEnvironmentVariableIsSet("ALARMCLOCK_KILLS") ? qEnvironmentVariableIntValue("ALARMCLOCK_KILLS") : 20;
        TestAppDir dir;
        const QString db = dir.dbPath();
        QCOMPARE(Child(dir.path(), "A").rest(), QByteArray());
        const QStringList setA = storedRows(db);
        QCOMPARE(Child(dir.path(), "B").rest(), QByteArray());
        const QStringList setB = storedRows(db);
        QVERIFY(setA.size() == 13 && setB.size() == 13 && setA != setB);
        int midSave = 0;
        for (int k = 0; k < kills; ++k) {
            {
                Child saver(dir.path(), "loop");
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
};

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    if (argc == 4 && qstrcmp(argv[1], "--save") == 0)
        return saveChild(QString::fromLocal8Bit(argv[2]), QString::fromLatin1(argv[3]));
    FaultsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_faults.moc"
