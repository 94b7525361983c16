#pragma once

#include "platform/SoundPlayer.h"

#include <QLibrary>
#include <QObject>

#include <memory>
#include <optional>
#include <vector>

class QThread;

// The sound stack (PulseAudio, libsndfile and the codecs it pulls in) lives
// in a module of its own, loaded when a sound is first near rather than at
// start-up: on a worker thread, by prepare(), which the tick calls in the
// minute before an alarm, or by the first play nobody prepared (a sound
// test), which then starts as soon as the module is in.
class ModuleSoundPlayer : public QObject, public SoundPlayer {
    Q_OBJECT
public:
    explicit ModuleSoundPlayer(const QString &modulePath);
    ~ModuleSoundPlayer() override;

    void play(const QString &path, const QString &fallback, Ended ended) override;
    void beep() override;
    void stop() override;
    void prepare(const QString &path, const QString &fallback) override;

    // The name the module's player is made by.
    static constexpr const char *kFactory = "alarmclock_make_sound_player";

private:
    struct Play {
        QString path, fallback;
        Ended ended;
    };

    // Starts loading the module on a worker, once.
    void loadInBackground();
    // On this thread, with the library loaded (or not): makes the player and
    // hands it what was asked for meanwhile.
    void loaded();

    QLibrary m_library;
    QThread *m_loader = nullptr;
    bool m_tried = false;
    std::unique_ptr<SoundPlayer> m_player;
    std::optional<std::pair<QString, QString>> m_prepare;
    std::vector<Play> m_waiting;
};
