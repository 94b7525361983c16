#include "fakes/TestDatabase.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

// STAGE_ASSETS_TOOL and SCHEMA_SQL come from tools/CMakeLists.txt.
static int stage(const QString &folder, const QString &schema)
{
    QProcess stager;
    stager.start(QStringLiteral(STAGE_ASSETS_TOOL), {folder, schema});
    return stager.waitForFinished(60000) && stager.exitStatus() == QProcess::NormalExit ? stager.exitCode() : -1;
}

class TestSchema : public QObject {
    Q_OBJECT

    const QString m_staged = QDir(QStringLiteral(STAGED_APP_DIR)).filePath("alarmclock.mdb");

private slots:
    // The program reads columns by name, so spelling and case matter.
    void freshDatabaseHasEveryColumnAndTheDefaults()
    {
        TestDatabase db(m_staged);
        QCOMPARE(db.rows("SELECT name FROM pragma_table_info('tblalarmclock')").join(' '),
                 "lngalarmclockid dtalarmclockmmmddyyyy dtalarmclockhhnn stralarmclock strURL "
                 "strWAVEFileNamePath booRepeat strSecondsCountDown strRepeatTheTimeDDHHMM");
        QCOMPARE(db.rows("SELECT name FROM pragma_table_info('tblprogramsetting') LIMIT 10").join(' '),
                 "lngprogramsettingid booTimeRow booAlarmPopupForm booSound booMinimizeToTray "
                 "intSoundAlarmTimes intColorPick booDonotAskAnyMore strVersion strprogramname");
        QCOMPARE(db.value("SELECT COUNT(*) FROM pragma_table_info('tblprogramsetting') "
                          "WHERE name LIKE 'strCustomColours__' OR name LIKE 'intRemaing%'").toInt(), 12);
        QCOMPARE(db.value("SELECT COUNT(*) FROM tblalarmclock").toInt(), 0);
        QCOMPARE(db.rows("SELECT booTimeRow, booAlarmPopupForm, booSound, booMinimizeToTray, intSoundAlarmTimes, "
                         "intColorPick, booDonotAskAnyMore, strVersion, strprogramname FROM tblprogramsetting"),
                 QStringList("0|0|1|1|3|0|0|1.00|Quorvel Alarm Clock"));
    }

    void stagingKeepsTheUsersDatabase()
    {
        QTemporaryDir folder;
        const QString dbPath = folder.filePath("alarmclock.mdb");
        QVERIFY(QFile::copy(m_staged, dbPath));
        QVERIFY(QFile::setPermissions(dbPath, QFile::ReadOwner | QFile::WriteOwner));
        {
            TestDatabase db(dbPath);
            QVERIFY(db.exec("INSERT INTO tblalarmclock (stralarmclock) VALUES ('keep me')"));
        }
        QCOMPARE(stage(folder.path(), SCHEMA_SQL), 0);
        TestDatabase db(dbPath);
        QCOMPARE(db.rows("SELECT stralarmclock FROM tblalarmclock"), QStringList("keep me"));
    }

    // A half-made database would pass for a good one on the next build.
    void failedStagingLeavesNoDatabase()
    {
        QTemporaryDir scratch;
        QFile schema(scratch.filePath("schema.sql"));
        QVERIFY(schema.open(QIODevice::WriteOnly) && schema.write("CREATE TABLE t (a);\nCREATE TABEL u (b);\n") > 0);
        schema.close();
        QVERIFY(stage(scratch.filePath("app"), schema.fileName()) > 0);
        QVERIFY(!QFile::exists(scratch.filePath("app/alarmclock.mdb")));
    }
};

QTEST_GUILESS_MAIN(TestSchema)
#include "tst_schema.moc"
