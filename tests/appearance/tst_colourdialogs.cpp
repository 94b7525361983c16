// The custom colours dialog and the legend, opened from a loaded main
// window on the fakes.

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

const QColor kPurple(0xC0, 0x00, 0xC0);

} // namespace

class ColourDialogsTest : public QObject {
    Q_OBJECT

private slots:
    void theDialogLoadsTheStoredTextsAndSwatches()
    {
        LoadedMainWindow m([](FakePlatform &fp) {
            storeCustom(fp.testDir.dbPath(), {" &H00C000C0& ", "12583104", "red"});
        });
        frmCustomColors *d = openDialog(m);
        QVERIFY(d);
        QCOMPARE(d->windowTitle(), QStringLiteral("Custom Colors"));
        QCOMPARE(d->txtCustomColours[0]->text(), QStringLiteral("&H00C000C0&"));
        QCOMPARE(back(d->lblFillColor[0]), kPurple);
        QCOMPARE(back(d->lblFillColor[1]), kPurple);
        QCOMPARE(back(d->lblFillColor[2]), QColor(0, 0, 0));
        QCOMPARE(d->lblCustomColours[7]->text(), QStringLiteral("Event Description Foreground (not the title)"));
        QCOMPARE(d->cmdColorPicker[4]->text(), QStringLiteral("Color Picker"));
        QVERIFY(d->lblHelpTip->text().startsWith(
            QStringLiteral("HOW TO: You can enter values like: &H00C000C0& or its number 12583104.")));
    }

    void enterOrFocusPreviewsAndAButtonWhitensTheWindow()
    {
        LoadedMainWindow m;
        frmCustomColors *d = openDialog(m);
        d->txtCustomColours[3]->setText(QStringLiteral("&H00C000C0&"));
        QTest::keyClick(d->txtCustomColours[3], Qt::Key_Return);
        QCOMPARE(back(d), kPurple);
        QCOMPARE(back(d->lblFillColor[3]), kPurple);

        QEvent focus(QEvent::FocusIn);
        QFocusEvent buttonFocus(QEvent::FocusIn, Qt::TabFocusReason);
        QApplication::sendEvent(d->cmdApply, &buttonFocus);
        QCOMPARE(back(d), QColor(255, 255, 255));
        QCOMPARE(back(d->lblFillColor[3]), kPurple);

        d->txtCustomColours[5]->setText(QStringLiteral("12583104"));
        QFocusEvent boxFocus(QEvent::FocusIn, Qt::TabFocusReason);
        QApplication::sendEvent(d->txtCustomColours[5], &boxFocus);
        QCOMPARE(back(d->lblFillColor[5]), kPurple);
        // Nothing is stored or taken into the scheme by a preview.
        QVERIFY(m.state().customColours.slot(6) != 12583104);
    }

    void thePickerWritesDecimalAndCancelChangesNothing()
    {
        LoadedMainWindow m;
        frmCustomColors *d = openDialog(m);
        d->txtCustomColours[2]->setText(QStringLiteral("&HFF&"));
        m.fp.colours.answer = std::nullopt;
        d->cmdColorPicker_Click(2);
        QCOMPARE(d->txtCustomColours[2]->text(), QStringLiteral("&HFF&"));

        m.fp.colours.answer = 0x00C000C0;
        d->cmdColorPicker_Click(2);
        QCOMPARE(d->txtCustomColours[2]->text(), QStringLiteral("12583104"));
        QCOMPARE(back(d->lblFillColor[2]), kPurple);
        QCOMPARE(back(d), kPurple);
        // The next pick starts from the colour chosen last.
        d->cmdColorPicker_Click(0);
        QCOMPARE(m.fp.colours.startColours.last(), 0x00C000C0);
    }

    void aLegendPreviewIsThrownAwayWhenTheDialogCloses()
    {
        LoadedMainWindow m([](FakePlatform &fp) { storeCustom(fp.testDir.dbPath(), {"&H0000FF&"}); });
        m.w->mnuColorCustom->trigger();
        QCOMPARE(m.state().customColours.slot(1), 0xFF);
        frmCustomColors *d = openDialog(m);
        d->txtCustomColours[0]->setText(QStringLiteral("&H00FF00&"));
        d->cmdShowLegend->click();
        auto *legend = qobject_cast<frmLegend *>(m.w->showForm(SecondaryForm::Legend));
        QVERIFY(legend);
        QCOMPARE(textOf(legend->lblTitle), QColor(0, 255, 0));
        QCOMPARE(textOf(legend->lblColours[5]), QColor(0, 255, 0));
        QCOMPARE(m.state().customColours.slot(1), 0xFF00);

        d->close();
        QCOMPARE(m.state().customColours.slot(1), 0xFF);
        TestDatabase peek(m.fp.testDir.dbPath());
        QCOMPARE(peek.value("SELECT strCustomColours01 FROM tblprogramsetting").toString(), QStringLiteral("&H0000FF&"));
    }

    void applyStoresTheTextsSwitchesToCustomAndRepaints()
    {
        LoadedMainWindow m;
        m.w->mnuColorMatrix->trigger();
        frmCustomColors *d = openDialog(m);
        const QStringList typed{" &H00C000C0& ", "16777215", "junk", "", "1", "2", "3", "&H0000FF&"};
        for (int i = 0; i < 8; ++i)
            d->txtCustomColours[size_t(i)]->setText(typed[i]);
        QPointer<frmCustomColors> alive(d);
        d->cmdApply_Click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!alive);

