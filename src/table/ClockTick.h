#pragma once

#include "links/AlarmState.h"
#include "platform/Platform.h"
#include "rules/LatePolicy.h"

#include <QDateTime>
#include <QString>

#include <array>
#include <functional>
#include <limits>

class QCheckBox;
class QLabel;
class QLineEdit;
class TableHost;
class SoundingCycle;

// The controls of the table window that the tick writes and reads.
struct TickControls {
    QLabel *txtCurrentDateTime = nullptr;
    std::array<QLabel *, kAlarmRows> lblCountDownHours{};
    std::array<QLineEdit *, kAlarmRows> txtACDetails{};
    QLineEdit *txtSoundOffTimes = nullptr;
    QCheckBox *chkShow = nullptr;
    std::function<QString(int row)> soundPathOf;
    QString defaultSoundPath;
};

// The clock tick: shows the time every second and, at the top of each
// minute or when asked, brings every row's countdown and colour up to date
// and raises the alarm of a row that reaches its moment. No alarm second is
// lost: the moments a gap in the ticks held (a sleep, a busy thread, a clock
// set forward) are handled by how late they are; and none rings twice (a
// row trips once for one moment, whatever the clock does afterwards). It
// also keeps the machine's wake-up at the next alarm that would sound.
class ClockTick {
public:
    ClockTick(const Platform &platform, AlarmState &state, TableHost &host, SoundingCycle &cycle,
              TickControls controls);

    void tmrAlarmClock_Timer();
    // Re-arms for the next tick from the given moment.
    void arm(const QDateTime &now);

private:
    // A row whose moment (in wall-clock seconds, see wallSecond) has come.
    struct Trip {
        qint64 moment;
        int row;
    };
    static constexpr qint64 kNever = std::numeric_limits<qint64>::min();

    void tick(const QDateTime &now, qint64 missedAfter);
    void raiseAlarm(qint64 moment, const QString &lateNote);

    const Platform m_platform;
    AlarmState &m_state;
    TableHost &m_host;
    SoundingCycle &m_cycle;
    const TickControls m_controls;
    // The last tick, in UTC and in wall-clock seconds, and the machine's
    // clocks then (milliseconds since boot, and of those asleep).
    qint64 m_lastUtc = kNever;
    qint64 m_lastWall = kNever;
    qint64 m_lastUtcMs = 0, m_lastBootMs = 0, m_lastAsleepMs = 0;
    // Why the ticks missed what the tick now catches up.
    GapCause m_gapCause = GapCause::None;
    // The moment each row last tripped for.
    std::array<qint64, kAlarmRows> m_tripped;
};
