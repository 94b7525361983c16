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
        const char *notDecimal = "not a decimal time", *past = "time not in the future", *unknown = "unknown command";
        const struct { const char *line, *taken; } cases[] = {
            {"ARM 2000000060", "ARM 2000000060"}, {"DISARM", "DISARM"},
            {"ARM 2034560000", "ARM 2034560000"}, {"ARM 2034560001", "time more than 400 days ahead"}, // 400 days
            {"ARM 2000000000", past}, {"ARM -5", notDecimal}, {"ARM +2000000060", notDecimal}, {"ARM 2e9", notDecimal},
            {"ARM 0x77359400", notDecimal}, {"ARM 18446744075709551676", notDecimal}, // 2^64 + 2000000060
            {"ARM ", notDecimal}, {"ARM  2000000060", notDecimal}, {"arm 2000000060", unknown}, {"DISARM now", unknown}, {"", unknown}};
        for (const auto &c : cases) {
            const WakeCommand command = parseWakeCommand(c.line, 2000000000);
            const std::string taken = command.kind == WakeCommand::Arm ? "ARM " + std::to_string(command.at)
                                      : command.kind == WakeCommand::Disarm ? "DISARM" : command.reason;
            QCOMPARE(taken, std::string(c.taken));
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
