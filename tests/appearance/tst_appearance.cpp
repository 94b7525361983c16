// Painting the table window in each scheme, the custom colours dialog and the legend, read back from the widgets.

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

using Colours = QList<QColor>;
QColor text(QWidget *w) { return w->palette().color(qobject_cast<QLineEdit *>(w) ? QPalette::Text : QPalette::WindowText); }
QColor back(QWidget *w) { return w->palette().color(qobject_cast<QLineEdit *>(w) ? QPalette::Base : QPalette::Window); }
const QColor kPurple(0xC0, 0x00, 0xC0), kRed(Qt::red), kGreen(0, 0xFF, 0);
// Slots 1 and 2 hold one purple written two ways, 3..7 tell the row states apart, 8 is red.
const QStringList kCustom{"&H00C000C0&", "12583104", "3", "4", "5", "6", "7", "&H0000FF"};

std::function<void(FakePlatform &)> withCustom(const QStringList &texts)
{
    return [texts](FakePlatform &fp) {
        TestDatabase db(fp.testDir.dbPath());
        for (int n = 1; n <= texts.size(); ++n)
            db.exec(QStringLiteral("UPDATE tblprogramsetting SET strCustomColours%1 = ?").arg(n, 2, 10, QLatin1Char('0')), {texts[n - 1]});
    };
}

void paint(LoadedMainWindow &m, int scheme) { m.state().intColorPick = qint16(scheme), m.t->subSetMainForeAndBackGroundColors(); }

void send(QWidget *w, QEvent &&event) { QApplication::sendEvent(w, &event); }
frmCustomColors *dialog(LoadedMainWindow &m) { return qobject_cast<frmCustomColors *>(m.w->showForm(SecondaryForm::CustomColors)); }

} // namespace

class AppearanceTest : public QObject {
    Q_OBJECT

private slots:
    void eachSchemePaintsTheTableAndTheLegend_data()
    {
        QTest::addColumn<int>("scheme");
        QTest::addColumn<Colours>("table");  // row numbers and daily marks, plain text, details text, window text, background
        QTest::addColumn<Colours>("legend"); // hours away, under 52 minutes, state text
        QTest::newRow("regular") << 0 << Colours{kPurple, Qt::black, Qt::black, Qt::white, Qt::white} << Colours{Qt::white, Qt::yellow, Qt::black};
        QTest::newRow("matrix") << 1 << Colours{kGreen, kGreen, kGreen, kGreen, QColor(0, 0x40, 0)} << Colours{QColor(0, 0x80, 0), QColor(0, 0xC0, 0), Qt::black};
        QTest::newRow("custom") << 2 << Colours{kPurple, kPurple, kRed, kPurple, kPurple} << Colours{QColor(3, 0, 0), QColor(5, 0, 0), kRed};
    }
    void eachSchemePaintsTheTableAndTheLegend()
    {
        QFETCH(int, scheme);
        QFETCH(Colours, table);
        QFETCH(Colours, legend);
        LoadedMainWindow m(withCustom(kCustom));
        paint(m, (scheme + 1) % 3);
        auto *l = qobject_cast<frmLegend *>(m.w->showForm(SecondaryForm::Legend));
        paint(m, scheme);
        for (int i : {0, 12})
            QCOMPARE(Colours({text(m.t->lblRowNumber[i]), text(m.t->lbl24[i]), text(m.t->txtACTime[i]), text(m.t->txtURL[i]), text(m.t->txtACDetails[i]),
                              back(m.t->txtACDetails[i]), back(m.t->lblCountDownHours[i])}),
                     Colours({table[0], table[0], table[1], table[1], table[2], table[4], table[4]}));
        QCOMPARE(Colours({text(m.t->chkShow), text(m.t), back(m.t->picBottom)}), Colours({table[1], table[3], table[4]}));
        // The window's own text colour must not reach the boxes inside it.
        QVERIFY(text(m.t->txtSoundOffTimes) != back(m.t->txtSoundOffTimes));
        // Each scheme's picture, on the table window and the main window.
        const QString picture = m.fp.testDir.filePath(QStringList{"backgroundregular.bmp", "backgroundmatrix.bmp", "backgroundcustom.bmp"}[scheme]);
        QCOMPARE(m.fp.pictures.requests.mid(m.fp.pictures.requests.size() - 2),
                 (QList<QPair<QString, QString>>{{"frmAlarmClock", picture}, {"mdiArea", picture}}));
        // The open legend repaints in the active scheme when activated; its units line takes the title's colours.
        send(l, QEvent(QEvent::WindowActivate));
        QCOMPARE(Colours({back(l->lblColours[0]), back(l->lblColours[2]), text(l->lblColours[4])}), legend);
        QVERIFY(back(l->lblColours[5]) == back(l->lblTitle) && text(l->lblColours[5]) == text(l->lblTitle));
        // The tick paints the rows as the legend explains them; in Custom a daily row far ahead keeps its colour.
        m.setRow(0, "Oct 30, 2031", "10:00");
        m.setRow(1, QString(), "14:40");
        m.setRow(2, QString(), "20:00");
        m.tickAt(QDateTime(QDate(2031, 9, 30), QTime(14, 5, 0)));
        QCOMPARE(Colours({back(m.t->txtACDetails[0]), back(m.t->txtACDetails[1]), back(m.t->txtACDetails[2])}),
                 Colours({legend[0], legend[1], scheme == 2 ? table[4] : legend[0]}));
    }

