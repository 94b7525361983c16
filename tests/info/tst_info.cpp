#include "fakes/LoadedMainWindow.h"
#include "info/frmAbout.h"
#include "info/frmTables.h"

#include <QLabel>
#include <QMdiSubWindow>
#include <QMouseEvent>
#include <QTest>

class InfoTest : public QObject {
    Q_OBJECT

private slots:
    void aboutShowsTheVersionAndTheEgg()
    {
        LoadedMainWindow m(withSql({"UPDATE tblprogramsetting SET strVersion = '3.7b'"}));
        m.fp.version.maj = 2, m.fp.version.min = 1, m.fp.version.rev = 12;
        auto *w = qobject_cast<frmAbout *>(m.w->showForm(SecondaryForm::About));
        QCOMPARE(w->windowTitle() + "|" + w->lblAboutBox[4]->text(), "About|Version: 3.7b [EXE: 2.112]");
        // Every move over the flag flips the egg.
        for (int i = 0; i < 3; ++i) {
            const bool shown = w->lblEgg->isVisible();
            QMouseEvent move(QEvent::MouseMove, QPointF(4 + 3 * i, 10), QPointF(), Qt::NoButton, {}, {});
            QApplication::sendEvent(w->picCanadaFlag, &move);
            QCOMPARE(w->lblEgg->isVisible(), !shown);
        }
        // A left double-click on a label brings the egg back and toggles the old pictures.
        for (const bool older : {true, false}) {
            QTest::mouseDClick(w->lblAboutBox[older ? 1 : 4], Qt::LeftButton);
            QVERIFY(w->lblEgg->text() == "2011 pixs other is 1996 me!" && w->lblEgg->isVisible() && w->picOlderPellowick1->isVisible() == older);
        }
        // Closing it runs the close sequence every secondary window shares.
        m.w->resize(300, 200);
        m.w->tableSubWindow()->showNormal();
        w->close();
        QVERIFY(m.w->size() == QSize(804, 616) && m.w->tableSubWindow()->isMaximized());
    }

    // Red marks exactly the unused columns and the key. The sheet never opens a database.
    void theTableSheetMarksTheUnusedColumnsInRed()
    {
        frmTables w;
        QStringList red;
        for (const QLabel *l : w.findChildren<QLabel *>())
            if (l->palette().color(l->foregroundRole()) == QColor(255, 0, 0))
                red << l->objectName();
        red.sort();
        QCOMPARE(w.windowTitle() + ": " + red.join(' '), "Table Design: Label16 Label24 Label25 Label26 Label3");
        QVERIFY(QSqlDatabase::connectionNames().isEmpty());
    }
};

QTEST_MAIN(InfoTest)
#include "tst_info.moc"
