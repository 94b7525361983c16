// The custom colours dialog and the legend, opened from a loaded main window.

#include "appearance/frmCustomColors.h"
#include "appearance/frmLegend.h"
#include "fakes/LoadedMainWindow.h"
#include "fakes/TestDatabase.h"

#include <QAction>
#include <QLabel>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTest>

namespace {

QColor back(QWidget *w) { return w->palette().color(QPalette::Window); }
QColor textOf(QWidget *w) { return w->palette().color(QPalette::WindowText); }
const QColor kPurple(0xC0, 0x00, 0xC0);

frmCustomColors *openDialog(LoadedMainWindow &m)
{
    return qobject_cast<frmCustomColors *>(m.w->showForm(SecondaryForm::CustomColors));
}

void storeCustom(const QString &db, const QStringList &texts)
{
    TestDatabase peek(db);
    for (int n = 1; n <= texts.size(); ++n)
        peek.exec(QStringLiteral("UPDATE tblprogramsetting SET strCustomColours%1 = ?").arg(n, 2, 10, QLatin1Char('0')),
                  {texts[n - 1]});
}

void focus(QWidget *w)
{
    QFocusEvent in(QEvent::FocusIn, Qt::TabFocusReason);
    QApplication::sendEvent(w, &in);
}

} // namespace

class ColourDialogsTest : public QObject {
    Q_OBJECT

private slots:
    void loadingThenPreviewingByEnterFocusAndPicker()
    {
        LoadedMainWindow m([](FakePlatform &fp) { storeCustom(fp.testDir.dbPath(), {" &H00C000C0& ", "12583104", "red"}); });
        frmCustomColors *d = openDialog(m);
        QCOMPARE(d->txtCustomColours[0]->text(), QStringLiteral("&H00C000C0&"));
        QCOMPARE(back(d->lblFillColor[1]), kPurple);
        QCOMPARE(back(d->lblFillColor[2]), QColor(Qt::black));
        QVERIFY(d->lblHelpTip->text().contains(QStringLiteral(" &H00C000C0& or its number 12583104.")));

        d->txtCustomColours[3]->setText(QStringLiteral("12583104"));
        QTest::keyClick(d->txtCustomColours[3], Qt::Key_Return);
        QCOMPARE(back(d), kPurple);
        QCOMPARE(back(d->lblFillColor[3]), kPurple);
        focus(d->cmdApply); // a button whitens the window, the swatch stays
        QCOMPARE(back(d), QColor(Qt::white));
        QCOMPARE(back(d->lblFillColor[3]), kPurple);
        d->txtCustomColours[5]->setText(QStringLiteral("&HFF"));
        focus(d->txtCustomColours[5]);
        QCOMPARE(back(d->lblFillColor[5]), QColor(Qt::red));
        QVERIFY(m.state().customColours.slot(6) != 255); // a preview stores nothing

        m.fp.colours.answer = std::nullopt;
        d->cmdColorPicker_Click(2);
        QCOMPARE(d->txtCustomColours[2]->text(), QStringLiteral("red"));
        m.fp.colours.answer = 0x00C000C0;
        d->cmdColorPicker_Click(2);
        QCOMPARE(d->txtCustomColours[2]->text(), QStringLiteral("12583104"));
        QCOMPARE(back(d->lblFillColor[2]), kPurple);
        d->cmdColorPicker_Click(0); // starts from the colour chosen last
        QCOMPARE(m.fp.colours.startColours.last(), 0x00C000C0);
    }

    void aLegendPreviewIsThrownAwayWhenTheDialogCloses()
    {
        LoadedMainWindow m([](FakePlatform &fp) { storeCustom(fp.testDir.dbPath(), {"&H0000FF&"}); });
        m.w->mnuColorCustom->trigger();
        frmCustomColors *d = openDialog(m);
        d->txtCustomColours[0]->setText(QStringLiteral("&H00FF00&"));
        d->cmdShowLegend->click();
        auto *legend = qobject_cast<frmLegend *>(m.w->form(SecondaryForm::Legend));
        QVERIFY(legend && legend->isVisible());
        QCOMPARE(textOf(legend->lblTitle), QColor(Qt::green));
        QCOMPARE(m.state().customColours.slot(1), 0xFF00);
        d->close();
        QCOMPARE(m.state().customColours.slot(1), 0xFF);
        QCOMPARE(TestDatabase(m.fp.testDir.dbPath()).value("SELECT strCustomColours01 FROM tblprogramsetting").toString(),
                 QStringLiteral("&H0000FF&"));
    }

