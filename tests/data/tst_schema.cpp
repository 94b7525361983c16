// The data files staged next to the executable: the fresh database, the alarm
// sound and the background pictures; and staging never replaces a file.

#include <QtTest>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QtEndian>

#include <algorithm>
#include <cmath>

#if !defined(STAGE_ASSETS_TOOL) || !defined(SCHEMA_SQL)
#error "tools/CMakeLists.txt must pass STAGE_ASSETS_TOOL and SCHEMA_SQL to this test"
#endif

namespace {

QString staged(const char *name)
{
    return QDir(QStringLiteral(STAGED_APP_DIR)).filePath(QString::fromLatin1(name));
}

const char *const pictureNames[] = {"backgroundregular.bmp", "backgroundmatrix.bmp", "backgroundcustom.bmp"};

// Connections are dropped again in cleanup().
QSqlDatabase openDatabase(const QString &path, bool readOnly = true)
{
    static int counter = 0;
    QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", QStringLiteral("tst_schema_%1").arg(++counter));
    db.setDatabaseName(path);
    if (readOnly)
        db.setConnectOptions("QSQLITE_OPEN_READONLY");
    db.open();
    return db;
}

QVariant scalar(const QSqlDatabase &db, const QString &sql)
{
    QSqlQuery query(db);
    return query.exec(sql) && query.next() ? query.value(0) : QVariant();
}

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// A writable copy of the staged database in the given folder.
QString copyDatabase(const QTemporaryDir &folder)
{
    const QString copy = folder.filePath("alarmclock.mdb");
    QFile::copy(staged("alarmclock.mdb"), copy);
    QFile::setPermissions(copy, QFile::ReadOwner | QFile::WriteOwner);
    return copy;
}

// Runs the staging tool; returns its exit code (-1 if it crashed or hung).
int runStager(const QString &folder, const QString &schema, QString *output)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QStringLiteral(STAGE_ASSETS_TOOL), {folder, schema});
    const bool finished = process.waitForFinished(60000);
    *output = QString::fromLocal8Bit(process.readAll());
    return finished && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

} // namespace

class TestSchema : public QObject {
    Q_OBJECT

private slots:
    void cleanup();
    void tablesHaveEveryColumn_data();
    void tablesHaveEveryColumn();
    void freshDatabaseHoldsDefaults();
    void customPaletteIsReadable();
    void alarmKeysKeepIncreasing();
    void picturesLoad();
    void soundIsShortPcmWave();
    void stagingKeepsExistingFiles();
    void failedStagingLeavesNoDatabase_data();
    void failedStagingLeavesNoDatabase();
};

void TestSchema::cleanup()
{
    for (const QString &name : QSqlDatabase::connectionNames())
        QSqlDatabase::removeDatabase(name);
}

void TestSchema::tablesHaveEveryColumn_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QStringList>("columns");

    QTest::newRow("alarms") << "tblalarmclock"
                            << QStringList{"lngalarmclockid", "dtalarmclockmmmddyyyy", "dtalarmclockhhnn",
                                           "stralarmclock", "strURL", "strWAVEFileNamePath", "booRepeat",
                                           "strSecondsCountDown", "strRepeatTheTimeDDHHMM"};

    QStringList settings{"lngprogramsettingid", "booTimeRow", "booAlarmPopupForm", "booSound",
                         "booMinimizeToTray", "intSoundAlarmTimes", "intColorPick", "booDonotAskAnyMore",
                         "strVersion", "strprogramname"};
    for (int slot = 1; slot <= 10; ++slot)
        settings << QStringLiteral("strCustomColours%1").arg(slot, 2, 10, QLatin1Char('0'));
    settings << "intRemaingLowerMinutes" << "intRemaingHigherMinutes";
    QTest::newRow("settings") << "tblprogramsetting" << settings;
}

void TestSchema::tablesHaveEveryColumn()
{
    QFETCH(QString, table);
    QFETCH(QStringList, columns);
    QSqlDatabase db = openDatabase(staged("alarmclock.mdb"));
    QVERIFY2(db.isOpen(), qPrintable(db.lastError().text()));

    // Exact spelling and case matter: the program reads columns by name.
    QSqlQuery query(db);
    QVERIFY(query.exec("PRAGMA table_info(" + table + ")"));
    QStringList names;
    while (query.next())
        names << query.value(1).toString();
    QCOMPARE(names, columns);
}

