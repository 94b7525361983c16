#include "fakes/FakePlatform.h"

FakePlatform::FakePlatform() : appDir(testDir.path()) {}

Platform FakePlatform::platform()
{
    return Platform{messages, input, sound, tray, browser, colours, clock,
                    files,    appDir, instance, version, end, pictures, wallTimer, notifier, autostart};
}