    void applyStoresTheTextsSwitchesToCustomAndRepaints()
    {
        LoadedMainWindow m;
        m.w->mnuColorMatrix->trigger();
        QPointer<frmCustomColors> d = openDialog(m);
        const QStringList typed{" &H00C000C0& ", "16777215", "junk", "", "1", "2", "3", "&H0000FF&"};
        for (int i = 0; i < 8; ++i)
            d->txtCustomColours[size_t(i)]->setText(typed[i]);
        d->cmdApply_Click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!d);
        QCOMPARE(TestDatabase(m.fp.testDir.dbPath())
                     .rows("SELECT strCustomColours01, strCustomColours03, strCustomColours04, intColorPick FROM tblprogramsetting"),
                 QStringList{"&H00C000C0&|junk||2"});
        QVERIFY(m.w->mnuColorCustom->isChecked() && !m.w->mnuColorMatrix->isChecked());
        QCOMPARE(m.state().intColorPick, qint16(2));
        QVERIFY(m.state().bEvaluateNow);
        QCOMPARE(textOf(m.t->lblRows), kPurple);
        QCOMPARE(m.t->txtACDetails[0]->palette().color(QPalette::Text), QColor(Qt::red));
    }

    void applyWithoutARecordOrWithABrokenTable()
    {
        LoadedMainWindow m;
        TestDatabase(m.fp.testDir.dbPath()).exec("DELETE FROM tblprogramsetting");
        openDialog(m)->txtCustomColours[0]->setText(QStringLiteral("255"));
        openDialog(m)->cmdApply_Click();
        QVERIFY(m.fp.messages.shown.isEmpty());
        QVERIFY(m.w->mnuColorCustom->isChecked());
        QCOMPARE(textOf(m.t->lblRows), QColor(Qt::red)); // from the boxes, in memory only

        m.w->mnuColorRegular->trigger();
        frmCustomColors *d = openDialog(m);
        TestDatabase(m.fp.testDir.dbPath()).exec("ALTER TABLE tblprogramsetting RENAME TO moved");
        d->cmdApply_Click();
        QCOMPARE(m.fp.messages.shown.size(), 1);
        QVERIFY(m.fp.messages.shown[0].text.startsWith(QStringLiteral("Err_subSetColorPicked\r\n")));
        QCOMPARE(m.state().intColorPick, qint16(0));
    }

    void theLegendShowsTheActiveScheme_data()
    {
        QTest::addColumn<int>("scheme");
        QTest::addColumn<QColor>("hoursAway");
        QTest::addColumn<QColor>("under52");
        QTest::addColumn<QColor>("stateText");
        QTest::newRow("regular") << 0 << QColor(Qt::white) << QColor(Qt::yellow) << QColor(Qt::black);
        QTest::newRow("matrix") << 1 << QColor(0, 0x80, 0) << QColor(0, 0xC0, 0) << QColor(Qt::black);
        QTest::newRow("custom") << 2 << QColor(3, 0, 0) << QColor(5, 0, 0) << QColor(8, 0, 0);
    }
    void theLegendShowsTheActiveScheme()
    {
        QFETCH(int, scheme);
        QFETCH(QColor, hoursAway);
        QFETCH(QColor, under52);
        QFETCH(QColor, stateText);
        LoadedMainWindow m([](FakePlatform &fp) {
            storeCustom(fp.testDir.dbPath(), {"&H0000FF&", "2", "3", "4", "5", "6", "7", "8"});
        });
        m.state().intColorPick = qint16(scheme);
        m.t->subSetMainForeAndBackGroundColors();
        auto *legend = qobject_cast<frmLegend *>(m.w->showForm(SecondaryForm::Legend));
        QCOMPARE(back(legend->lblColours[0]), hoursAway);
        QCOMPARE(back(legend->lblColours[2]), under52);
        QCOMPARE(textOf(legend->lblColours[4]), stateText);
        // The units line takes the title's colours.
        QCOMPARE(back(legend->lblColours[5]), back(legend->lblTitle));
        QCOMPARE(textOf(legend->lblColours[5]), textOf(legend->lblTitle));

        // Closing runs the close sequence: standard size, table maximized, others closed.
        QPointer<QWidget> about = m.w->showForm(SecondaryForm::About);
        m.w->resize(900, 700);
        legend->close();
        QCOMPARE(m.w->size(), QSize(804, 616));
        QVERIFY(m.w->tableSubWindow()->isMaximized());
        QVERIFY(!about || !about->isVisible());
    }
};

QTEST_MAIN(ColourDialogsTest)
#include "tst_colourdialogs.moc"
