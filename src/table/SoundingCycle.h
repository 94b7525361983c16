#pragma once

#include "links/AlarmState.h"

#include <QObject>

#include <functional>

class Notifier;
class QPushButton;
class QTimer;
class SoundPlayer;

// The sounding of a tripped alarm: the set number of plays, 15 s apart,
// while the snooze button flashes and counts down the plays to come. Plays
// never overlap: a repeat that comes due while the previous play still
// sounds starts as soon as it ends. Any stop silences the sound at once.
class SoundingCycle : public QObject {
    Q_OBJECT
public:
    // `playRowSound` plays the sound of a row (synchronously) as the table
    // window does it, with its missing-file handling.
    SoundingCycle(SoundPlayer &sound, Notifier &notifier, AlarmState &state, QPushButton *snooze,
                  std::function<void(qint16 row)> playRowSound, QObject *parent);

    QTimer *const tmrAlarmSound;
    QTimer *const tmrAlarmSoundFlash;

    // A trip with sound on and no cycle running: `times` plays in all, the
    // first one now. Throws AppError 6 when the count does not fit.
    void start(qint32 times);
    void tmrAlarmSound_Timer();
    void tmrAlarmSoundFlash_Timer();
    void subStopAlarm();
    void subShowPlaysLeft();

private:
    void playOnce();

    SoundPlayer &m_sound;
    Notifier &m_notifier;
    AlarmState &m_state;
    QPushButton *const m_snooze;
    const std::function<void(qint16)> m_playRowSound;
    // A play of this cycle is sounding; a repeat due meanwhile waits for it.
    bool m_playing = false;
    bool m_repeatDue = false;
    // Counts stops, so a step that let events run can tell that the user
    // stopped the alarm meanwhile and must not play.
    quint64 m_stops = 0;
};