void TestSchema::freshDatabaseHoldsDefaults()
{
    QSqlDatabase db = openDatabase(staged("alarmclock.mdb"));
    QVERIFY(db.isOpen());
    QCOMPARE(scalar(db, "SELECT COUNT(*) FROM tblalarmclock").toInt(), 0);
    QCOMPARE(scalar(db, "SELECT COUNT(*) FROM tblprogramsetting").toInt(), 1);

    QSqlQuery row(db);
    QVERIFY(row.exec("SELECT * FROM tblprogramsetting"));
    QVERIFY(row.next());
    const QList<std::pair<const char *, QVariant>> defaults{
        {"booTimeRow", 0},         {"booAlarmPopupForm", 0},  {"booSound", 1},
        {"booMinimizeToTray", 1},  {"intSoundAlarmTimes", 3}, {"intColorPick", 0},
        {"booDonotAskAnyMore", 0}, {"strVersion", "1.00"},    {"strprogramname", "Quorvel Alarm Clock"},
        {"strCustomColours09", ""}, {"strCustomColours10", ""},
    };
    for (const auto &[column, expected] : defaults) {
        const QVariant value = row.value(column);
        QVERIFY2(!value.isNull(), column);
        QCOMPARE(value.toString(), expected.toString());
    }
}

// Slots 1-8 parse as &H00BBGGRR&, and both text colours (1, 8) stay legible
// on every background colour (2-7).
void TestSchema::customPaletteIsReadable()
{
    QSqlDatabase db = openDatabase(staged("alarmclock.mdb"));
    QSqlQuery row(db);
    QVERIFY(row.exec("SELECT * FROM tblprogramsetting"));
    QVERIFY(row.next());

    const QRegularExpression format("^&H00([0-9A-F]{2})([0-9A-F]{2})([0-9A-F]{2})&$");
    QList<double> luminance; // relative luminance, as in text contrast ratios
    for (int slot = 1; slot <= 8; ++slot) {
        const QString text = row.value(QStringLiteral("strCustomColours%1").arg(slot, 2, 10, QLatin1Char('0'))).toString();
        const auto match = format.match(text);
        QVERIFY2(match.hasMatch(), qPrintable(text));
        // Red is the low byte, so it comes last in the text.
        const QColor colour(match.captured(3).toInt(nullptr, 16), match.captured(2).toInt(nullptr, 16),
                            match.captured(1).toInt(nullptr, 16));
        const auto linear = [](double v) { return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
        luminance << 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
                         + 0.0722 * linear(colour.blueF());
    }
    for (int background = 2; background <= 7; ++background)
        for (const int text : {1, 8}) {
            const double ratio = (luminance[background - 1] + 0.05) / (luminance[text - 1] + 0.05);
            QVERIFY2(ratio >= 4.5, qPrintable(QStringLiteral("slot %1 on slot %2").arg(text).arg(background)));
        }
}

// Keys follow insertion order and are never reused, even after the newest row
// is deleted; the table's order on screen depends on it.
void TestSchema::alarmKeysKeepIncreasing()
{
    QTemporaryDir scratch;
    QSqlDatabase db = openDatabase(copyDatabase(scratch), false);
    QVERIFY(db.isOpen());
    QSqlQuery query(db);
    for (const char *text : {"first", "second", "third"})
        QVERIFY(query.exec(QStringLiteral("INSERT INTO tblalarmclock (stralarmclock) VALUES ('%1')").arg(text)));
    QVERIFY(query.exec("DELETE FROM tblalarmclock WHERE stralarmclock = 'third'"));
    QVERIFY(query.exec("INSERT INTO tblalarmclock (stralarmclock) VALUES ('fourth')"));

    QVERIFY(query.exec("SELECT lngalarmclockid, stralarmclock, booRepeat, strURL FROM tblalarmclock "
                       "ORDER BY lngalarmclockid"));
    QStringList rows;
    while (query.next()) {
        rows << query.value(0).toString() + ' ' + query.value(1).toString();
        // Column defaults: booRepeat 0, text columns NULL.
        QCOMPARE(query.value(2).toInt(), 0);
        QVERIFY(query.value(3).isNull());
    }
    QCOMPARE(rows, (QStringList{"1 first", "2 second", "4 fourth"}));
}

void TestSchema::picturesLoad()
{
    for (const char *name : pictureNames) {
        QImage image;
        QVERIFY2(image.load(staged(name), "BMP"), name);
        QVERIFY2(image.width() >= 640 && image.height() >= 480, name);
    }
}

void TestSchema::soundIsShortPcmWave()
{
    const QByteArray wav = readAll(staged("alarm.wav"));
    QVERIFY(wav.size() > 44);
    const auto u16 = [&wav](int at) { return qFromLittleEndian<quint16>(wav.constData() + at); };
    const auto u32 = [&wav](int at) { return qFromLittleEndian<quint32>(wav.constData() + at); };

    QCOMPARE(wav.left(4), QByteArray("RIFF"));
    QCOMPARE(u32(4), quint32(wav.size() - 8));
    QCOMPARE(wav.mid(8, 8), QByteArray("WAVEfmt "));
    QCOMPARE(u16(20), 1); // PCM
    QCOMPARE(u16(22), 1); // mono
    QCOMPARE(u32(24), 44100u);
    QCOMPARE(u32(28), 44100u * 2); // bytes per second
    QCOMPARE(u16(32), 2); // bytes per frame
    QCOMPARE(u16(34), 16);
    QCOMPARE(wav.mid(36, 4), QByteArray("data"));
    QCOMPARE(qsizetype(u32(40)), wav.size() - 44);
    const double seconds = (wav.size() - 44) / (44100.0 * 2);
    QVERIFY2(seconds >= 1.0 && seconds <= 3.0, qPrintable(QString::number(seconds)));

    // Audible, but not clipped.
    int peak = 0;
    for (qsizetype at = 44; at + 1 < wav.size(); at += 2)
        peak = std::max(peak, std::abs(int(qFromLittleEndian<qint16>(wav.constData() + at))));
    QVERIFY(peak > 8000 && peak < 32767);
}

void TestSchema::stagingKeepsExistingFiles()
{
    QTemporaryDir folder;
    const QString dbPath = copyDatabase(folder);
    {
        QSqlDatabase db = openDatabase(dbPath, false);
        QSqlQuery query(db);
        QVERIFY(query.exec("INSERT INTO tblalarmclock (stralarmclock) VALUES ('keep me')"));
        QVERIFY(query.exec("UPDATE tblprogramsetting SET intSoundAlarmTimes = 7"));
        db.close();
    }
    const QByteArray userDb = readAll(dbPath);
    const QByteArray userSound("not really a wave file");
    QFile sound(folder.filePath("alarm.wav"));
    QVERIFY(sound.open(QIODevice::WriteOnly) && sound.write(userSound) == userSound.size());
    sound.close();

    QString output;
    QVERIFY2(runStager(folder.path(), SCHEMA_SQL, &output) == 0, qPrintable(output));

    QCOMPARE(readAll(dbPath), userDb);
    QCOMPARE(readAll(sound.fileName()), userSound);
    // The missing files are filled in, and no temporary files are left over.
    for (const char *name : pictureNames)
        QVERIFY2(!QImage(folder.filePath(name)).isNull(), name);
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 5);
}

void TestSchema::failedStagingLeavesNoDatabase_data()
{
    QTest::addColumn<QByteArray>("schema"); // empty: no schema file at all

    QTest::newRow("missing schema") << QByteArray();
    QTest::newRow("broken statement") << QByteArray("CREATE TABLE t (a INTEGER);\nCREATE TABEL u (b);\n");
    QTest::newRow("only comments") << QByteArray("-- nothing; here\n");
}

void TestSchema::failedStagingLeavesNoDatabase()
{
    QFETCH(QByteArray, schema);
    QTemporaryDir scratch;
    const QString schemaPath = scratch.filePath("schema.sql");
    if (!schema.isEmpty()) {
        QFile file(schemaPath);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(schema) == schema.size());
    }
    const QString folder = scratch.filePath("app");

    QString output;
    QVERIFY(runStager(folder, schemaPath, &output) != 0);
    QVERIFY2(output.contains("error"), qPrintable(output));
    // A half-made database would pass for a good one on the next build.
    QVERIFY(QDir(folder).entryList(QDir::Files).isEmpty());
}

QTEST_GUILESS_MAIN(TestSchema)
#include "tst_schema.moc"
