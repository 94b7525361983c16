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

// Child mode: load a window on the folder and save set A or B once, or
// ("loop") the two in turn until killed, or for a minute. Every row of a set
// differs from the other set's. Prints every box.
int saveChild(const QString &folder, const QString &plan)
{
    FakePlatform fp; // its own folder is left unused: a killed child would leave it behind
    fp.appDir.directory = folder;
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ); // each line reaches the parent before any kill
    fp.messages.onShow = [](const ShownMessage &m) { std::printf("box: %s\n", qPrintable(m.text.simplified())); };
    mdiAlarmClock w(fp.platform());
    w.MDIForm_Load();
    std::puts("ready");
    const QDeadlineTimer minute(60000);
    for (int n = 0; n == 0 || (plan == QLatin1String("loop") && !minute.hasExpired()); ++n) {
        const QChar set = plan == QLatin1String("loop") ? QLatin1Char("AB"[n % 2]) : plan[0];
        for (int i = 0; i < 13; ++i) {
            w.tableWindow()->txtACTime[i]->setText(QStringLiteral("%1:%2").arg(i + 6, 2, 10, QLatin1Char('0')).arg(set == QLatin1Char('A') ? 0 : 30));
            w.tableWindow()->txtACDetails[i]->setText(QStringLiteral("set %1 row %2 ").arg(set).arg(i).leftJustified(200, set));
        }
        w.tableWindow()->basSaveAlarmClocks();
    }
    return 0;
}

// This program again, saving in a child (killed, if still running, when it
// goes). Its coverage counters go elsewhere: a child killed while writing
// them would leave the build's counters corrupt.
struct Child {
    QTemporaryDir counters;
    QProcess p;
    Child(const QString &folder, const QString &plan)
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("GCOV_PREFIX"), counters.path());
        p.setProcessEnvironment(env);
        p.start(QCoreApplication::applicationFilePath(), {"--save", folder, plan});
    }
    QByteArray output()
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
        const auto storedRows = [&] {
            return TestDatabase(db, QStringLiteral("peek-rows")).rows("SELECT dtalarmclockmmmddyyyy, dtalarmclockhhnn, stralarmclock, strURL, "
                                                                      "strWAVEFileNamePath, booRepeat FROM tblalarmclock ORDER BY lngalarmclockid");
        };
        QCOMPARE(Child(dir.path(), "A").output(), QByteArray("ready\n"));
        const QStringList setA = storedRows();
        QCOMPARE(Child(dir.path(), "B").output(), QByteArray("ready\n"));
        const QStringList setB = storedRows();
        QVERIFY(setA.size() == 13 && setB.size() == 13 && setA != setB);
        int midSave = 0;
        for (int k = 0; k < kills; ++k) {
            Child saver(dir.path(), "loop");
            QVERIFY(saver.p.waitForReadyRead(20000) && saver.p.readLine() == "ready\n");
            QTest::qSleep(QRandomGenerator::global()->bounded(200));
            saver.p.kill(); // SIGKILL
            QVERIFY(saver.p.waitForFinished(10000));
            QVERIFY2(!saver.p.readAll().contains("box:"), "a save failed before the kill");
            // A journal left behind means the kill fell inside a transaction.
            if (QFileInfo(db + QStringLiteral("-journal")).size() > 0)
                ++midSave;
            const QStringList rows = storedRows();
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
