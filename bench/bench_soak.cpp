// A whole day of clock ticks at full speed on the fake clock: an alarm every
// five minutes, each sounding three times 15 s apart or snoozed after its
// second play, and a save every hour. Prints what a long-running program
// gathers: child objects, layout passes and time per tick. Run it in the
// sanitizer build with leak detection on to see that it keeps nothing.
// Exits non-zero when anything piles up or an alarm goes astray.

#include "fakes/LoadedMainWindow.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QTimer>
#include <cstdio>

namespace {

// Counts the layout passes the ticks ask of the window.
struct LayoutCounter : QObject {
    int requests = 0;
    bool eventFilter(QObject *, QEvent *event) override { return (requests += event->type() == QEvent::LayoutRequest, false); }
};

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    LoadedMainWindow m;
    m.w->show();
    const QDateTime midnight(QDate(2031, 10, 1), QTime(0, 0));
    const auto hhnn = [&](int minutes) { return midnight.addSecs(minutes * 60).toString(QStringLiteral("HH:mm")); };
    m.t->txtSoundOffTimes->setText(QStringLiteral("3"));
    // Row r rings at 5(r+1) minutes past midnight; each ring moves it on by
    // 65 minutes, so some row rings every five minutes all day.
    for (int r = 0; r < 13; ++r)
        m.setRow(r, QString(), hhnn(5 * (r + 1)));
    LayoutCounter layouts;
    qsizetype objects = 0;
    int trips = 0, snoozes = 0, repeatAt = -1;
    QElapsedTimer took;
    took.start();
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
        QCoreApplication::processEvents();
        if (s == 3600) // after the first rings and save, once start-up leftovers are gone
            objects = m.w->findChildren<QObject *>().size();
    }
    const qsizetype objectsAtEnd = m.w->findChildren<QObject *>().size();
    // Then two quiet minutes: the read-out changes every second and the
    // countdowns every minute; were their sizes to follow the text, each
    // would lay out the whole table again.
    for (int r = 0; r < 13; ++r)
        m.setRow(r, r % 2 ? QStringLiteral("Oct 01, 2099") : QString(), QStringLiteral("10:00"));
    for (int s = 86400; s < 86520; ++s) {
        m.tickAt(midnight.addSecs(s));
        QCoreApplication::processEvents();
        if (s == 86405) // once the rows' new marks have settled
            for (QWidget *w = m.t->txtCurrentDateTime->parentWidget(); w; w = w->parentWidget())
                w->installEventFilter(&layouts);
    }
    std::printf("a day of ticks: %.1f us per tick, %d trips, %d snoozes, %lld plays, %lld boxes\n",
                took.nsecsElapsed() / 86400e3, trips, snoozes, qlonglong(m.fp.sound.played.size()), qlonglong(m.fp.messages.shown.size()));
    std::printf("child objects after the first hour %lld, at the end %lld; layout passes in two quiet minutes %d\n",
                qlonglong(objects), qlonglong(objectsAtEnd), layouts.requests);
    // 00:05 to 23:55; the ring at midnight belongs to the next day.
    const bool astray = trips != 287 || snoozes != 95 || m.fp.sound.played.size() != 3 * 287 - 95 || !m.fp.messages.shown.isEmpty();
    return astray || objectsAtEnd != objects || layouts.requests != 0 || m.t->tmrAlarmSound->isActive() ? 1 : 0;
}