        TestDatabase peek(m.fp.testDir.dbPath());
        QCOMPARE(peek.rows("SELECT strCustomColours01, strCustomColours02, strCustomColours03, strCustomColours04, "
                           "intColorPick FROM tblprogramsetting"),
                 QStringList{"&H00C000C0&|16777215|junk||2"});
        QVERIFY(m.w->mnuColorCustom->isChecked());
        QVERIFY(!m.w->mnuColorMatrix->isChecked() && !m.w->mnuColorRegular->isChecked());
        QCOMPARE(m.state().intColorPick, qint16(2));
        QVERIFY(m.state().bEvaluateNow);
        QCOMPARE(m.t->lblRows->palette().color(QPalette::WindowText), kPurple);
        QCOMPARE(m.t->txtACDetails[0]->palette().color(QPalette::Text), QColor(255, 0, 0));
    }

    void clearThenApplyStoresEightEmptyFields()
    {
        LoadedMainWindow m;
        frmCustomColors *d = openDialog(m);
        d->cmdClearForm_Click();
        d->cmdApply_Click();
        TestDatabase peek(m.fp.testDir.dbPath());
        QCOMPARE(peek.value("SELECT strCustomColours01 || strCustomColours05 || strCustomColours08 FROM tblprogramsetting")
                     .toString(),
                 QString());
        QCOMPARE(m.t->lblRows->palette().color(QPalette::WindowText), QColor(0, 0, 0));
        QCOMPARE(m.t->lblRows->palette().color(QPalette::Window), QColor(0, 0, 0));
    }

    void applyWithNoSettingsRecordStillSwitchesToCustom()
    {
        LoadedMainWindow m;
        TestDatabase(m.fp.testDir.dbPath()).exec("DELETE FROM tblprogramsetting");
        frmCustomColors *d = openDialog(m);
        d->txtCustomColours[0]->setText(QStringLiteral("255"));
        d->cmdApply_Click();
        QVERIFY(m.fp.messages.shown.isEmpty());
        QCOMPARE(m.state().intColorPick, qint16(2));
        QVERIFY(m.w->mnuColorCustom->isChecked());
        QCOMPARE(m.t->lblRows->palette().color(QPalette::WindowText), QColor(255, 0, 0));
    }

    void aFailingApplyReportsAndStops()
    {
        LoadedMainWindow m;
        frmCustomColors *d = openDialog(m);
        TestDatabase(m.fp.testDir.dbPath()).exec("ALTER TABLE tblprogramsetting RENAME TO moved");
        d->cmdApply_Click();
        QCOMPARE(m.fp.messages.shown.size(), 1);
        QVERIFY(m.fp.messages.shown[0].text.startsWith(QStringLiteral("Err_subSetColorPicked\r\n")));
        QCOMPARE(m.state().intColorPick, qint16(0));
        QVERIFY(d->isVisible());
    }

    void theLegendShowsTheActiveSchemesColours_data()
    {
        QTest::addColumn<int>("scheme");
        QTest::addColumn<QColor>("hoursAway");
        QTest::addColumn<QColor>("under52");
        QTest::addColumn<QColor>("stateText");
        QTest::addColumn<QColor>("window");
        QTest::newRow("regular") << 0 << QColor(255, 255, 255) << QColor(255, 255, 0) << QColor(0, 0, 0) << QColor(255, 255, 255);
        QTest::newRow("matrix") << 1 << QColor(0, 0x80, 0) << QColor(0, 0xC0, 0) << QColor(0, 0, 0) << QColor(0, 0x40, 0);
        QTest::newRow("custom") << 2 << QColor(3, 0, 0) << QColor(5, 0, 0) << QColor(8, 0, 0) << QColor(2, 0, 0);
    }
    void theLegendShowsTheActiveSchemesColours()
    {
        QFETCH(int, scheme);
        QFETCH(QColor, hoursAway);
        QFETCH(QColor, under52);
        QFETCH(QColor, stateText);
        QFETCH(QColor, window);
        LoadedMainWindow m([](FakePlatform &fp) {
            storeCustom(fp.testDir.dbPath(), {"&H0000FF&", "2", "3", "4", "5", "6", "7", "8"});
        });
        m.state().intColorPick = qint16(scheme);
        m.t->subSetMainForeAndBackGroundColors();
        auto *legend = qobject_cast<frmLegend *>(m.w->showForm(SecondaryForm::Legend));
        QCOMPARE(legend->windowTitle(), QStringLiteral("Legend"));
        QCOMPARE(legend->lblColours[2]->text(), QStringLiteral("Under 52 minutes till Alarm Clock trips."));
        QCOMPARE(back(legend->lblColours[0]), hoursAway);
        QCOMPARE(back(legend->lblColours[2]), under52);
        QCOMPARE(textOf(legend->lblColours[4]), stateText);
        QCOMPARE(back(legend), window);
        QCOMPARE(back(legend->lblColours[5]), back(legend->lblTitle));
        QCOMPARE(textOf(legend->lblColours[5]), textOf(legend->lblTitle));
        if (scheme == 2)
            QCOMPARE(textOf(legend->lblTitle), QColor(255, 0, 0));
    }

    void closingTheLegendRunsTheCloseSequence()
    {
        LoadedMainWindow m;
        auto *legend = m.w->showForm(SecondaryForm::Legend);
        auto *about = m.w->showForm(SecondaryForm::About);
        QPointer<QWidget> aboutAlive(about);
        m.w->resize(900, 700);
        legend->close();
        QCOMPARE(m.w->size(), QSize(804, 616));
        QVERIFY(m.w->tableSubWindow()->isMaximized());
        QVERIFY(!aboutAlive || !aboutAlive->isVisible());
    }
};

QTEST_MAIN(ColourDialogsTest)
#include "tst_colourdialogs.moc"
