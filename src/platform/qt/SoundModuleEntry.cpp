// The sound module's one entry point, looked up by name when it is loaded.

#include "platform/qt/PulseSoundPlayer.h"

extern "C" Q_DECL_EXPORT SoundPlayer *alarmclock_make_sound_player()
{
    return new PulseSoundPlayer();
}
