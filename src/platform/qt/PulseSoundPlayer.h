#pragma once

#include "platform/SoundPlayer.h"

#include <list>
#include <memory>

// Plays sound files through PulseAudio. play() keeps the caller's event loop
// turning (timers, clicks, even another play()) until its own sound has ended.
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

    std::shared_ptr<Playback> openFile(const QString &path);
    void reapFinished();
};
