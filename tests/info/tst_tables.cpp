// The table-design sheet: every column caption in its group, the red marks
// of the unused columns, and no database anywhere near it.

#include "info/frmTables.h"

#include <QFrame>
#include <QLabel>
#include <QSqlDatabase>
#include <QPointer>
#include <QTest>

#include <array>

namespace {

// Red as drawn: the colour of the role the label paints its text with.
bool isRed(const QLabel *label)
{
    return label->palette().color(label->foregroundRole()) == QColor(255, 0, 0);
}

} // namespace

class TablesTest : public QObject {
    Q_OBJECT

private slots:
    void everyCaptionSitsOnceInItsGroup_data()
    {
        QTest::addColumn<QString>("group");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("caption");
        const QList<std::array<const char *, 3>> rows{
            {"Picture2", "Label2", "tblAlarmClock"},
            {"Picture2", "Label5", "lngalarmclockid"},
            {"Picture2", "Label6", "dtalarmclockmmmddyyyy"},
            {"Picture2", "Label8", "dtalarmclockhhnn"},
            {"Picture2", "Label9", "stralarmclock (description)"},
            {"Picture2", "Label7", "strURL (text 220)"},
            {"Picture2", "Label4", "strWAVEFileNamePath (text 220)"},
            {"Picture2", "Label3", "strSecondsCountDown (text 20)"},
            {"Picture2", "Label24", "strRepeatTheTimeDDHHMM (text 8)"},
            {"Picture1", "Label1", "tblProgramSetting"},
            {"Picture1", "Label15", "lngprogramsettingid"},
            {"Picture1", "Label10", "booTimeRow"},
            {"Picture1", "Label11", "booAlarmPopupForm"},
            {"Picture1", "Label12", "booSound"},
            {"Picture1", "Label13", "booMinimizeToTray"},
            {"Picture1", "Label14", "intSoundAlarmTimes"},
            {"Picture1", "Label17", "intColorPick"},
            {"Picture1", "Label18", "booDonotAskAnyMore"},
            {"Picture1", "Label19", "strVersion (text 10)"},
            {"Picture1", "Label23", "intRemaingLowerMinutes"},
            {"Picture1", "Label27", "intRemaingHigherMinutes"},
            {"Picture1", "Label20", "strCustomColours01 (text 15)"},
            {"Picture1", "Label21", "..."},
            {"Picture1", "Label22", "strCustomColours08 (text 15)"},
            {"Picture1", "Label25", "strCustomColours09 (text 15)"},
            {"Picture1", "Label26", "strCustomColours10 (text 15)"},
            {"", "Label16", "RED means its in the database but not in use."},
        };
        for (const auto &[group, name, caption] : rows)
            QTest::newRow(name) << QString::fromLatin1(group) << QString::fromLatin1(name)
                                << QString::fromLatin1(caption);
    }
    void everyCaptionSitsOnceInItsGroup()
    {
        QFETCH(QString, group);
        QFETCH(QString, name);
        QFETCH(QString, caption);
        frmTables w;

        const QList<QLabel *> labels = w.findChildren<QLabel *>();
        QCOMPARE(labels.size(), 27);
        int withCaption = 0;
        for (const QLabel *l : labels)
            withCaption += l->text() == caption;
        QCOMPARE(withCaption, 1);

        auto *label = w.findChild<QLabel *>(name);
        QVERIFY(label);
        QCOMPARE(label->text(), caption);
        QCOMPARE(label->font().family(), QStringLiteral("Arial"));
        if (group.isEmpty()) {
            QVERIFY(!w.Picture1->isAncestorOf(label) && !w.Picture2->isAncestorOf(label));
        } else {
            auto *frame = w.findChild<QFrame *>(group);
            QVERIFY(frame);
            QVERIFY(frame->isAncestorOf(label));
        }
    }

    void exactlyTheUnusedColumnsAndTheKeyAreRed()
    {
        frmTables w;
        QStringList red;
        for (const QLabel *l : w.findChildren<QLabel *>())
            if (isRed(l))
                red << l->objectName();
        red.sort();
        QCOMPARE(red, (QStringList{"Label16", "Label24", "Label25", "Label26", "Label3"}));
    }

    void opensAndClosesWithoutADatabase()
    {
        // The window takes no database; with no connection at all it still
        // opens, shows its sheet and closes, and none is made behind its back.
        QVERIFY(QSqlDatabase::connectionNames().isEmpty());
        auto *w = new frmTables;
        w->setAttribute(Qt::WA_DeleteOnClose);
        QPointer<frmTables> alive(w);
        QCOMPARE(w->objectName(), QStringLiteral("frmTables"));
        QCOMPARE(w->windowTitle(), QStringLiteral("Table Design"));
        w->show();
        QVERIFY(QTest::qWaitForWindowExposed(w));
        QVERIFY(w->close());
        QTRY_VERIFY(alive.isNull());
        QVERIFY(QSqlDatabase::connectionNames().isEmpty());
    }
};

QTEST_MAIN(TablesTest)
#include "tst_tables.moc"
