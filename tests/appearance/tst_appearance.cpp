// Painting the table window in each scheme, the custom colours dialog and
// the legend, read back from the widgets.

#include "appearance/frmCustomColors.h"
#include "appearance/frmLegend.h"
#include "fakes/LoadedMainWindow.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTest>

namespace {

QColor text(QWidget *w) { return w->palette().color(qobject_cast<QLineEdit *>(w) ? QPalette::Text : QPalette::WindowText); }
QColor back(QWidget *w) { return w->palette().color(qobject_cast<QLineEdit *>(w) ? QPalette::Base : QPalette::Window); }
const QColor kPurple(0xC0, 0x00, 0xC0);

std::function<void(FakePlatform &)> withCustom(const QStringList &texts)
{
    return [texts](FakePlatform &fp) {
        TestDatabase db(fp.testDir.dbPath());
        for (int n = 1; n <= texts.size(); ++n)
            db.exec(QStringLiteral("UPDATE tblprogramsetting SET strCustomColours%1 = ?").arg(n, 2, 10, QLatin1Char('0')), {texts[n - 1]});
    };
}

void paint(LoadedMainWindow &m, int scheme)
{
    m.state().intColorPick = qint16(scheme);
    m.t->subSetMainForeAndBackGroundColors();
}

frmCustomColors *dialog(LoadedMainWindow &m) { return qobject_cast<frmCustomColors *>(m.w->showForm(SecondaryForm::CustomColors)); }

void focusIn(QWidget *w)
{
    QFocusEvent in(QEvent::FocusIn, Qt::TabFocusReason);
    QApplication::sendEvent(w, &in);
}

} // namespace

