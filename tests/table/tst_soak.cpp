// A whole day of clock ticks at full speed on the fake clock: an alarm every
// five minutes, each sounding three times 15 s apart or snoozed after its
// second play, and a save every hour. Run it in the sanitizer build with
// leak detection on to see that a long-running program keeps nothing.

#include "fakes/LoadedMainWindow.h"

#include <QTest>
#include <QTimer>

class SoakTest : public QObject {
    Q_OBJECT

private slots:
    void aDayOfAlarms()
    {
        LoadedMainWindow m;
        const QDateTime midnight(QDate(2031, 10, 1), QTime(0, 0));
        const auto hhnn = [&](int minutes) { return midnight.addSecs(minutes * 60).toString(QStringLiteral("HH:mm")); };
        m.t->txtSoundOffTimes->setText(QStringLiteral("3"));
        // Row r rings at 5(r+1) minutes past midnight; each ring moves it on
        // by 65 minutes, so some row rings every five minutes all day.
        for (int r = 0; r < 13; ++r)
            m.setRow(r, QString(), hhnn(5 * (r + 1)));
        qsizetype objects = 0;
        int trips = 0, snoozes = 0, repeatAt = -1;
        for (int s = 0; s < 86400; ++s) {
            const qsizetype played = m.fp.sound.played.size();
            m.tickAt(midnight.addSecs(s));
            if (m.fp.sound.played.size() > played) {
                ++trips;
                m.setRow(m.state().intAlarmRow, QString(), hhnn(s / 60 + 65));
                repeatAt = s + 15;
            } else if (s == repeatAt) {
                m.t->tmrAlarmSound_Timer();
                repeatAt = m.t->tmrAlarmSound->isActive() ? s + 15 : -1;
                if (repeatAt > 0 && trips % 3 == 0) // every third alarm is snoozed after its second play
                    m.t->cmdSnooze_Click(), ++snoozes, repeatAt = -1;
            }
            if (s % 3600 == 1800)
                m.t->cmdSave_Click();
            if (s == 3600) // after the first rings and save, once start-up leftovers are gone
                objects = m.w->findChildren<QObject *>().size();
        }

        // 00:05 to 23:55; the ring at midnight belongs to the next day.
        QCOMPARE(QList<qsizetype>({trips, snoozes, m.fp.sound.played.size()}), QList<qsizetype>({287, 95, 3 * 287 - 95}));
        QVERIFY(m.fp.messages.shown.isEmpty() && !m.t->tmrAlarmSound->isActive());
        QCOMPARE(m.w->findChildren<QObject *>().size(), objects); // nothing piles up under the window over a day
    }
};

QTEST_MAIN(SoakTest)
#include "tst_soak.moc"
