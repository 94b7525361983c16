// Time to save all 13 rows and to load them back, against a private copy of
// the shipped database. A benchmark, not a test: run it directly.
#include "fakes/LoadedMainWindow.h"

#include <QTest>

class SaveLoadBench : public QObject {
    Q_OBJECT

private slots:
    void save()
    {
        LoadedMainWindow m;
        fill(m);
        QBENCHMARK { m.t->basSaveAlarmClocks(); }
        QVERIFY(m.fp.messages.shown.isEmpty());
    }

    void load()
    {
        LoadedMainWindow m;
        fill(m);
        m.t->basSaveAlarmClocks();
        QBENCHMARK { m.t->basLoadAlarmClocks(false); }
        QVERIFY(m.fp.messages.shown.isEmpty());
    }

    void saveButton()
    {
        // What a click on Save does: save, then load what was stored.
        LoadedMainWindow m;
        fill(m);
        QBENCHMARK { m.t->cmdSave_Click(); }
    }

private:
    static void fill(LoadedMainWindow &m)
    {
        for (int i = 0; i < 13; ++i) {
            m.t->txtACDate[i]->setText(QStringLiteral("Oct %1, 2031").arg(i + 10));
            m.t->txtACTime[i]->setText(QStringLiteral("%1:30").arg(i + 7, 2, 10, QLatin1Char('0')));
            m.t->txtACDetails[i]->setText(QStringLiteral("Alarm number %1 with a description").arg(i));
            m.t->txtURL[i]->setText(QStringLiteral("https://example.org/%1").arg(i));
        }
    }
};

QTEST_MAIN(SaveLoadBench)
#include "bench_saveload.moc"
