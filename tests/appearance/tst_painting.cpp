// Painting the table window in each scheme, read back from the widgets.

#include "fakes/LoadedMainWindow.h"
#include "fakes/TestDatabase.h"

#include <QCheckBox>
#include <QLabel>
#include <QTest>

namespace {

QColor text(QWidget *w)
{
    return w->palette().color(qobject_cast<QLineEdit *>(w) ? QPalette::Text : QPalette::WindowText);
}
QColor back(QWidget *w) { return w->palette().color(qobject_cast<QLineEdit *>(w) ? QPalette::Base : QPalette::Window); }

QColor rgb(quint32 v) { return QColor(QRgb(v)); }

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
    void regularIsBlackOnWhiteWithPurpleRowNumbers()
    {
        LoadedMainWindow m;
        paint(m, 0);
        for (int i : {0, 12}) {
            QCOMPARE(text(m.t->lblRowNumber[i]), rgb(0xC000C0));
            QCOMPARE(text(m.t->lbl24[i]), rgb(0xC000C0));
            QCOMPARE(text(m.t->txtACDate[i]), rgb(0x000000));
            QCOMPARE(text(m.t->txtACDetails[i]), rgb(0x000000));
            QCOMPARE(back(m.t->txtACTime[i]), rgb(0xFFFFFF));
            QCOMPARE(back(m.t->lblCountDownHours[i]), rgb(0xFFFFFF));
        }
        QCOMPARE(text(m.t->chkShow), rgb(0x000000));
        QCOMPARE(text(m.t->txtCurrentDateTime), rgb(0x000000));
        // The window's own text is white, and must not reach the boxes in it.
        QCOMPARE(text(m.t), rgb(0xFFFFFF));
        QVERIFY(text(m.t->txtSoundOffTimes) != back(m.t->txtSoundOffTimes));
        QVERIFY(text(m.t->txtJumpDay) != back(m.t->txtJumpDay));
    }

    void matrixIsGreenOnDarkGreenEverywhere()
    {
        LoadedMainWindow m;
        paint(m, 1);
        for (QWidget *w : {static_cast<QWidget *>(m.t->lblRowNumber[3]), static_cast<QWidget *>(m.t->lbl24[3]),
                           static_cast<QWidget *>(m.t->txtACDate[3]), static_cast<QWidget *>(m.t->txtACDetails[3]),
                           static_cast<QWidget *>(m.t->lblCountDownHours[3]), static_cast<QWidget *>(m.t->chkTimeRow),
                           static_cast<QWidget *>(m.t->lblEventDesc)}) {
            QCOMPARE(text(w), rgb(0x00FF00));
            QCOMPARE(back(w), rgb(0x004000));
        }
        QCOMPARE(back(m.t->picBottom), rgb(0x004000));
    }

    void customTakesSlotsFromTheDatabaseInEitherTextForm()
    {
        LoadedMainWindow m;
        storeCustom(m.fp.testDir.dbPath(),
                    {"&H00C000C0&", "12583104", "", "", "", "", "", "&H0000FF"});
        paint(m, 2);
        QCOMPARE(m.state().customColours.slot(1), 12583104);
        QCOMPARE(text(m.t->lblRowNumber[0]), QColor(0xC0, 0x00, 0xC0));
        QCOMPARE(back(m.t->txtACDate[0]), QColor(0xC0, 0x00, 0xC0));
        // Slot 8 colours only the descriptions' text.
        QCOMPARE(text(m.t->txtACDetails[0]), QColor(0xFF, 0x00, 0x00));
        QCOMPARE(text(m.t->txtACTime[0]), QColor(0xC0, 0x00, 0xC0));
    }

    void aWordOrAnEmptySlotPaintsBlack()
    {
        LoadedMainWindow m;
        storeCustom(m.fp.testDir.dbPath(), {"red", ""});
        paint(m, 2);
        QCOMPARE(text(m.t->lblRows), QColor(0, 0, 0));
        QCOMPARE(back(m.t->lblRows), QColor(0, 0, 0));
    }