class AppearanceTest : public QObject {
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
        QTest::newRow("regular") << 0 << QColor(Qt::black) << kPurple << QColor(Qt::black) << QColor(Qt::white) << QColor(Qt::white);
        QTest::newRow("matrix") << 1 << QColor(0, 0xFF, 0) << QColor(0, 0xFF, 0) << QColor(0, 0xFF, 0) << QColor(0, 0xFF, 0) << QColor(0, 0x40, 0);
        QTest::newRow("custom") << 2 << kPurple << kPurple << QColor(Qt::red) << kPurple << kPurple;
    }
    void eachSchemePaintsTextAndBackground()
    {
        QFETCH(int, scheme);
        QFETCH(QColor, plain);
        QFETCH(QColor, rowNumber);
        QFETCH(QColor, details);
        QFETCH(QColor, window);
        QFETCH(QColor, background);
        LoadedMainWindow m(withCustom({"&H00C000C0&", "12583104", "", "", "", "", "", "&H0000FF"}));
        paint(m, scheme);
        for (int i : {0, 12})
            QCOMPARE(QList<QColor>({text(m.t->lblRowNumber[i]), text(m.t->lbl24[i]), text(m.t->txtACTime[i]), text(m.t->txtURL[i]), text(m.t->txtACDetails[i]),
                                    back(m.t->txtACDetails[i]), back(m.t->lblCountDownHours[i])}),
                     QList<QColor>({rowNumber, rowNumber, plain, plain, details, background, background}));
        QCOMPARE(QList<QColor>({text(m.t->chkShow), back(m.t->picBottom), text(m.t)}), QList<QColor>({plain, background, window}));
        // The window's own text colour must not reach the boxes inside it.
        QVERIFY(text(m.t->txtSoundOffTimes) != back(m.t->txtSoundOffTimes));
        // Each scheme's picture, on the table window and the main window.
        const QString picture = m.fp.testDir.filePath(QStringList{"backgroundregular.bmp", "backgroundmatrix.bmp", "backgroundcustom.bmp"}[scheme]);
        QCOMPARE(m.fp.pictures.requests.mid(m.fp.pictures.requests.size() - 2),
                 (QList<QPair<QString, QString>>{{"frmAlarmClock", picture}, {"mdiArea", picture}}));
    }

    void oddSlotsAndSchemes()
    {
        // A word or an empty slot paints black; a missing picture is silent.
        LoadedMainWindow m(withCustom({"red", ""}));
        m.fp.testDir.remove(QStringLiteral("backgroundcustom.bmp"));
        paint(m, 2);
        QVERIFY(text(m.t->lblRows) == QColor(Qt::black) && back(m.t->lblRows) == QColor(Qt::black) && m.fp.messages.shown.isEmpty());
        // An unknown scheme paints nothing at all.
        paint(m, 1);
        const int requests = m.fp.pictures.requests.size();
        paint(m, 7);
        m.t->subSetRowDetailsBackColor(0);
        QCOMPARE(QList<QColor>({back(m.t->txtACDetails[0]), text(m.t->lblRowNumber[0])}), QList<QColor>({QColor(0, 0x40, 0), QColor(0, 0xFF, 0)}));
        QCOMPARE(m.fp.pictures.requests.size(), requests);
    }

    void customRowStatesUseSlotsThreeToSeven()
    {
        LoadedMainWindow m(withCustom({"1", "2", "3", "4", "5", "6", "7", "8"}));
        paint(m, 2);
        m.setRow(0, "Oct 30, 2031", "10:00"); // far ahead
        m.setRow(1, "Sep 30, 2031", "14:30"); // within the hour
        m.setRow(2, "Sep 30, 2031", "14:08"); // within eight
        m.setRow(3, "Sep 29, 2031", "14:08"); // sounded
        m.setRow(4, QString(), "14:03");      // just passed borrows slot 4
        m.setRow(5, QString(), "13:30");      // passed within the hour
        m.setRow(6, QString(), "20:00");      // daily, far ahead: untouched
        m.t->txtACDetails[6]->setPalette(QPalette(QColor(1, 2, 3)));
        const QColor untouched = back(m.t->txtACDetails[6]);
        m.tickAt(QDateTime(QDate(2031, 9, 30), QTime(14, 5, 0)));
        const int slot[6] = {3, 5, 4, 6, 4, 7};
        for (int i = 0; i < 6; ++i)
            QCOMPARE(back(m.t->txtACDetails[i]), QColor(slot[i], 0, 0));
        QCOMPARE(back(m.t->txtACDetails[6]), untouched);
        m.t->subSetRowDetailsBackColor(3); // editing a row returns it to the scheme background
        QCOMPARE(back(m.t->txtACDetails[3]), QColor(2, 0, 0));
    }

    void theDialogLoadsPreviewsAndPicks()
    {
        LoadedMainWindow m(withCustom({" &H00C000C0& ", "12583104", "red"}));
        frmCustomColors *d = dialog(m);
        QCOMPARE(d->windowTitle() + "|" + d->txtCustomColours[0]->text(), "Custom Colors|&H00C000C0&");
        QCOMPARE(QList<QColor>({back(d->lblFillColor[1]), back(d->lblFillColor[2])}), QList<QColor>({kPurple, Qt::black}));
        QVERIFY(d->lblHelpTip->text().contains(QStringLiteral(" &H00C000C0& or its number 12583104.")));
        for (QPushButton *picker : d->cmdColorPicker)
            QCOMPARE(picker->accessibleName(), picker->text());
        d->txtCustomColours[3]->setText(QStringLiteral("12583104"));
        QTest::keyClick(d->txtCustomColours[3], Qt::Key_Return);
        QCOMPARE(QList<QColor>({back(d), back(d->lblFillColor[3])}), QList<QColor>({kPurple, kPurple}));
        focusIn(d->cmdApply); // a button whitens the window, the swatch stays
        QCOMPARE(QList<QColor>({back(d), back(d->lblFillColor[3])}), QList<QColor>({Qt::white, kPurple}));
        d->txtCustomColours[5]->setText(QStringLiteral("&HFF"));
        focusIn(d->txtCustomColours[5]);
        QCOMPARE(back(d->lblFillColor[5]), QColor(Qt::red));
        QVERIFY(m.state().customColours.slot(6) != 255); // a preview stores nothing
        m.fp.colours.answer = std::nullopt;
        d->cmdColorPicker_Click(2);
        QCOMPARE(d->txtCustomColours[2]->text(), QStringLiteral("red"));
        m.fp.colours.answer = 0x00C000C0;
        d->cmdColorPicker_Click(2);
        QVERIFY(d->txtCustomColours[2]->text() == "12583104" && back(d->lblFillColor[2]) == kPurple);
        d->cmdColorPicker_Click(0); // starts from the colour chosen last
        QCOMPARE(m.fp.colours.startColours.last(), 0x00C000C0);
    }

    void applyStoresTheTextsSwitchesToCustomAndRepaints()
    {
        LoadedMainWindow m;
        m.w->mnuColorMatrix->trigger();
        QPointer<frmCustomColors> d = dialog(m);
        const QStringList typed{" &H00C000C0& ", "16777215", "junk", "", "1", "2", "3", "&H0000FF&"};
        for (int i = 0; i < 8; ++i)
            d->txtCustomColours[size_t(i)]->setText(typed[i]);
        d->cmdApply_Click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!d);
        QCOMPARE(m.rows("SELECT strCustomColours01, strCustomColours03, strCustomColours04, intColorPick FROM tblprogramsetting"),
                 QStringList{"&H00C000C0&|junk||2"});
        QVERIFY(m.w->mnuColorCustom->isChecked() && !m.w->mnuColorMatrix->isChecked() && m.state().intColorPick == 2 && m.state().bEvaluateNow);
        QCOMPARE(QList<QColor>({text(m.t->lblRows), text(m.t->txtACDetails[0])}), QList<QColor>({kPurple, Qt::red}));

        // Without a record the colours apply in memory only; a broken table is reported.
        QVERIFY(m.sql("DELETE FROM tblprogramsetting"));
        m.w->mnuColorRegular->trigger();
        dialog(m)->txtCustomColours[0]->setText(QStringLiteral("255"));
        dialog(m)->cmdApply_Click();
        QVERIFY(m.fp.messages.shown.isEmpty() && m.w->mnuColorCustom->isChecked() && text(m.t->lblRows) == QColor(Qt::red));
        m.w->mnuColorRegular->trigger();
        QVERIFY(m.sql("ALTER TABLE tblprogramsetting RENAME TO moved"));
        dialog(m)->cmdApply_Click();
        QCOMPARE(m.fp.messages.texts().value(0).section("\r\n", 0, 0), "Err_subSetColorPicked");
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
        LoadedMainWindow m(withCustom({"&H0000FF&", "2", "3", "4", "5", "6", "7", "8"}));
        paint(m, (scheme + 1) % 3);
        auto *legend = qobject_cast<frmLegend *>(m.w->showForm(SecondaryForm::Legend));
        QStringList captions{legend->windowTitle(), legend->lblTitle->text()};
        for (QLabel *l : legend->lblColours)
            captions << l->text();
        QCOMPARE(captions, QStringList({"Legend", "FORM TITLES", "Alarm Clock will not trip for hours.",
                                        "Under 8 minutes till Alarm Clock trips.", "Under 52 minutes till Alarm Clock trips.",
                                        "The Alarm has sounded for this event.", "24 Hour Alarm Clock has just passed.",
                                        "d = days, h = hours, m = mins, s = seconds"}));
        // Already open, it repaints in the active scheme when activated.
        paint(m, scheme);
        QEvent activate(QEvent::WindowActivate);
        QApplication::sendEvent(legend, &activate);
        QCOMPARE(QList<QColor>({back(legend->lblColours[0]), back(legend->lblColours[2]), text(legend->lblColours[4])}), QList<QColor>({hoursAway, under52, stateText}));
        // The units line takes the title's colours.
        QVERIFY(back(legend->lblColours[5]) == back(legend->lblTitle) && text(legend->lblColours[5]) == text(legend->lblTitle));

        // Closing runs the close sequence: standard size, table maximized, others closed.
        QPointer<QWidget> about = m.w->showForm(SecondaryForm::About);
        m.w->resize(900, 700);
        legend->close();
        QVERIFY(m.w->size() == QSize(804, 616) && m.w->tableSubWindow()->isMaximized() && (!about || !about->isVisible()));
    }

    void aLegendPreviewIsThrownAwayWhenTheDialogCloses()
    {
        LoadedMainWindow m(withCustom({"&H0000FF&"}));
        m.w->mnuColorCustom->trigger();
        frmCustomColors *d = dialog(m);
        d->txtCustomColours[0]->setText(QStringLiteral("&H00FF00&"));
        d->cmdShowLegend->click();
        auto *legend = qobject_cast<frmLegend *>(m.w->form(SecondaryForm::Legend));
        QVERIFY(legend && legend->isVisible() && text(legend->lblTitle) == QColor(Qt::green) && m.state().customColours.slot(1) == 0xFF00);
        d->close();
        QVERIFY(m.state().customColours.slot(1) == 0xFF && m.setting("strCustomColours01") == "&H0000FF&");
    }
};

QTEST_MAIN(AppearanceTest)
#include "tst_appearance.moc"
