#pragma once

#include <QString>

// Synchronous sound: play() returns when the sound has ended, or at once when
// it cannot be played (no audio server, undecodable file).
class SoundPlayer {
public:
    virtual ~SoundPlayer() = default;
    virtual void play(const QString &path) = 0;
    virtual void beep() = 0;
};
