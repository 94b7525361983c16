#pragma once

#include "platform/Platform.h"

#include "fakes/FakeAppDirectory.h"
#include "fakes/FakeAutostart.h"
#include "fakes/FakeClock.h"
#include "fakes/FakeColourPicker.h"
#include "fakes/FakeFileSystem.h"
#include "fakes/FakeInputBox.h"
#include "fakes/FakeInstanceGuard.h"
#include "fakes/FakeMessageBox.h"
#include "fakes/FakeNotifier.h"
#include "fakes/FakePictureLoader.h"
#include "fakes/FakeProgramEnd.h"
#include "fakes/FakeSoundPlayer.h"
#include "fakes/FakeTrayIcon.h"
#include "fakes/FakeUrlOpener.h"
#include "fakes/FakeVersionInfo.h"
#include "fakes/FakeWallTimer.h"
#include "fakes/TestAppDir.h"

// One fake of every platform service, with the application folder pointing
// at a fresh private copy of the staged files.
class FakePlatform {
public:
    FakePlatform();
    FakePlatform(const FakePlatform &) = delete;
    FakePlatform &operator=(const FakePlatform &) = delete;

    TestAppDir testDir;

    FakeMessageBox messages;
    FakeInputBox input;
    FakeSoundPlayer sound;
    FakeTrayIcon tray;
    FakeUrlOpener browser;
    FakeColourPicker colours;
    FakeClock clock;
    FakeFileSystem files;
    FakeAppDirectory appDir;
    FakeInstanceGuard instance;
    FakeVersionInfo version;
    FakeProgramEnd end;
    FakePictureLoader pictures;
    FakeWallTimer wallTimer;
    FakeNotifier notifier;
    FakeAutostart autostart;

    Platform platform();
};
