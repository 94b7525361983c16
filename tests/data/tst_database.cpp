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
    QStringList rows(const QString &query) { return TestDatabase(fp.testDir.dbPath()).rows(query); }
};

} // namespace

class DatabaseTest : public QObject {
    Q_OBJECT

private slots:
    void jetStatementsGetTheirSqliteMeaning_data()
    {
        QTest::addColumn<QString>("jet");
        QTest::addColumn<QString>("sqlite");
        QTest::newRow("delete star") << "delete * from tblalarmclock;" << "DELETE FROM tblalarmclock;";
        QTest::newRow("upper case, blanks") << "  DELETE   *   FROM tblAlarmClock" << "DELETE FROM tblAlarmClock";
        QTest::newRow("star elsewhere") << "SELECT * FROM t ORDER BY id;" << "SELECT * FROM t ORDER BY id;";
        QTest::newRow("deletes is not delete") << "deletes * from t" << "deletes * from t";
    }
    void jetStatementsGetTheirSqliteMeaning()
    {
        QFETCH(QString, jet);
        QFETCH(QString, sqlite);
        QCOMPARE(jetToSqlite(jet), sqlite);
    }

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
        // A Null is reported, never defaulted.
        QVERIFY(f.sql("INSERT INTO tblprogramsetting (strVersion) VALUES (NULL)"));
        QCOMPARE(f.settings.subReturnAlarmclockVersion(), QString());
        QCOMPARE(f.fp.messages.texts(), QStringList("subReturnAlarmclockVersion\r\n94\r\nInvalid use of Null"));
        // A failing reader reports under its own name; the others leave it to their caller.
        QVERIFY(f.sql("ALTER TABLE tblprogramsetting RENAME TO gone"));
        f.fp.messages.shown.clear();
        QVERIFY(f.settings.subReturnAlarmclockName().isEmpty() && f.settings.intReturnColorPicked() == 0);
        QCOMPARE(f.fp.messages.texts(), QStringList({"subReturnAlarmclockName\r\n1\r\nno such table: tblprogramsetting",
                                                     "intReturnColorPicked\r\n1\r\nno such table: tblprogramsetting"}));
        QCOMPARE(f.fp.messages.shown[1].title, "ERROR");
        QVERIFY_THROWS_EXCEPTION(AppError, f.settings.readSwitches());
        QVERIFY_THROWS_EXCEPTION(AppError, f.settings.readDonotAskAnyMore());
    }

    void recordsetsReadByNameAndEditTheCurrentRecord()
    {
        Fixture f;
        Recordset rs = f.db.MyDB().openRecordset("SELECT booSound, STRPROGRAMNAME FROM tblprogramsetting");
        QVERIFY(rs.field("boosound").typeId() == QMetaType::Bool && rs.field("booSound").toBool());
        QCOMPARE(rs.field("strprogramname").toString(), "Quorvel Alarm Clock");
        try {
            rs.field("noSuchColumn");
            QFAIL("an unknown column must raise");
        } catch (const AppError &e) {
            QCOMPARE(e.number, 3265L);
        }
        rs.moveNext();
        QVERIFY(rs.eof());
        QVERIFY_THROWS_EXCEPTION(AppError, rs.moveNext());
        // Editing the first settings record leaves a second one alone; text
        // goes in as it is (the table tests save every kind of text).
        const QString hostile = "'); DROP TABLE tblalarmclock; -- \"quoted\" \\ é ✓";
        QVERIFY(f.sql("INSERT INTO tblprogramsetting (strprogramname) VALUES ('second')"));
        Recordset settings = f.db.MyDB().openTable("tblprogramsetting");
        settings.moveFirst();
        settings.edit();
        settings.setField("strprogramname", hostile);
        settings.update();
        QCOMPARE(f.rows("SELECT strprogramname FROM tblprogramsetting ORDER BY lngprogramsettingid"), QStringList({hostile, "second"}));
    }

    // A file another program holds locked is no broken file: the statement
    // waits for it, then fails in its routine. A missing one ends the
    // program with MyDB's two boxes, and is never created.
    void myDbEndsOnAMissingFileButNotALockedOne()
    {
        Fixture f;
        TestDatabase peek(f.fp.testDir.dbPath());
        QVERIFY(peek.exec("BEGIN EXCLUSIVE") && peek.exec("UPDATE tblprogramsetting SET booSound = 0"));
        QElapsedTimer waited;
        waited.start();
        try {
            f.db.MyDB().openRecordset("SELECT booSound FROM tblprogramsetting");
            QFAIL("read through another program's exclusive lock");
        } catch (const AppError &e) {
            QCOMPARE(e.description, QStringLiteral("database is locked"));
        }
        QVERIFY2(waited.elapsed() >= 1900 && waited.elapsed() < 3000, qPrintable(QString::number(waited.elapsed())));
        QVERIFY(f.fp.messages.shown.isEmpty());
        QVERIFY(peek.exec("ROLLBACK"));
        f.db.MyDBClose(); // fine again
        QVERIFY(f.fp.testDir.remove("alarmclock.mdb"));
        QVERIFY_THROWS_EXCEPTION(ProgramEnded, f.db.MyDBClose());
        QVERIFY(!QFile::exists(f.fp.testDir.dbPath()) && f.fp.messages.shown.size() == 2);
        QVERIFY(f.fp.messages.shown[0].text.startsWith("MyDB ERROR,\r\nFILE PATH:\r\n" + f.fp.testDir.dbPath() + "\r\nError #"));
    }
};

QTEST_GUILESS_MAIN(DatabaseTest)
#include "tst_database.moc"
