#pragma once

#include "platform/SoundPlayer.h"

#include <QObject>

#include <list>
#include <memory>

// Plays sound files through PulseAudio (or PipeWire's PulseAudio service).
// Each play runs on a worker thread under deadlines: it checks and opens
// the file (a FIFO, a folder or a mount that hangs never reaches the
// window's thread), talks to the audio server, and reports its end to the
// thread that asked, through the event loop.
class PulseSoundPlayer : public SoundPlayer {
public:
    PulseSoundPlayer();
    // Stops every play; ends within 2 s whatever the audio server does.
    ~PulseSoundPlayer() override;
    PulseSoundPlayer(const PulseSoundPlayer &) = delete;
    PulseSoundPlayer &operator=(const PulseSoundPlayer &) = delete;

    void play(const QString &path, const QString &fallback, Ended ended) override;
    void beep() override;
    void stop() override;
    // Opens the file and a connected stream now, so that a play() of the same
    // file within the next 90 s sends its first samples at once.
    void prepare(const QString &path, const QString &fallback) override;

private:
    struct Playback;
    // Receives the workers' reports on the thread that made the player.
    QObject m_receiver;
    // Plays whose worker thread has not been joined yet.
    std::list<std::shared_ptr<Playback>> m_playbacks;
    // The one prepared play, waiting for play() of its path.
    std::shared_ptr<Playback> m_prepared;

    std::shared_ptr<Playback> start(const QString &path, const QString &fallback, bool prepared, bool toneOnly = false);
    void finished(const std::shared_ptr<Playback> &playback);
};
