#include "info/frmTables.h"

#include <QFrame>
#include <QLabel>
#include <QSqlDatabase>
#include <QTest>

class TablesTest : public QObject {
    Q_OBJECT

private slots:
    // Each group lists its table's columns; red marks exactly the unused ones
    // and the key. The sheet never opens a database.
    void groupsListTheColumnsWithTheUnusedInRed()
    {
        frmTables w;
        QStringList alarms, red;
        for (const QLabel *l : w.Picture2->findChildren<QLabel *>())
            alarms << l->text().section(' ', 0, 0);
        for (const QLabel *l : w.findChildren<QLabel *>())
            if (l->palette().color(l->foregroundRole()) == QColor(255, 0, 0))
                red << l->objectName();
        red.sort();
        QCOMPARE(alarms.join(' '), "tblAlarmClock lngalarmclockid dtalarmclockmmmddyyyy dtalarmclockhhnn stralarmclock "
                                   "strURL strWAVEFileNamePath strSecondsCountDown strRepeatTheTimeDDHHMM");
        QCOMPARE(w.Picture1->findChildren<QLabel *>().size(), 17);
        QCOMPARE(w.findChild<QLabel *>("Label23")->text(), "intRemaingLowerMinutes");
        QCOMPARE(red, (QStringList{"Label16", "Label24", "Label25", "Label26", "Label3"}));
        QVERIFY(QSqlDatabase::connectionNames().isEmpty());
    }
};

QTEST_MAIN(TablesTest)
#include "tst_tables.moc"