    void theDialogLoadsPreviewsPicksShowsTheLegendAndApplies()
    {
        LoadedMainWindow m(withCustom({" &H00C000C0& ", "12583104", "red", "", "", "", "", "&H0000FF&"}));
        m.w->mnuColorCustom->trigger();
        QPointer<frmCustomColors> d = dialog(m);
        QCOMPARE(d->windowTitle() + "|" + d->txtCustomColours[0]->text(), "Custom Colors|&H00C000C0&");
        QCOMPARE(Colours({back(d->lblFillColor[1]), back(d->lblFillColor[2])}), Colours({kPurple, Qt::black}));
        for (QPushButton *picker : d->cmdColorPicker)
            QCOMPARE(picker->accessibleName(), picker->text());
        // Enter and focus preview in the window and the swatch; a button whitens the window, the swatch stays.
        d->txtCustomColours[3]->setText(QStringLiteral("12583104"));
        QTest::keyClick(d->txtCustomColours[3], Qt::Key_Return);
        QCOMPARE(Colours({back(d), back(d->lblFillColor[3])}), Colours({kPurple, kPurple}));
        send(d->cmdApply, QFocusEvent(QEvent::FocusIn, Qt::TabFocusReason));
        QCOMPARE(Colours({back(d), back(d->lblFillColor[3])}), Colours({Qt::white, kPurple}));
        QVERIFY(m.state().customColours.slot(4) != 12583104); // a preview stores nothing
        // A cancelled pick changes nothing.
        d->cmdColorPicker_Click(2);
        QCOMPARE(d->txtCustomColours[2]->text(), QStringLiteral("red"));
        m.fp.colours.answer = 0x00C000C0;
        d->cmdColorPicker_Click(2);
        QVERIFY(d->txtCustomColours[2]->text() == "12583104" && back(d->lblFillColor[2]) == kPurple);
        // The legend previews the boxes in memory; closing the dialog throws them away.
        d->txtCustomColours[7]->setText(QStringLiteral("&H00FF00&"));
        d->cmdShowLegend->click();
        auto *legend = qobject_cast<frmLegend *>(m.w->form(SecondaryForm::Legend));
        QVERIFY(legend && legend->isVisible() && text(legend->lblColours[0]) == kGreen && m.state().customColours.slot(8) == 0xFF00);
        QStringList captions{legend->windowTitle(), legend->lblTitle->text()};
        for (QLabel *l : legend->lblColours)
            captions << l->text();
        QCOMPARE(captions, QStringList({"Legend", "FORM TITLES", "Alarm Clock will not trip for hours.",
                                        "Under 8 minutes till Alarm Clock trips.", "Under 52 minutes till Alarm Clock trips.",
                                        "The Alarm has sounded for this event.", "24 Hour Alarm Clock has just passed.",
                                        "d = days, h = hours, m = mins, s = seconds"}));
        d->close();
        QVERIFY(m.state().customColours.slot(8) == 0xFF && m.setting("strCustomColours08") == "&H0000FF&");
        // Apply stores the texts as typed, switches to Custom and repaints.
        m.w->mnuColorMatrix->trigger();
        d = dialog(m);
        const QStringList typed{" &H00C000C0& ", "16777215", "junk", "", "1", "2", "3", "&H0000FF&"};
        for (int i = 0; i < 8; ++i)
            d->txtCustomColours[size_t(i)]->setText(typed[i]);
        d->cmdApply_Click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!d);
        QCOMPARE(m.rows("SELECT strCustomColours01, strCustomColours03, strCustomColours04, intColorPick FROM tblprogramsetting"),
                 QStringList{"&H00C000C0&|junk||2"});
        QVERIFY(m.w->mnuColorCustom->isChecked() && !m.w->mnuColorMatrix->isChecked() && m.state().intColorPick == 2 && m.state().bEvaluateNow);
        QCOMPARE(Colours({text(m.t->lblRows), text(m.t->txtACDetails[0])}), Colours({kPurple, kRed}));
        // A broken table is reported.
        m.w->mnuColorRegular->trigger();
        d = dialog(m);
        QVERIFY(m.sql("ALTER TABLE tblprogramsetting RENAME TO moved"));
        d->cmdApply_Click();
        QVERIFY(m.fp.messages.texts().value(0).startsWith("Err_subSetColorPicked\r\n") && m.state().intColorPick == 0);
    }
};

QTEST_MAIN(AppearanceTest)
#include "tst_appearance.moc"
