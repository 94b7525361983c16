// A whole day of clock ticks at full speed on the fake clock: an alarm every
// five minutes, each sounding three times 15 s apart or snoozed after its
// second play, and a save every hour. Run it in the sanitizer build with
// leak detection on to see that a long-running program keeps nothing.

#include "fakes/LoadedMainWindow.h"

#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>

class SoakTest : public QObject {
    Q_OBJECT

private slots:
    void aDayOfAlarms()
    {
        LoadedMainWindow m;
        const QDateTime midnight(QDate(2031, 10, 1), QTime(0, 0), Qt::LocalTime);
        const auto hhnn = [&](int minutes) { return midnight.addSecs(minutes * 60).toString(QStringLiteral("HH:mm")); };
        m.t->txtSoundOffTimes->setText(QStringLiteral("3"));
        // Row r rings at 5(r+1) minutes past midnight; each ring moves it on
        // by 65 minutes, so some row rings every five minutes all day.
        for (int r = 0; r < 13; ++r)
            m.setRow(r, QString(), hhnn(5 * (r + 1)));
        qsizetype objects = 0;

        int trips = 0, snoozes = 0, repeatAt = -1;
        for (int s = 0; s < 86400; ++s) {
            m.fp.clock.set(midnight.addSecs(s));
            const qsizetype played = m.fp.sound.played.size();
            m.t->tmrAlarmClock_Timer();
            if (m.fp.sound.played.size() > played) {
                ++trips;
                const int row = m.state().intAlarmRow;
                QCOMPARE(m.state().strAlarmTimes[size_t(row)], hhnn(s / 60));
                m.setRow(row, QString(), hhnn(s / 60 + 65));
                QVERIFY(m.t->tmrAlarmSound->isActive());
                repeatAt = s + 15;
            } else if (s == repeatAt) {
                QVERIFY(m.t->tmrAlarmSound->isActive());
                m.t->tmrAlarmSound_Timer();
                repeatAt = m.t->tmrAlarmSound->isActive() ? s + 15 : -1;
                if (repeatAt > 0 && trips % 3 == 0) {
                    m.t->cmdSnooze_Click();
                    ++snoozes;
                    repeatAt = -1;
                }
            }
            if (s % 3600 == 1800)
                m.t->cmdSave_Click();
            if (s == 3600) // after the first rings and save, once start-up leftovers are gone
                objects = m.w->findChildren<QObject *>().size();
        }

        // 00:05 to 23:55; the ring at midnight belongs to the next day.
        QCOMPARE(trips, 287);
        QCOMPARE(snoozes, 95);
        QCOMPARE(m.fp.sound.played.size(), 3 * trips - snoozes);
        QCOMPARE(m.fp.sound.beeps, 3 * trips - snoozes);
        QVERIFY(m.fp.messages.shown.isEmpty());
        QCOMPARE(m.state().lngAlarmPlaysLeft, 0);
        QVERIFY(!m.t->tmrAlarmSound->isActive());
        QVERIFY(!m.t->cmdSnooze->isVisibleTo(m.t));
        QCOMPARE(m.t->txtCurrentDateTime->text(), QStringLiteral("Oct 01, 2031 23:59:59"));
        // Every daily row has rung today or waits for tomorrow.
        static const QRegularExpression countdown(QStringLiteral(R"(^(\d+d \d+h \d+m \d+s |zZZzz)$)"));
        for (int r = 0; r < 13; ++r)
            QVERIFY2(countdown.match(m.t->lblCountDownHours[r]->text()).hasMatch(), qPrintable(m.t->lblCountDownHours[r]->text()));
        // Nothing piles up under the window over a day.
        QCOMPARE(m.w->findChildren<QObject *>().size(), objects);
    }
};

QTEST_MAIN(SoakTest)
#include "tst_soak.moc"
