#pragma once

#include "platform/SoundPlayer.h"

#include <QStringList>
#include <functional>

class FakeSoundPlayer : public SoundPlayer {
public:
    QStringList played;
    int beeps = 0;
    int stops = 0;
    // Runs inside play(), as if the sound were still playing.
    std::function<void(const QString &path)> onPlay;

    void play(const QString &path) override;
    void beep() override;
    void stop() override { ++stops; }
};
