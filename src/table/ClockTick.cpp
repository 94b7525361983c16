#include "table/ClockTick.h"

#include "appearance/WidgetColours.h"
#include "links/TableHost.h"
#include "platform/Clock.h"
#include "platform/Notifier.h"
#include "platform/SoundPlayer.h"
#include "platform/TrayIcon.h"
#include "platform/WakeAlarm.h"
#include "platform/WallTimer.h"
#include "rules/AlarmMoment.h"
#include "rules/AppError.h"
#include "rules/CountdownText.h"
#include "rules/DateText.h"
#include "rules/RowState.h"
#include "rules/TickSchedule.h"
#include "rules/ValueConversions.h"
#include "table/SoundingCycle.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>

#include <algorithm>
#include <optional>
#include <vector>

namespace {

// The machine wakes this long before an alarm, to be up and ticking by then.
constexpr int kWakeLeadSeconds = 90;

} // namespace

ClockTick::ClockTick(const Platform &platform, AlarmState &state, TableHost &host, SoundingCycle &cycle,
                     TickControls controls)
    : m_platform(platform), m_state(state), m_host(host), m_cycle(cycle), m_controls(std::move(controls))
{
    m_tripped.fill(kNever);
}

void ClockTick::arm(const QDateTime &now)
{
    // Re-armed from the wall clock each time, so the tick lands at the start
    // of every second and never skips or doubles one.
    m_platform.wallTimer.startAt(nextTickAt(now, m_state.intMDIWindowState == 1));
}

void ClockTick::tmrAlarmClock_Timer()
{
    const QDateTime now = m_platform.clock.now();
    arm(now);
    // A clock set back by a fraction of a second wakes the timer inside the
    // second just ticked: nothing new to show or evaluate.
    const qint64 utc = now.toSecsSinceEpoch();
    if (utc == m_lastUtc)
        return;
    const QDateTime whole = now.addMSecs(-now.time().msec()); // on the instant (see nextTickAt)
    const qint64 wall = wallSecond(whole.date(), whole.time());
    // Seconds of the wall clock that no tick saw (a busy thread, a sleep, a
    // clock set forward, the hour skipped in spring) are caught up; the
    // machine's own clocks tell what made the gap.
    const bool caughtUp = m_lastWall != kNever && wall > m_lastWall + 1;
    const qint64 missedAfter = caughtUp ? m_lastWall : wall;
    const qint64 utcMs = now.toMSecsSinceEpoch(), bootMs = m_platform.clock.sinceBootMs(),
                 asleepMs = m_platform.clock.asleepMs();
    if (caughtUp)
        m_gapCause = gapCause(utcMs - m_lastUtcMs, bootMs - m_lastBootMs, asleepMs - m_lastAsleepMs);
    m_lastUtc = utc;
    m_lastWall = wall;
    m_lastUtcMs = utcMs, m_lastBootMs = bootMs, m_lastAsleepMs = asleepMs;
    tick(whole, missedAfter);
}