    void anUnknownSchemePaintsNothing()
    {
        LoadedMainWindow m;
        paint(m, 1);
        const int requests = m.fp.pictures.requests.size();
        paint(m, 7);
        QCOMPARE(back(m.t->txtACDetails[0]), rgb(0x004000));
        QCOMPARE(text(m.t->lblRowNumber[0]), rgb(0x00FF00));
        QCOMPARE(m.fp.pictures.requests.size(), requests);
        m.t->subSetRowDetailsBackColor(0);
        QCOMPARE(back(m.t->txtACDetails[0]), rgb(0x004000));
    }

    void eachSchemeLoadsItsPictureOnBothWindows()
    {
        LoadedMainWindow m;
        m.fp.pictures.requests.clear();
        paint(m, 1);
        const QString matrix = m.fp.testDir.path() + QStringLiteral("/backgroundmatrix.bmp");
        QCOMPARE(m.fp.pictures.requests.size(), 2);
        QCOMPARE(m.fp.pictures.requests[0], qMakePair(QStringLiteral("frmAlarmClock"), matrix));
        QCOMPARE(m.fp.pictures.requests[1], qMakePair(QStringLiteral("mdiArea"), matrix));

        // A missing picture changes nothing else and says nothing.
        m.fp.testDir.remove(QStringLiteral("backgroundcustom.bmp"));
        paint(m, 2);
        QVERIFY(m.fp.messages.shown.isEmpty());
    }

    void rowDetailsGoBackToTheSchemeBackground_data()
    {
        QTest::addColumn<int>("scheme");
        QTest::addColumn<QColor>("expected");
        QTest::newRow("regular") << 0 << rgb(0xFFFFFF);
        QTest::newRow("matrix") << 1 << rgb(0x004000);
        QTest::newRow("custom") << 2 << QColor(0x11, 0x22, 0x33);
    }
    void rowDetailsGoBackToTheSchemeBackground()
    {
        QFETCH(int, scheme);
        QFETCH(QColor, expected);
        LoadedMainWindow m;
        storeCustom(m.fp.testDir.dbPath(), {"0", "&H00332211&"});
        paint(m, scheme);
        m.setRow(5, QStringLiteral("Sep 29, 2031"), QStringLiteral("10:00"));
        m.tickAt(QDateTime(QDate(2031, 9, 30), QTime(14, 5, 0)));
        QVERIFY(back(m.t->txtACDetails[5]) != expected);
        m.t->subSetRowDetailsBackColor(5);
        QCOMPARE(back(m.t->txtACDetails[5]), expected);
    }

    void customRowStatesUseSlotsThreeToSeven()
    {
        LoadedMainWindow m;
        storeCustom(m.fp.testDir.dbPath(), {"1", "2", "3", "4", "5", "6", "7", "8"});
        paint(m, 2);
        m.setRow(0, QStringLiteral("Oct 30, 2031"), QStringLiteral("10:00")); // far ahead, dated
        m.setRow(1, QStringLiteral("Sep 30, 2031"), QStringLiteral("14:30")); // within the hour
        m.setRow(2, QStringLiteral("Sep 30, 2031"), QStringLiteral("14:08")); // within eight
        m.setRow(3, QStringLiteral("Sep 29, 2031"), QStringLiteral("14:08")); // sounded
        m.setRow(4, QString(), QStringLiteral("14:03"));                      // just passed: slot 4
        m.setRow(5, QString(), QStringLiteral("13:30"));                      // passed within the hour
        m.setRow(6, QString(), QStringLiteral("20:00"));                      // daily far ahead: untouched
        m.t->txtACDetails[6]->setPalette(QPalette(QColor(1, 2, 3)));
        const QColor untouched = back(m.t->txtACDetails[6]);
        m.tickAt(QDateTime(QDate(2031, 9, 30), QTime(14, 5, 0)));
        const int expected[6] = {3, 5, 4, 6, 4, 7};
        for (int i = 0; i < 6; ++i)
            QCOMPARE(back(m.t->txtACDetails[i]), QColor(expected[i], 0, 0));
        QCOMPARE(back(m.t->txtACDetails[6]), untouched);
    }
};

QTEST_MAIN(PaintingTest)
#include "tst_painting.moc"
