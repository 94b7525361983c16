#pragma once

class MessageBox;
class InputBox;
class SoundPlayer;
class TrayIcon;
class UrlOpener;
class ColourPicker;
class Clock;
class FileSystem;
class AppDirectory;
class InstanceGuard;
class VersionInfo;
class ProgramEnd;
class PictureLoader;
class WallTimer;
class Notifier;
class Autostart;
class SleepMonitor;
class WakeAlarm;
class Preferences;

// The platform services a window may use, handed to it at construction. The
// program owns one real set (main.cpp); tests own a set of fakes.
struct Platform {
    MessageBox &messages;
    InputBox &input;
    SoundPlayer &sound;
    TrayIcon &tray;
    UrlOpener &browser;
    ColourPicker &colours;
    Clock &clock;
    FileSystem &files;
    AppDirectory &appDir;
    InstanceGuard &instance;
    VersionInfo &version;
    ProgramEnd &end;
    PictureLoader &pictures;
    WallTimer &wallTimer;
    Notifier &notifier;
    Autostart &autostart;
    SleepMonitor &sleep;
    WakeAlarm &wake;
    Preferences &preferences;
};
