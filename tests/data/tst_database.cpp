// The database layer against a private copy of the shipped file: statement
// translation, connections, recordsets and every settings reader and writer.

#include "data/Database.h"
#include "data/JetSql.h"
#include "data/ProgramSettings.h"
#include "fakes/FakePlatform.h"
#include "platform/AppError.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTest>

namespace {

// A connection of the test's own, to look behind the program's back.
class Peek {
public:
    explicit Peek(const QString &path)
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("peek"));
        db.setDatabaseName(path);
        db.open();
    }
    ~Peek() { QSqlDatabase::removeDatabase(QStringLiteral("peek")); }
    QVariant value(const QString &sql)
    {
        QSqlQuery q(QSqlDatabase::database(QStringLiteral("peek")));
        if (!q.exec(sql) || !q.next())
            return QVariant(QStringLiteral("<no row>"));
        return q.value(0);
    }
    bool exec(const QString &sql)
    {
        QSqlQuery q(QSqlDatabase::database(QStringLiteral("peek")));
        return q.exec(sql);
    }
};

struct Fixture {
    FakePlatform fp;
    Database db{fp.appDir, fp.messages, fp.end};
    ProgramSettings settings{db};
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
        QTest::newRow("plain delete") << "DELETE FROM t" << "DELETE FROM t";
        QTest::newRow("update with True") << "UPDATE tblprogramsetting set booSound = True"
                                          << "UPDATE tblprogramsetting set booSound = True";
        QTest::newRow("star elsewhere") << "SELECT * FROM tblalarmclock ORDER BY lngalarmclockid;"
                                        << "SELECT * FROM tblalarmclock ORDER BY lngalarmclockid;";
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
        QTest::addColumn<QVariant>("stored");
        for (const char *col : {"booTimeRow", "booAlarmPopupForm", "booSound", "booMinimizeToTray", "booDonotAskAnyMore"}) {
            QTest::addRow("%s True", col) << QStringLiteral("UPDATE tblprogramsetting set %1 = True").arg(QLatin1String(col))
                                          << QString::fromLatin1(col) << QVariant(1);
            QTest::addRow("%s False", col) << QStringLiteral("UPDATE tblprogramsetting set %1 = False").arg(QLatin1String(col))
                                           << QString::fromLatin1(col) << QVariant(0);
        }
        for (int n : {0, 1, 2})
            QTest::addRow("colour %d", n) << QStringLiteral("UPDATE tblprogramsetting set intColorPick = %1;").arg(n)
                                          << QStringLiteral("intColorPick") << QVariant(n);
        QTest::newRow("sound times") << QStringLiteral("UPDATE tblprogramsetting set intSoundAlarmTimes = 4")
                                     << QStringLiteral("intSoundAlarmTimes") << QVariant(4);
    }
    void everyMenuWriterRunsAsWritten()
    {
        QFETCH(QString, statement);
        QFETCH(QString, column);
        QFETCH(QVariant, stored);
        Fixture f;
        // Two records: with no WHERE clause both change alike.
        {
            Peek peek(f.fp.testDir.dbPath());
            QVERIFY(peek.exec("INSERT INTO tblprogramsetting (strprogramname) VALUES ('second')"));
        }
        f.settings.execute(statement);
        Peek peek(f.fp.testDir.dbPath());
        QCOMPARE(peek.value(QStringLiteral("SELECT count(DISTINCT %1) FROM tblprogramsetting").arg(column)).toInt(), 1);
        QCOMPARE(peek.value(QStringLiteral("SELECT %1 FROM tblprogramsetting").arg(column)).toInt(), stored.toInt());
    }

    void readersFallBackToDefaultsOnlyWithoutARecord()
    {
        Fixture f;
        {
            Peek peek(f.fp.testDir.dbPath());
            QVERIFY(peek.exec("DELETE FROM tblprogramsetting"));
        }
        QVERIFY(!f.settings.readSwitches());
        QVERIFY(!f.settings.readSoundAlarmTimes());
        QCOMPARE(f.settings.subReturnAlarmclockName(), QStringLiteral("Quorvel Alarm Clock"));
        QCOMPARE(f.settings.subReturnAlarmclockVersion(), QStringLiteral("1.00"));
        QCOMPARE(f.settings.intReturnColorPicked(), qint16(0));
        QVERIFY(!f.settings.readDonotAskAnyMore());
        QVERIFY(f.fp.messages.shown.isEmpty());
    }

    void switchesCountAnyNonZeroAsOnAndNullAsOff()
    {
        Fixture f;
        {
            Peek peek(f.fp.testDir.dbPath());
            QVERIFY(peek.exec("UPDATE tblprogramsetting SET booTimeRow = 5, booAlarmPopupForm = -1, booSound = NULL, "
                              "booMinimizeToTray = 0, booDonotAskAnyMore = NULL, intColorPick = NULL"));
        }
        const auto s = f.settings.readSwitches();
        QVERIFY(s);
        QVERIFY(s->timeRow);
        QVERIFY(s->alarmPopupForm);
        QVERIFY(!s->sound);
        QVERIFY(!s->minimizeToTray);
        QVERIFY(!f.settings.readDonotAskAnyMore());
        QCOMPARE(f.settings.intReturnColorPicked(), qint16(0));
    }

    void recordsetsReadByNameAndYesNoAsBooleans()
    {
        Fixture f;
        Recordset rs = f.db.MyDB().openRecordset(
            QStringLiteral("SELECT booSound, STRPROGRAMNAME, intSoundAlarmTimes FROM tblprogramsetting"));
        QVERIFY(!rs.eof());
        QCOMPARE(rs.field(QStringLiteral("boosound")).typeId(), QMetaType::Bool);
        QCOMPARE(rs.field(QStringLiteral("booSound")).toBool(), true);
        QCOMPARE(rs.field(QStringLiteral("strprogramname")).toString(), QStringLiteral("Quorvel Alarm Clock"));
        try {
            rs.field(QStringLiteral("noSuchColumn"));
            QFAIL("an unknown column must raise");
        } catch (const AppError &e) {
            QCOMPARE(e.number, 3265L);
        }
        rs.moveNext();
        QVERIFY(rs.eof());
    }

    void tableEditsAndAppendsStoreTextExactly()
    {
        Fixture f;
        const QString hostile = QStringLiteral("'); DROP TABLE tblalarmclock; -- \"quoted\" \\ é ✓");
        {
            DbHandle h = f.db.MyDB();
            Recordset rs = h.openTable(QStringLiteral("tblalarmclock"));
            QVERIFY(rs.eof());
            for (int i = 0; i < 3; ++i) {
                rs.addNew();
                rs.setField(QStringLiteral("stralarmclock"), hostile + QString::number(i));
                rs.setField(QStringLiteral("booRepeat"), i == 1);
                rs.update();
            }
            rs.close();
        }
        Recordset back = f.db.MyDB().openRecordset(QStringLiteral("SELECT * FROM tblalarmclock ORDER BY lngalarmclockid;"));
        for (int i = 0; i < 3; ++i) {
            QVERIFY(!back.eof());
            QCOMPARE(back.field(QStringLiteral("stralarmclock")).toString(), hostile + QString::number(i));
            QCOMPARE(back.field(QStringLiteral("booRepeat")).toBool(), i == 1);
            QVERIFY(back.field(QStringLiteral("strURL")).isNull());
            back.moveNext();
        }
        QVERIFY(back.eof());

        // Editing the first settings record leaves a second one alone.
        {
            Peek peek(f.fp.testDir.dbPath());
            QVERIFY(peek.exec("INSERT INTO tblprogramsetting (strprogramname) VALUES ('second')"));
        }
        {
            Recordset rs = f.db.MyDB().openTable(QStringLiteral("tblprogramsetting"));
            rs.moveFirst();
            rs.edit();
            rs.setField(QStringLiteral("strprogramname"), hostile);
            rs.update();
        }
        Peek peek(f.fp.testDir.dbPath());
        QCOMPARE(peek.value("SELECT strprogramname FROM tblprogramsetting ORDER BY lngprogramsettingid").toString(), hostile);
        QCOMPARE(peek.value("SELECT strprogramname FROM tblprogramsetting ORDER BY lngprogramsettingid DESC").toString(),
                 QStringLiteral("second"));
    }

    void aQueryIsNotEditable()
    {
        Fixture f;
        Recordset rs = f.db.MyDB().openRecordset(QStringLiteral("SELECT * FROM tblprogramsetting"));
        QVERIFY_THROWS_EXCEPTION(AppError, rs.edit());
        QVERIFY_THROWS_EXCEPTION(AppError, f.db.MyDB().openTable(QStringLiteral("tblprogramsetting; DROP TABLE x")));
    }

    void myDbNeverCreatesAMissingFile()
    {
        Fixture f;
        QVERIFY(f.fp.testDir.remove(QStringLiteral("alarmclock.mdb")));
        QVERIFY_THROWS_EXCEPTION(ProgramEnded, f.db.MyDB());
        QVERIFY(!QFile::exists(f.fp.testDir.dbPath()));
        QCOMPARE(f.fp.messages.shown.size(), 2);
        QVERIFY(f.fp.messages.shown[0].text.startsWith(QStringLiteral("MyDB ERROR,\r\nFILE PATH:\r\n")));
    }

    void aReadOnlyFileOpensButRefusesWrites()
    {
        if (geteuid() == 0)
            QSKIP("root ignores file permissions");
        Fixture f;
        QFile::setPermissions(f.fp.testDir.dbPath(), QFile::ReadOwner);
        QCOMPARE(f.settings.subReturnAlarmclockName(), QStringLiteral("Quorvel Alarm Clock"));
        QVERIFY_THROWS_EXCEPTION(AppError, f.settings.execute(QStringLiteral("UPDATE tblprogramsetting set booSound = False")));
    }

    void aLockedFileFailsToOpenAfterAShortWait()
    {
        Fixture f;
        Peek peek(f.fp.testDir.dbPath());
        QVERIFY(peek.exec("BEGIN EXCLUSIVE"));
        QVERIFY(peek.exec("UPDATE tblprogramsetting SET booSound = 0"));
        QVERIFY_THROWS_EXCEPTION(ProgramEnded, f.db.MyDB());
        QCOMPARE(f.fp.messages.shown.size(), 2);
        QVERIFY(peek.exec("ROLLBACK"));
    }

    void myDbCloseOpensAndClosesItsOwnHandle()
    {
        Fixture f;
        f.db.MyDBClose();
        QVERIFY(f.fp.messages.shown.isEmpty());
        QVERIFY(!f.fp.end.ended);
    }

    void aFailingReaderReportsUnderItsOwnName()
    {
        Fixture f;
        {
            Peek peek(f.fp.testDir.dbPath());
            QVERIFY(peek.exec("ALTER TABLE tblprogramsetting RENAME TO gone"));
        }
        QCOMPARE(f.settings.subReturnAlarmclockName(), QString());
        QCOMPARE(f.settings.intReturnColorPicked(), qint16(0));
        QCOMPARE(f.fp.messages.shown.size(), 2);
        QVERIFY(f.fp.messages.shown[0].text.startsWith(QStringLiteral("subReturnAlarmclockName\r\n1\r\n")));
        QVERIFY(f.fp.messages.shown[1].text.startsWith(QStringLiteral("intReturnColorPicked\r\n")));
        QCOMPARE(f.fp.messages.shown[1].title, QStringLiteral("ERROR"));
        QVERIFY_THROWS_EXCEPTION(AppError, f.settings.readSwitches());
    }
};

QTEST_GUILESS_MAIN(DatabaseTest)
#include "tst_database.moc"
