// Painting the table window in each scheme, read back from the widgets.

#include "fakes/LoadedMainWindow.h"
#include "fakes/TestDatabase.h"

#include <QCheckBox>
#include <QLabel>
#include <QTest>

namespace {

QColor text(QWidget *w) { return w->palette().color(qobject_cast<QLineEdit *>(w) ? QPalette::Text : QPalette::WindowText); }
QColor back(QWidget *w) { return w->palette().color(qobject_cast<QLineEdit *>(w) ? QPalette::Base : QPalette::Window); }

void storeCustom(const QString &db, const QStringList &texts)
{
    TestDatabase peek(db);
    for (int n = 1; n <= texts.size(); ++n)
        peek.exec(QStringLiteral("UPDATE tblprogramsetting SET strCustomColours%1 = ?").arg(n, 2, 10, QLatin1Char('0')),
                  {texts[n - 1]});
}

void paint(LoadedMainWindow &m, int scheme)
{
    m.state().intColorPick = qint16(scheme);
    m.t->subSetMainForeAndBackGroundColors();
}

} // namespace

class PaintingTest : public QObject {
    Q_OBJECT

private slots:
    void eachSchemePaintsTextAndBackground_data()
    {
        QTest::addColumn<int>("scheme");
        QTest::addColumn<QColor>("plain");     // labels, boxes
        QTest::addColumn<QColor>("rowNumber"); // row numbers and daily marks
        QTest::addColumn<QColor>("details");   // description text
        QTest::addColumn<QColor>("window");    // the window's own text
        QTest::addColumn<QColor>("background");
        // Custom: slot 1 "&H00C000C0&", slot 2 "12583104" (the same purple), slot 8 red.
        QTest::newRow("regular") << 0 << QColor(Qt::black) << QColor(0xC0, 0, 0xC0) << QColor(Qt::black) << QColor(Qt::white) << QColor(Qt::white);
        QTest::newRow("matrix") << 1 << QColor(0, 0xFF, 0) << QColor(0, 0xFF, 0) << QColor(0, 0xFF, 0) << QColor(0, 0xFF, 0) << QColor(0, 0x40, 0);
        QTest::newRow("custom") << 2 << QColor(0xC0, 0, 0xC0) << QColor(0xC0, 0, 0xC0) << QColor(Qt::red) << QColor(0xC0, 0, 0xC0) << QColor(0xC0, 0, 0xC0);
    }
    void eachSchemePaintsTextAndBackground()
    {
        QFETCH(int, scheme);
        QFETCH(QColor, plain);
        QFETCH(QColor, rowNumber);
        QFETCH(QColor, details);
        QFETCH(QColor, window);
        QFETCH(QColor, background);
        LoadedMainWindow m([](FakePlatform &fp) {
            storeCustom(fp.testDir.dbPath(), {"&H00C000C0&", "12583104", "", "", "", "", "", "&H0000FF"});
        });
        paint(m, scheme);
        for (int i : {0, 12}) {
            QCOMPARE(text(m.t->lblRowNumber[i]), rowNumber);
            QCOMPARE(text(m.t->lbl24[i]), rowNumber);
            QCOMPARE(text(m.t->txtACTime[i]), plain);
            QCOMPARE(text(m.t->txtACDetails[i]), details);
            QCOMPARE(back(m.t->txtACDetails[i]), background);
            QCOMPARE(back(m.t->lblCountDownHours[i]), background);
        }
        QCOMPARE(text(m.t->chkShow), plain);
        QCOMPARE(back(m.t->picBottom), background);
        QCOMPARE(text(m.t), window);
        // The window's own text colour must not reach the boxes inside it.
        QVERIFY(text(m.t->txtSoundOffTimes) != back(m.t->txtSoundOffTimes));
        // Each scheme's picture, on the table window and the main window.
        const QString picture = m.fp.testDir.path() + QLatin1Char('/')
                                + QStringList{"backgroundregular.bmp", "backgroundmatrix.bmp", "backgroundcustom.bmp"}[scheme];
        QCOMPARE(m.fp.pictures.requests.mid(m.fp.pictures.requests.size() - 2),
                 (QList<QPair<QString, QString>>{{"frmAlarmClock", picture}, {"mdiArea", picture}}));
    }

    void aWordOrAnEmptySlotPaintsBlackAndAMissingPictureIsSilent()
    {
        LoadedMainWindow m([](FakePlatform &fp) { storeCustom(fp.testDir.dbPath(), {"red", ""}); });
        m.fp.testDir.remove(QStringLiteral("backgroundcustom.bmp"));
        paint(m, 2);
        QCOMPARE(text(m.t->lblRows), QColor(Qt::black));
        QCOMPARE(back(m.t->lblRows), QColor(Qt::black));
        QVERIFY(m.fp.messages.shown.isEmpty());
    }

    void anUnknownSchemePaintsNothing()
    {
        LoadedMainWindow m;
        paint(m, 1);
        const int requests = m.fp.pictures.requests.size();
        paint(m, 7);
        m.t->subSetRowDetailsBackColor(0);
        QCOMPARE(back(m.t->txtACDetails[0]), QColor(0, 0x40, 0));
        QCOMPARE(text(m.t->lblRowNumber[0]), QColor(0, 0xFF, 0));
        QCOMPARE(m.fp.pictures.requests.size(), requests);
    }

    void customRowStatesUseSlotsThreeToSeven()
    {
        LoadedMainWindow m([](FakePlatform &fp) {
            storeCustom(fp.testDir.dbPath(), {"1", "2", "3", "4", "5", "6", "7", "8"});
        });
        paint(m, 2);
        m.setRow(0, QStringLiteral("Oct 30, 2031"), QStringLiteral("10:00")); // far ahead
        m.setRow(1, QStringLiteral("Sep 30, 2031"), QStringLiteral("14:30")); // within the hour
        m.setRow(2, QStringLiteral("Sep 30, 2031"), QStringLiteral("14:08")); // within eight
        m.setRow(3, QStringLiteral("Sep 29, 2031"), QStringLiteral("14:08")); // sounded
        m.setRow(4, QString(), QStringLiteral("14:03"));                      // just passed borrows slot 4
        m.setRow(5, QString(), QStringLiteral("13:30"));                      // passed within the hour
        m.setRow(6, QString(), QStringLiteral("20:00"));                      // daily, far ahead: untouched
        m.t->txtACDetails[6]->setPalette(QPalette(QColor(1, 2, 3)));
        const QColor untouched = back(m.t->txtACDetails[6]);
        m.tickAt(QDateTime(QDate(2031, 9, 30), QTime(14, 5, 0)));
        const int slot[6] = {3, 5, 4, 6, 4, 7};
        for (int i = 0; i < 6; ++i)
            QCOMPARE(back(m.t->txtACDetails[i]), QColor(slot[i], 0, 0));
        QCOMPARE(back(m.t->txtACDetails[6]), untouched);
        // Editing a row returns its description to the scheme background.
        m.t->subSetRowDetailsBackColor(3);
        QCOMPARE(back(m.t->txtACDetails[3]), QColor(2, 0, 0));
    }
};

QTEST_MAIN(PaintingTest)
#include "tst_painting.moc"