void ClockTick::tick(const QDateTime &now, qint64 missedAfter)
{
    const bool hidden = m_state.intMDIWindowState == 1;
    if (!hidden)
        m_controls.txtCurrentDateTime->setText(formatNowText(now));
    const qint64 wall = wallSecond(now.date(), now.time());
    if (missedAfter < wall)
        m_state.bEvaluateNow = true;
    if (!m_state.bEvaluateNow) {
        if (now.time().second() != 0)
            return;
        m_state.bEvaluateNow = true;
    }

    std::vector<Trip> trips;
    int dueSoon = -1;
    // Seconds to the next moment a row will ring at, if any.
    std::optional<qint64> next;
    const QDate today = now.date();
    for (int i = 0; i < kAlarmRows; ++i) {
        const QString &time = m_state.strAlarmTimes[size_t(i)];
        if (time.isEmpty())
            continue;
        try {
            const std::optional<QDate> date = parseDate(m_state.strAlarmDates[size_t(i)]);
            const bool dated = date.has_value();
            const qint32 s = secondsUntil(now, dated ? *date : today, time);
            qint64 moment = wall + s;
            // A daily row's moment that the gap held may be yesterday's.
            if (!dated && s > 0 && moment - 86400 > missedAfter)
                moment -= 86400;
            if ((s == 0 || (moment > missedAfter && moment < wall)) && m_tripped[size_t(i)] != moment)
                trips.push_back({moment, i});
            else if (s > 0 && s <= 60)
                dueSoon = i;
            const qint64 ahead = s > 0 ? s : dated ? -1 : s + 86400; // a daily row's passed time comes again tomorrow
            if (ahead > 0)
                next = std::min(next.value_or(ahead), ahead);
            if (hidden)
                continue;
            m_controls.lblCountDownHours[size_t(i)]->setText(
                strPrintCountDownHours(s, dated ? QStringLiteral("done") : QStringLiteral("zZZzz")));
            if (const auto colour =
                    rowStateColour(classifyRow(dated, s), dated, m_state.intColorPick, m_state.customColours))
                setBackColour(m_controls.txtACDetails[size_t(i)], *colour);
        } catch (const AppError &) {
            // One row that cannot be evaluated must not silence the others.
        }
    }

    // A row due within the minute: let the player get its sound ready, so
    // the alarm is heard the moment it trips.
    if (dueSoon >= 0 && m_state.bSoundOn)
        m_platform.sound.prepare(m_controls.soundPathOf(dueSoon), m_controls.defaultSoundPath);
    // Woken for an alarm that would sound, with time to spare.
    m_platform.wake.setNextAlarm(m_state.bSoundOn && next ? now.addSecs(*next - kWakeLeadSeconds) : QDateTime());
    if (trips.empty()) {
        m_state.bEvaluateNow = false;
        return;
    }
    // Missed moments first, in the order they came; of rows due at one
    // moment, the last row's sound plays.
    std::stable_sort(trips.begin(), trips.end(), [](const Trip &a, const Trip &b) { return a.moment < b.moment; });
    for (const Trip &trip : trips)
        m_tripped[size_t(trip.row)] = trip.moment;
    QStringList missed; // each such row once, however many of its moments the gap held
    for (size_t k = 0; k < trips.size(); ++k) {
        const Lateness lateness = latenessOf(wall - trips[k].moment);
        if (lateness == Lateness::Missed) {
            const int row = trips[k].row;
            missed << m_state.strAlarmTimes[size_t(row)] + u' ' + m_controls.txtACDetails[size_t(row)]->text();
            continue;
        }
        if (k + 1 < trips.size() && trips[k + 1].moment == trips[k].moment)
            continue;
        // Exit chosen meanwhile stopped the clock: nothing more rings.
        if (!m_platform.wallTimer.isActive())
            return;
        m_state.intAlarmRow = qint16(trips[k].row);
        try {
            raiseAlarm(trips[k].moment, lateness == Lateness::Late ? lateNote(m_gapCause) : QString());
        } catch (const AppError &) {
            // An alarm that cannot start its cycle ends this tick, as any error does.
            return;
        }
    }
    if (!missed.isEmpty())
        m_platform.notifier.showMissed(missed);
}

// Nothing here waits: the tray tip's name is in memory, the notification is
// sent without waiting for the answer, and the play starts on the player's
// own thread. So no database, box or file stands between the trip and the
// sound.
void ClockTick::raiseAlarm(qint64 moment, const QString &lateNote)
{
    const QString message = QStringLiteral("ALARM @ ") + formatAlarmTipTime(fromWallSecond(moment));
    m_host.subRemoveTrayIcon();
    m_host.subMinimizeToTray(false, message);
    // Says which alarm rings, with a Stop, where no tray or pop-up would.
    const QString details = m_controls.txtACDetails[size_t(m_state.intAlarmRow)]->text();
    m_platform.notifier.show(message, lateNote.isEmpty() ? details : lateNote + u'\n' + details, m_state.bSoundOn);
    m_state.bEvaluateNow = true;
    // The sound before the pop-up: bringing the window back may close other
    // windows, and those may read the database.
    std::optional<AppError> failed;
    try {
        if (m_state.bSoundOn && m_state.lngAlarmPlaysLeft < 1)
            m_cycle.start(longValue(m_controls.txtSoundOffTimes->text()));
    } catch (const AppError &e) {
        failed = e;
    }
    // With neither a tray nor a notification server to say so (a bare
    // Wayland compositor), only the window itself can show the alarm.
    if (m_controls.chkShow->isChecked() || !(m_platform.tray.available() || m_platform.notifier.available())) {
        m_state.intMDIWindowState = 0;
        m_host.restoreMainWindow();
    }
    if (failed)
        throw *failed;
}
