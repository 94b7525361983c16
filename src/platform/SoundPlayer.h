#pragma once

#include <QString>

#include <functional>

// Sound that never waits: play() starts a play and returns at once, and the
// player reports the play's end on the caller's thread. Checking, opening
// and decoding the file happen off that thread, so a file on a mount that
// hangs or an audio server that does not answer never holds up the caller.
class SoundPlayer {
public:
    // Runs once when a play has ended, however it ended: played out,
    // stopped, or without an audio server. `found` is false when the path
    // asked for was missing, not a regular file, or not a sound.
    using Ended = std::function<void(bool found)>;

    virtual ~SoundPlayer() = default;
    // Plays `path`; where it cannot be played, `fallback` plays instead, and
    // where that cannot either, a short tone the player makes. An empty
    // `fallback` means nothing instead.
    virtual void play(const QString &path, const QString &fallback, Ended ended) = 0;
    virtual void beep() = 0;
    // Silences every play at once; each still reports its end.
    virtual void stop() = 0;
    // A hint that `path` (or its fallback) is likely to be played within the
    // next minute, so the player may get it ready and start it at once.
    virtual void prepare(const QString &path, const QString &fallback) = 0;
};
