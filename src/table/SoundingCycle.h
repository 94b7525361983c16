#pragma once

#include "links/AlarmState.h"

#include <QObject>

#include <functional>

class Notifier;
class QPushButton;
class QTimer;
class SoundPlayer;

// The sounding of a tripped alarm: the set number of plays, 15 s apart,
// while the snooze button flashes and counts down the plays to come. Driven
// by three events and nothing else: the repeat timer, the end of a play and
// Stop. Plays never overlap: a repeat that comes due while the previous play
// still sounds starts as soon as it ends. The button and the notification
// stay until the last play has ended, so Stop silences any play, the last
// one included.
class SoundingCycle : public QObject {
    Q_OBJECT
public:
    // Plays a row's sound as the table window does it; calls `ended` when
    // the play has ended.
    using PlayRowSound = std::function<void(qint16 row, std::function<void()> ended)>;

    SoundingCycle(SoundPlayer &sound, Notifier &notifier, AlarmState &state, QPushButton *snooze,
                  PlayRowSound playRowSound, QObject *parent);

    QTimer *const tmrAlarmSound;
    QTimer *const tmrAlarmSoundFlash;

    // A trip with sound on and no plays left to count: `times` plays in all,
    // the first one now. Throws AppError 6 when the count does not fit.
    void start(qint32 times);
    void tmrAlarmSound_Timer();
    void tmrAlarmSoundFlash_Timer();
    // Ends the cycle and silences the play sounding now.
    void subStopAlarm();
    void subShowPlaysLeft();

private:
    void repeat();
    // Idle again: timers off, the button hidden, the play sounding silenced.
    void end();
    void playOnce();
    void playEnded(quint64 play);

    SoundPlayer &m_sound;
    Notifier &m_notifier;
    AlarmState &m_state;
    QPushButton *const m_snooze;
    const PlayRowSound m_playRowSound;
    // The play of this cycle sounding now (numbered, so the end of one that
    // Stop cut off is told apart), or 0.
    quint64 m_playing = 0;
    quint64 m_plays = 0;
    // The repeat timer came due while a play sounded.
    bool m_repeatDue = false;
    // The count is used up: the cycle ends when the play sounding ends.
    bool m_lastPlay = false;
};
