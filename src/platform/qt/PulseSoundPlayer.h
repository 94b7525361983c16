#pragma once

#include "platform/SoundPlayer.h"

#include <list>
#include <memory>

class QEventLoop;

// Plays sound files through PulseAudio (or PipeWire's PulseAudio service).
// Everything that can block (opening and decoding the file, talking to the
// audio server) runs on a worker thread under deadlines, so a FIFO, a hung
// server or a stop() never holds up the window. play() keeps the caller's
// event loop turning (timers, clicks, even another play()) until its own
// sound has ended.
class PulseSoundPlayer : public SoundPlayer {
public:
    PulseSoundPlayer();
    ~PulseSoundPlayer() override;
    PulseSoundPlayer(const PulseSoundPlayer &) = delete;
    PulseSoundPlayer &operator=(const PulseSoundPlayer &) = delete;

    void play(const QString &path) override;
    void beep() override;
    void stop() override;
    // Opens the file and a connected stream now, so that a play() of the same
    // file within the next 90 s sends its first samples at once.
    void prepare(const QString &path) override;

private:
    struct Playback;
    // Plays whose worker thread has not been joined yet.
    std::list<std::shared_ptr<Playback>> m_playbacks;
    // The one prepared play, waiting for play() of its path.
    std::shared_ptr<Playback> m_prepared;

    std::shared_ptr<Playback> start(const QString &path, bool prepared, QEventLoop *waiting = nullptr);
    void reapFinished();
};
