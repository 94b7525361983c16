#pragma once

#include "platform/SoundPlayer.h"

#include <QDeadlineTimer>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <map>

class QProcess;

// Plays through the sound helper, a process of the program's own that holds
// the sound stack (PulseAudio, libsndfile and the codecs it pulls in). The
// helper starts when a sound is near: at prepare(), which the tick calls in
// the minute before an alarm, or at the first play nobody prepared (a sound
// test), which starts as soon as the helper is up. It ends once it has been
// idle for a while, so a program that rings once a day holds no sound stack
// for the rest of it. Nothing here waits: a command is written to the
// helper's input when it is given, and reports come through the event loop.
class HelperSoundPlayer : public QObject, public SoundPlayer {
    Q_OBJECT
public:
    // The helper is kept `afterPlay` past the end of the last play (long
    // enough to bridge the gap between an alarm's plays) and `afterPrepare`
    // past a prepare() (long enough for the alarm it announced).
    HelperSoundPlayer(const QString &helperPath, std::chrono::milliseconds afterPlay,
                      std::chrono::milliseconds afterPrepare);
    // Lets the helper end its plays, which it does within 2 s.
    ~HelperSoundPlayer() override;

    void play(const QString &path, const QString &fallback, Ended ended) override;
    void beep() override;
    void stop() override;
    void prepare(const QString &path, const QString &fallback) override;

private:
    void startHelper();
    // Hands a command to the helper, starting one if none runs.
    void send(const QByteArray &command);
    void report(const QByteArray &line);
    // A helper gone or never started: each play it owed ends.
    void lost(QProcess *helper, bool started);
    void endAll(bool found);
    void keepFor(std::chrono::milliseconds time);
    void retireIfIdle();

    const QString m_helperPath;
    const std::chrono::milliseconds m_afterPlay, m_afterPrepare;
    QProcess *m_helper = nullptr;
    int m_input = -1; // the write end of the helper's input
    std::map<quint64, Ended> m_playing;
    quint64 m_lastId = 0;
    QTimer m_linger;
    QDeadlineTimer m_keepUntil;
};
