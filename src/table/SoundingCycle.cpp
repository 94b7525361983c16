#include "table/SoundingCycle.h"

#include "appearance/WidgetColours.h"
#include "platform/Notifier.h"
#include "platform/SoundPlayer.h"
#include "rules/AppError.h"

#include <QCoreApplication>
#include <QPushButton>
#include <QTimer>

#include <limits>

namespace {

constexpr qint32 kSnoozeColour = 0xC0C0FF;
constexpr qint32 kSnoozeFlashColour = 0x8080FF;
constexpr int kRepeatMs = 15000;

void letPendingEventsRun() { QCoreApplication::processEvents(); }

} // namespace

SoundingCycle::SoundingCycle(SoundPlayer &sound, Notifier &notifier, AlarmState &state, QPushButton *snooze,
                             std::function<void(qint16)> playRowSound, QObject *parent)
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
    m_state.lngAlarmPlaysLeft = times - 1;
    const quint64 stops = m_stops;
    if (m_state.lngAlarmPlaysLeft > 0) {
        tmrAlarmSoundFlash->start();
        m_snooze->setVisible(true);
        tmrAlarmSound->setInterval(kRepeatMs);
        tmrAlarmSound->start();
        letPendingEventsRun();
        if (m_stops != stops)
            return; // stopped before the first play
    }
    playOnce();
    // A single play is the whole cycle.
    if (m_state.lngAlarmPlaysLeft < 1 && m_stops == stops)
        m_notifier.close();
}

void SoundingCycle::tmrAlarmSound_Timer()
{
    if (m_playing) {
        m_repeatDue = true;
        return;
    }
    m_state.lngAlarmPlaysLeft -= 1;
    m_state.bEvaluateNow = true;
    subShowPlaysLeft();
    quint64 stops = m_stops;
    letPendingEventsRun();
    if (m_stops != stops)
        return; // the user stopped the alarm meanwhile
    if (m_state.lngAlarmPlaysLeft < 1)
        subStopAlarm(); // the count is used up; its last play still sounds
    stops = m_stops;
    letPendingEventsRun();
    if (m_stops == stops)
        playOnce();
}

void SoundingCycle::playOnce()
{
    m_sound.beep();
    m_playing = true;
    m_playRowSound(m_state.intAlarmRow);
    m_playing = false;
    if (!m_repeatDue)
        return;
    m_repeatDue = false;
    // Run from the event loop, not from here: a long sound would otherwise
    // nest every later play inside this one.
    QTimer::singleShot(0, this, [this] {
        if (tmrAlarmSound->isActive())
            tmrAlarmSound_Timer();
    });
}

void SoundingCycle::tmrAlarmSoundFlash_Timer()
{
    setBackColour(m_snooze, m_snooze->isEnabled() ? kSnoozeFlashColour : kSnoozeColour);
    m_snooze->setEnabled(!m_snooze->isEnabled());
}

void SoundingCycle::subStopAlarm()
{
    ++m_stops;
    m_repeatDue = false;
    tmrAlarmSoundFlash->stop();
    m_state.lngAlarmPlaysLeft = 0;
    tmrAlarmSound->setInterval(0);
    tmrAlarmSound->stop();
    m_snooze->setVisible(false);
    m_snooze->setText(QStringLiteral("click me to turn off the alarm"));
    m_snooze->setEnabled(false);
    setBackColour(m_snooze, kSnoozeColour);
    // Silence what sounds now, not only the plays to come.
    m_sound.stop();
    m_notifier.close();
}

void SoundingCycle::subShowPlaysLeft()
{
    m_snooze->setText(QStringLiteral("turn off? %1 alarms to play").arg(m_state.lngAlarmPlaysLeft));
}
