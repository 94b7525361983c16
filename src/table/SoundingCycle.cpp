#include "table/SoundingCycle.h"

#include "appearance/WidgetColours.h"
#include "platform/Notifier.h"
#include "platform/SoundPlayer.h"
#include "rules/AppError.h"

#include <QPushButton>
#include <QTimer>

#include <limits>

namespace {

constexpr qint32 kSnoozeColour = 0xC0C0FF;
constexpr qint32 kSnoozeFlashColour = 0x8080FF;
constexpr int kRepeatMs = 15000;

} // namespace

SoundingCycle::SoundingCycle(SoundPlayer &sound, Notifier &notifier, AlarmState &state, QPushButton *snooze,
                             PlayRowSound playRowSound, QObject *parent)
    : QObject(parent), tmrAlarmSound(new QTimer(this)), tmrAlarmSoundFlash(new QTimer(this)), m_sound(sound),
      m_notifier(notifier), m_state(state), m_snooze(snooze), m_playRowSound(std::move(playRowSound))
{
    tmrAlarmSound->setObjectName(QStringLiteral("tmrAlarmSound"));
    // Coarse timers may fire 5 % early; the plays are meant to be 15 s apart.
    tmrAlarmSound->setTimerType(Qt::PreciseTimer);
    tmrAlarmSoundFlash->setObjectName(QStringLiteral("tmrAlarmSoundFlash"));
    tmrAlarmSoundFlash->setInterval(300);
    setBackColour(m_snooze, kSnoozeColour);
    connect(tmrAlarmSound, &QTimer::timeout, this, [this] { tmrAlarmSound_Timer(); });
    connect(tmrAlarmSoundFlash, &QTimer::timeout, this, [this] { tmrAlarmSoundFlash_Timer(); });
}

void SoundingCycle::start(qint32 times)
{
    if (times == std::numeric_limits<qint32>::min())
        throw AppError(6, QStringLiteral("Overflow"));
    // The last play of an earlier cycle still sounds: the new alarm takes
    // over, and the notification already shows the new one.
    if (m_playing)
        end();
    m_state.lngAlarmPlaysLeft = times - 1;
    m_lastPlay = m_state.lngAlarmPlaysLeft < 1;
    if (!m_lastPlay) {
        tmrAlarmSoundFlash->start();
        m_snooze->setVisible(true);
        tmrAlarmSound->setInterval(kRepeatMs);
        tmrAlarmSound->start();
    }
    playOnce();
}

void SoundingCycle::tmrAlarmSound_Timer()
{
    if (m_playing)
        m_repeatDue = true;
    else
        repeat();
}

void SoundingCycle::repeat()
{
    m_state.lngAlarmPlaysLeft -= 1;
    m_state.bEvaluateNow = true;
    subShowPlaysLeft();
    if (m_state.lngAlarmPlaysLeft < 1) {
        // The count is used up: no more repeats, but the button and the
        // notification stay until this last play has ended.
        m_lastPlay = true;
        tmrAlarmSound->setInterval(0);
        tmrAlarmSound->stop();
    }
    playOnce();
}

void SoundingCycle::playOnce()
{
    m_sound.beep();
    const quint64 play = m_playing = ++m_plays;
    m_playRowSound(m_state.intAlarmRow, [this, play] { playEnded(play); });
}

void SoundingCycle::playEnded(quint64 play)
{
    if (play != m_playing)
        return; // cut off by Stop, or by a newer alarm
    m_playing = 0;
    if (m_lastPlay)
        subStopAlarm();
    else if (std::exchange(m_repeatDue, false))
        repeat();
}

void SoundingCycle::tmrAlarmSoundFlash_Timer()
{
    setBackColour(m_snooze, m_snooze->isEnabled() ? kSnoozeFlashColour : kSnoozeColour);
    m_snooze->setEnabled(!m_snooze->isEnabled());
}

void SoundingCycle::subStopAlarm()
{
    end();
    m_notifier.close();
}

void SoundingCycle::end()
{
    const bool sounding = std::exchange(m_playing, 0) != 0;
    m_repeatDue = false;
    m_lastPlay = false;
    tmrAlarmSoundFlash->stop();
    m_state.lngAlarmPlaysLeft = 0;
    tmrAlarmSound->setInterval(0);
    tmrAlarmSound->stop();
    m_snooze->setVisible(false);
    m_snooze->setText(QStringLiteral("click me to turn off the alarm"));
    m_snooze->setEnabled(false);
    setBackColour(m_snooze, kSnoozeColour);
    // Silence what sounds now, not only the plays to come.
    if (sounding)
        m_sound.stop();
}

void SoundingCycle::subShowPlaysLeft()
{
    m_snooze->setText(QStringLiteral("turn off? %1 alarms to play").arg(m_state.lngAlarmPlaysLeft));
}
