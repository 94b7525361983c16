#include "fakes/FakeSoundPlayer.h"

void FakeSoundPlayer::play(const QString &path)
{
    played.append(path);
    if (onPlay)
        onPlay(path);
}

void FakeSoundPlayer::beep()
{
    ++beeps;
}
