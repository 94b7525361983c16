#include "platform/qt/ModuleSoundPlayer.h"

#include <QApplication>
#include <QThread>

ModuleSoundPlayer::ModuleSoundPlayer(const QString &modulePath) : m_library(modulePath) {}

ModuleSoundPlayer::~ModuleSoundPlayer()
{
    if (m_loader) {
        m_loader->wait();
        delete m_loader;
    }
    // The module stays loaded: its player's threads may still be ending.
    m_player.reset();
}

void ModuleSoundPlayer::loadInBackground()
{
    if (m_tried || m_loader)
        return;
    m_loader = QThread::create([this] { m_library.load(); });
    connect(m_loader, &QThread::finished, this, &ModuleSoundPlayer::loaded);
    m_loader->start();
}

void ModuleSoundPlayer::loaded()
{
    if (m_loader) {
        m_loader->wait();
        delete m_loader;
        m_loader = nullptr;
    }
    m_tried = true;
    using Factory = SoundPlayer *(*)();
    if (const auto make = reinterpret_cast<Factory>(m_library.resolve(kFactory)))
        m_player.reset(make());
    else
        qWarning("No sound: %s", qPrintable(m_library.errorString()));
    if (m_prepare && m_player)
        m_player->prepare(m_prepare->first, m_prepare->second);
    m_prepare.reset();
    for (Play &play : std::exchange(m_waiting, {}))
        this->play(play.path, play.fallback, std::move(play.ended));
}

void ModuleSoundPlayer::prepare(const QString &path, const QString &fallback)
{
    if (m_player)
        return m_player->prepare(path, fallback);
    m_prepare.emplace(path, fallback);
    loadInBackground();
}

void ModuleSoundPlayer::play(const QString &path, const QString &fallback, Ended ended)
{
    if (m_player)
        return m_player->play(path, fallback, std::move(ended));
    if (m_tried) {
        // Without its module the program cannot play a file: a beep at
        // least, and the play ends as one that found nothing.
        QApplication::beep();
        QMetaObject::invokeMethod(this, [ended = std::move(ended)] { ended(false); }, Qt::QueuedConnection);
        return;
    }
    // Even unprepared, the window's thread never waits for the disk.
    m_waiting.push_back({path, fallback, std::move(ended)});
    loadInBackground();
}

void ModuleSoundPlayer::beep()
{
    QApplication::beep();
}

void ModuleSoundPlayer::stop()
{
    if (m_player)
        m_player->stop();
    // Plays still waiting for the module end silenced, as stopped ones do.
    for (Play &play : std::exchange(m_waiting, {}))
        QMetaObject::invokeMethod(this, [ended = std::move(play.ended)] { ended(true); }, Qt::QueuedConnection);
}
