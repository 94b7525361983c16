#include "data/Database.h"
#include "data/JetSql.h"
#include "data/ProgramSettings.h"
#include "fakes/FakePlatform.h"
#include "fakes/TestDatabase.h"
#include "rules/AppError.h"

#include <QFile>
#include <QElapsedTimer>
#include <QTest>

struct Fixture {
    FakePlatform fp;
    Database db{fp.appDir, fp.messages, fp.end};
    ProgramSettings settings{db};

    // Behind the program's back, on a connection of the test's own.
    bool sql(const QString &statement) { return TestDatabase(fp.testDir.dbPath()).exec(statement); }
    QStringList rows(const QString &query) { return TestDatabase(fp.testDir.dbPath()).rows(query); }
};

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

    void everyMenuWriterRunsAsWritten_data()
    {
        QTest::addColumn<QString>("statement");
        QTest::addColumn<QString>("column");
        QTest::addColumn<QString>("stored");
        QTest::newRow("True") << "UPDATE tblprogramsetting set booSound = True" << "booSound" << "1";
        QTest::newRow("False") << "UPDATE tblprogramsetting set booTimeRow = False" << "booTimeRow" << "0";
        QTest::newRow("number") << "UPDATE tblprogramsetting set intColorPick = 2;" << "intColorPick" << "2";
    }
    void everyMenuWriterRunsAsWritten()
    {
        QFETCH(QString, statement);
        QFETCH(QString, column);
        QFETCH(QString, stored);
        Fixture f;
        // Two records: with no WHERE clause both change alike.
        QVERIFY(f.sql("INSERT INTO tblprogramsetting (strprogramname) VALUES ('second')"));
        f.settings.execute(statement);
        QCOMPARE(f.rows("SELECT " + column + " FROM tblprogramsetting"), QStringList(2, stored));
    }

    // Any non-zero Yes/No is on and Null is off; only a missing record gives the defaults.
    void readersOfTheSettingsRecord()
    {
        Fixture f;
        QVERIFY(f.sql("UPDATE tblprogramsetting SET booTimeRow = 5, booAlarmPopupForm = -1, booSound = NULL, "
                      "booMinimizeToTray = 0, booDonotAskAnyMore = NULL, intColorPick = NULL"));
        const auto s = f.settings.readSwitches();
        QVERIFY(s && s->timeRow && s->alarmPopupForm && !s->sound && !s->minimizeToTray);
        QVERIFY(!f.settings.readDonotAskAnyMore());
        QCOMPARE(f.settings.intReturnColorPicked(), qint16(0));

        QVERIFY(f.sql("DELETE FROM tblprogramsetting"));
        QVERIFY(!f.settings.readSwitches());
        QVERIFY(!f.settings.readSoundAlarmTimes());
        QCOMPARE(f.settings.subReturnAlarmclockName(), "Quorvel Alarm Clock");
        QCOMPARE(f.settings.subReturnAlarmclockVersion(), "1.00");
        QCOMPARE(f.settings.intReturnColorPicked(), qint16(0));
        QVERIFY(!f.settings.readDonotAskAnyMore());
        QVERIFY(f.fp.messages.shown.isEmpty());
    }

    void recordsetsReadByNameAndQueriesAreNotEditable()
    {
        Fixture f;
        Recordset rs = f.db.MyDB().openRecordset("SELECT booSound, STRPROGRAMNAME FROM tblprogramsetting");
        QVERIFY(!rs.eof());
        QCOMPARE(rs.field("boosound").typeId(), QMetaType::Bool);
        QCOMPARE(rs.field("booSound").toBool(), true);
        QCOMPARE(rs.field("strprogramname").toString(), "Quorvel Alarm Clock");
        try {
            rs.field("noSuchColumn");
            QFAIL("an unknown column must raise");
        } catch (const AppError &e) {
            QCOMPARE(e.number, 3265L);
        }
        QVERIFY_THROWS_EXCEPTION(AppError, rs.edit());
        QVERIFY_THROWS_EXCEPTION(AppError, f.db.MyDB().openTable("tblprogramsetting; DROP TABLE x"));
        rs.moveNext();
        QVERIFY(rs.eof());
    }

    void tableEditsAndAppendsStoreTextExactly()
    {
        Fixture f;
        const QString hostile = "'); DROP TABLE tblalarmclock; -- \"quoted\" \\ é ✓";
        {
            Recordset rs = f.db.MyDB().openTable("tblalarmclock");
            for (int i = 0; i < 3; ++i) {
                rs.addNew();
                rs.setField("stralarmclock", hostile + QString::number(i));
                rs.setField("booRepeat", i == 1);
                rs.update();
            }
            rs.close();
        }
        QCOMPARE(f.rows("SELECT stralarmclock, booRepeat, strURL FROM tblalarmclock ORDER BY lngalarmclockid"),
                 QStringList({hostile + "0|0|NULL", hostile + "1|1|NULL", hostile + "2|0|NULL"}));

        // Editing the first settings record leaves a second one alone.
        QVERIFY(f.sql("INSERT INTO tblprogramsetting (strprogramname) VALUES ('second')"));
        {
            Recordset rs = f.db.MyDB().openTable("tblprogramsetting");
            rs.moveFirst();
            rs.edit();
            rs.setField("strprogramname", hostile);
            rs.update();
        }
        QCOMPARE(f.rows("SELECT strprogramname FROM tblprogramsetting ORDER BY lngprogramsettingid"),
                 QStringList({hostile, "second"}));
    }

    // A file another program holds locked is no broken file: the statement
    // waits for it and then fails in its routine. A missing one ends the
    // program with MyDB's two boxes, and is never created.
    void myDbEndsOnAMissingFileButNotALockedOne()
    {
        Fixture f;
        TestDatabase peek(f.fp.testDir.dbPath());
        QVERIFY(peek.exec("BEGIN EXCLUSIVE"));
        QVERIFY(peek.exec("UPDATE tblprogramsetting SET booSound = 0"));
        DbHandle busy = f.db.MyDB();
        QElapsedTimer waited;
        waited.start();
        try {
            busy.openRecordset("SELECT booSound FROM tblprogramsetting");
            QFAIL("read through another program's exclusive lock");
        } catch (const AppError &e) {
            QCOMPARE(e.description, QStringLiteral("database is locked"));
        }
        QVERIFY2(waited.elapsed() >= 1900 && waited.elapsed() < 3000, qPrintable(QString::number(waited.elapsed())));
        QVERIFY(f.fp.messages.shown.isEmpty());
        QVERIFY(peek.exec("ROLLBACK"));

        QVERIFY(f.fp.testDir.remove("alarmclock.mdb"));
        QVERIFY_THROWS_EXCEPTION(ProgramEnded, f.db.MyDB());
        QVERIFY(!QFile::exists(f.fp.testDir.dbPath()));
        QCOMPARE(f.fp.messages.shown.size(), 2);
        QVERIFY(f.fp.messages.shown[0].text.startsWith("MyDB ERROR,\r\nFILE PATH:\r\n"));
    }

    void aReadOnlyFileOpensButRefusesWrites()
    {
        if (geteuid() == 0)
            QSKIP("root ignores file permissions");
        Fixture f;
        QFile::setPermissions(f.fp.testDir.dbPath(), QFile::ReadOwner);
        QCOMPARE(f.settings.subReturnAlarmclockName(), "Quorvel Alarm Clock");
        QVERIFY_THROWS_EXCEPTION(AppError, f.settings.execute("UPDATE tblprogramsetting set booSound = False"));
    }

    void aFailingReaderReportsUnderItsOwnName()
    {
        Fixture f;
        QVERIFY(f.sql("ALTER TABLE tblprogramsetting RENAME TO gone"));
        QCOMPARE(f.settings.subReturnAlarmclockName(), QString());
        QCOMPARE(f.settings.intReturnColorPicked(), qint16(0));
        QCOMPARE(f.fp.messages.texts().size(), 2);
        QVERIFY(f.fp.messages.texts()[0].startsWith("subReturnAlarmclockName\r\n1\r\n"));
        QVERIFY(f.fp.messages.texts()[1].startsWith("intReturnColorPicked\r\n"));
        QCOMPARE(f.fp.messages.shown[1].title, "ERROR");
        QVERIFY_THROWS_EXCEPTION(AppError, f.settings.readSwitches());
    }
};

QTEST_GUILESS_MAIN(DatabaseTest)
#include "tst_database.moc"
