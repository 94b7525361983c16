// The connection routines, the record reader and writer, and the settings
// readers. The shipped file's columns and defaults are read by every table
// and shell test, which copy it.

#include "data/Database.h"
#include "data/JetSql.h"
#include "data/ProgramSettings.h"
#include "fakes/FakePlatform.h"
#include "fakes/TestDatabase.h"
#include "rules/AppError.h"

#include <QElapsedTimer>
#include <QTest>

namespace {

struct Fixture {
    FakePlatform fp;
    Database db{fp.appDir, fp.messages, fp.end};
    ProgramSettings settings{db};
    // Behind the program's back, on a connection of the test's own.
    bool sql(const QString &statement) { return TestDatabase(fp.testDir.dbPath()).exec(statement); }
};

// The error the call raises, or number 0 when it raises none.
template <typename Call>
AppError raised(Call call)
{
    try {
        call();
    } catch (const AppError &e) {
        return e;
    }
    return AppError(0, QString());
}

} // namespace

class DatabaseTest : public QObject {
    Q_OBJECT

private slots:
    // Any non-zero Yes/No is on and Null is off; only a missing record gives the defaults.
    void readersOfTheSettingsRecord()
    {
        Fixture f;
        QVERIFY(f.sql("UPDATE tblprogramsetting SET booTimeRow = 5, booAlarmPopupForm = NULL, booSound = -1, "
                      "booMinimizeToTray = 0, booDonotAskAnyMore = NULL, intColorPick = NULL, intSoundAlarmTimes = 9"));
        const auto s = f.settings.readSwitches();
        QVERIFY(s && s->timeRow && !s->alarmPopupForm && s->sound && !s->minimizeToTray);
        QVERIFY(!f.settings.readDonotAskAnyMore() && f.settings.readSoundAlarmTimes() == 9 && f.settings.intReturnColorPicked() == 0);
        QVERIFY(f.sql("DELETE FROM tblprogramsetting"));
        QVERIFY(!f.settings.readSwitches() && !f.settings.readSoundAlarmTimes() && !f.settings.readDonotAskAnyMore());
        QCOMPARE(f.settings.subReturnAlarmclockName() + "|" + f.settings.subReturnAlarmclockVersion(), "Quorvel Alarm Clock|1.00");
        QVERIFY(f.settings.intReturnColorPicked() == 0 && f.fp.messages.shown.isEmpty());
    }

    // Jet's statements run with their SQLite meaning; a recordset reads by any
    // case of the column's name, and edits only its current record.
    void statementsAndRecordsets()
    {
        QStringList statements;
        for (const char *jet : {"  DELETE   *   FROM tblAlarmClock", "deletes * from t", "delete * fromage", "delete* from t", "SELECT * FROM t;"})
            statements << jetToSqlite(jet);
        QCOMPARE(statements.join(u'|'), "DELETE FROM tblAlarmClock|deletes * from t|delete * fromage|delete* from t|SELECT * FROM t;");
        Fixture f;
        Recordset rs = f.db.MyDB().openRecordset("SELECT booSound, STRPROGRAMNAME FROM tblprogramsetting");
        QVERIFY(rs.field("boosound").typeId() == QMetaType::Bool && rs.field("booSound").toBool());
        QCOMPARE(rs.field("strprogramname").toString(), "Quorvel Alarm Clock");
        QCOMPARE(raised([&] { rs.field("noSuchColumn"); }).number, 3265L);
        rs.moveNext();
        QVERIFY(rs.eof());
        QCOMPARE(raised([&] { rs.moveNext(); }).number, 3021L);
        // Editing the first settings record leaves a second one alone; text
        // goes in as it is (the table tests save every kind of text).
        const QString hostile = "'); DROP TABLE tblalarmclock; -- \"quoted\" \\ é ✓";
        QVERIFY(f.sql("INSERT INTO tblprogramsetting (strprogramname) VALUES ('second')"));
        Recordset settings = f.db.MyDB().openTable("tblprogramsetting");
        settings.moveFirst();
        settings.edit();
        settings.setField("strprogramname", hostile);
        settings.update();
        QCOMPARE(TestDatabase(f.fp.testDir.dbPath()).rows("SELECT strprogramname FROM tblprogramsetting ORDER BY lngprogramsettingid"), QStringList({hostile, "second"}));
    }

    // A file another program holds locked is no broken file: the statement
    // waits for it, then fails in its routine, and the program goes on.
    void aLockedFileIsWaitedForThenFails()
    {
        Fixture f;
        TestDatabase peek(f.fp.testDir.dbPath());
        QVERIFY(peek.exec("BEGIN EXCLUSIVE") && peek.exec("UPDATE tblprogramsetting SET booSound = 0"));
        QElapsedTimer waited;
        waited.start();
        QCOMPARE(raised([&] { f.db.MyDB().openRecordset("SELECT booSound FROM tblprogramsetting"); }).description, "database is locked");
        QVERIFY2(waited.elapsed() >= 1900 && waited.elapsed() < 3000, qPrintable(QString::number(waited.elapsed())));
        QVERIFY(peek.exec("ROLLBACK"));
        f.db.MyDBClose(); // fine again
        QVERIFY(f.fp.messages.shown.isEmpty());
    }
};

QTEST_GUILESS_MAIN(DatabaseTest)
#include "tst_database.moc"
