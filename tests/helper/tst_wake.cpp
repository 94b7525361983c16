// The wake-up helper: what it takes on its input, and the program itself
// without the right to wake the computer, with it, and when its input ends.

#include "WakeCommand.h"
#include "platform/qt/HelperWakeAlarm.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

namespace {

// The helper run as nobody, told `lines`; its answer, one line each.
QStringList answers(const QString &helper, const QByteArray &lines)
{
    QProcess p;
    p.start("runuser", {"-u", "nobody", "--", helper});
    p.write(lines);
    p.closeWriteChannel();
    return p.waitForFinished(5000) ? QString::fromUtf8(p.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts) : QStringList("hung");
}

// Seconds to the wake-up a running copy of `helper` holds (0 for none), or -1 when none runs.
int heldWakeUp(const QString &helper)
{
    for (const QString &pid : QDir("/proc").entryList({"[0-9]*"}, QDir::Dirs)) {
        if (QFile::symLinkTarget("/proc/" + pid + "/exe") != helper)
            continue;
        for (const QFileInfo &fd : QDir("/proc/" + pid + "/fdinfo").entryInfoList(QDir::Files)) {
            QFile info(fd.filePath());
            const QString text = info.open(QIODevice::ReadOnly) ? info.readAll() : QString();
            const int at = text.indexOf("it_value: (");
            if (text.contains("clockid: 8") && at >= 0) // CLOCK_REALTIME_ALARM
                return text.mid(at + 11).section(u',', 0, 0).toInt();
        }
    }
    return -1;
}

} // namespace

class WakeTest : public QObject {
    Q_OBJECT

private slots:
    void commands()
    {
        const long long now = 2000000000;
        const struct { const char *line; WakeCommand::Kind kind; long long at; } cases[] = {
            {"ARM 2000000060", WakeCommand::Arm, 2000000060}, {"DISARM", WakeCommand::Disarm, 0},
            {"ARM 2034560000", WakeCommand::Arm, 2034560000}, // 400 days ahead
            {"ARM 2034560001", WakeCommand::Refused, 0}, {"ARM 2000000000", WakeCommand::Refused, 0}, // the past
            {"ARM -5", WakeCommand::Refused, 0}, {"ARM +2000000060", WakeCommand::Refused, 0}, {"ARM 2e9", WakeCommand::Refused, 0},
            {"ARM 0x77359400", WakeCommand::Refused, 0}, {"ARM 99999999999999999999999", WakeCommand::Refused, 0},
            {"ARM ", WakeCommand::Refused, 0}, {"ARM  2000000060", WakeCommand::Refused, 0}, {"arm 2000000060", WakeCommand::Refused, 0},
            {"DISARM now", WakeCommand::Refused, 0}, {"", WakeCommand::Refused, 0}};
        for (const auto &c : cases) {
            const WakeCommand command = parseWakeCommand(c.line, now);
            QVERIFY2(command.kind == c.kind && command.at == c.at && command.reason.empty() == (c.kind != WakeCommand::Refused), c.line);
        }
    }

    // The helper run as nobody is refused without cap_wake_alarm; a copy given it (by root, as the
    // package's installation does) obeys, and its input closed, it ends. The program says why it
    // cannot wake the computer; where it can, the helper holds the next alarm, follows it, and ends
    // (letting the wake-up go) when switched off and with the program.
    void theHelperAndTheProgram()
    {
        if (geteuid() != 0)
            QSKIP("setting a capability needs root");
        QTemporaryDir dir;
        QFile::setPermissions(dir.path(), QFile::permissions(dir.path()) | QFile::ExeOther);
        const QString copy = dir.filePath("quorvel-alarmclock-wake");
        QVERIFY(QFile::copy(WAKE_HELPER, copy));
        const QByteArray arm = "ARM " + QByteArray::number(QDateTime::currentSecsSinceEpoch() + 3600) + "\nARM 1\nDISARM\n";
        QVERIFY(answers(copy, arm).value(0).startsWith("ERR cannot set a wake-up"));
        QVERIFY(HelperWakeAlarm(copy, false).unavailableReason().contains("no clock"));
        QVERIFY(HelperWakeAlarm(dir.filePath("none"), true).unavailableReason().contains("missing"));
        QVERIFY(HelperWakeAlarm(copy, true).unavailableReason().contains("cap_wake_alarm"));
        QCOMPARE(QProcess::execute("setcap", {"cap_wake_alarm+ep", copy}), 0);
        QCOMPARE(answers(copy, arm), QStringList({"OK", "ERR time not in the future", "OK"}));

        auto wake = std::make_unique<HelperWakeAlarm>(copy, true);
        QCOMPARE(wake->unavailableReason(), QString());
        const QDateTime now = QDateTime::currentDateTime();
        wake->setNextAlarm(now.addSecs(3600));
        QTest::qWait(300);
        QCOMPARE(heldWakeUp(copy), -1); // not asked for: no helper
        wake->setEnabled(true);
        QTRY_VERIFY(qAbs(heldWakeUp(copy) - 3600) <= 2);
        wake->setNextAlarm(now.addSecs(7200));
        QTRY_VERIFY(qAbs(heldWakeUp(copy) - 7200) <= 2);
        wake->setEnabled(false);
        QTRY_COMPARE(heldWakeUp(copy), -1);
        wake->setEnabled(true);
        QTRY_VERIFY(qAbs(heldWakeUp(copy) - 7200) <= 2);
        wake.reset();
        QCOMPARE(heldWakeUp(copy), -1);
    }
};

QTEST_MAIN(WakeTest)
#include "tst_wake.moc"
