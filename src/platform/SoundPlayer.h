#pragma once

#include <QString>

// Synchronous sound: play() returns when the sound has ended, or at once when
// it cannot be played (no audio server, undecodable file).
class SoundPlayer {
public:
    virtual ~SoundPlayer() = default;
    virtual void play(const QString &path) = 0;
    virtual void beep() = 0;
    // Silences every play in progress at once; their play() calls return.
    virtual void stop() = 0;
    // A hint that this file is likely to be played within the next minute,
    // so a player may get it ready and start it without delay.
    virtual void prepare(const QString &path) { (void)path; }
};
