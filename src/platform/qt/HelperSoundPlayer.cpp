#include "platform/qt/HelperSoundPlayer.h"

#include "platform/qt/SoundHelperLine.h"

#include <QApplication>
#include <QProcess>

#include <cerrno>
#include <sys/socket.h>
#include <unistd.h>

using SoundHelperLine::field;

HelperSoundPlayer::HelperSoundPlayer(const QString &helperPath, std::chrono::milliseconds afterPlay,
                                     std::chrono::milliseconds afterPrepare)
    : m_helperPath(helperPath), m_afterPlay(afterPlay), m_afterPrepare(afterPrepare)
{
    m_linger.setSingleShot(true);
    m_linger.callOnTimeout(this, &HelperSoundPlayer::retireIfIdle);
}

HelperSoundPlayer::~HelperSoundPlayer()
{
    if (!m_helper)
        return;
    m_helper->disconnect(this);
    ::close(std::exchange(m_input, -1));
    if (!m_helper->waitForFinished(3000))
        m_helper->kill();
}

void HelperSoundPlayer::startHelper()
{
    // The helper reads its commands from a socket of this player's own rather
    // than QProcess's pipe, whose writes wait for the event loop's next turn:
    // a PLAY is an alarm's sound, and goes out when it is given. A socket, so
    // that a helper gone meanwhile is an error, never a SIGPIPE.
    int pair[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, pair) != 0)
        return;
    auto *helper = m_helper = new QProcess(this);
    helper->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    helper->setStandardInputFile(QProcess::nullDevice());
    const int readEnd = pair[0];
    helper->setChildProcessModifier([readEnd] { ::dup2(readEnd, STDIN_FILENO); });
    connect(helper, &QProcess::readyReadStandardOutput, this, [this, helper] {
        while (helper->canReadLine())
            report(helper->readLine().trimmed());
    });
    connect(helper, &QProcess::finished, this, [this, helper] { lost(helper, true); });
    connect(helper, &QProcess::errorOccurred, this, [this, helper](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            lost(helper, false);
    });
    helper->start(m_helperPath, {});
    ::close(pair[0]);
    if (m_helper != helper) { // it failed to start there and then
        ::close(pair[1]);
        return;
    }
    m_input = pair[1];
}

void HelperSoundPlayer::send(const QByteArray &command)
{
    if (!m_helper)
        startHelper();
    if (m_input < 0)
        return endAll(false);
    // In order through one socket, so a STOP reaches every play sent before
    // it. A helper that lets it fill up has hung: it is ended, and its plays
    // with it.
    const QByteArray line = command + '\n';
    ssize_t written;
    do
        written = ::send(m_input, line.constData(), size_t(line.size()), MSG_NOSIGNAL | MSG_DONTWAIT);
    while (written < 0 && errno == EINTR);
    if (written != line.size())
        m_helper->kill();
}

void HelperSoundPlayer::report(const QByteArray &line)
{
    const QList<QByteArray> f = line.split(' ');
    if (f.size() != 3 || f[0] != "ENDED")
        return;
    const auto play = m_playing.find(f[1].toULongLong());
    if (play == m_playing.end())
        return;
    const Ended ended = std::move(play->second);
    m_playing.erase(play);
    if (m_playing.empty())
        keepFor(m_afterPlay);
    ended(f[2] == "1");
}

void HelperSoundPlayer::lost(QProcess *helper, bool started)
{
    helper->deleteLater();
    if (helper != m_helper)
        return; // one retired while idle
    m_helper = nullptr;
    if (m_input >= 0)
        ::close(std::exchange(m_input, -1));
    endAll(started);
}

void HelperSoundPlayer::endAll(bool found)
{
    if (m_playing.empty())
        return;
    // A helper that is missing or died on a file: at least the bell, and
    // each play ends; the next starts a new helper.
    QApplication::beep();
    // Queued, as a report from the helper would be: never inside play().
    for (auto &[id, ended] : std::exchange(m_playing, {}))
        QMetaObject::invokeMethod(this, [ended = std::move(ended), found] { ended(found); }, Qt::QueuedConnection);
}

void HelperSoundPlayer::keepFor(std::chrono::milliseconds time)
{
    const QDeadlineTimer until(time);
    if (m_linger.isActive() && until < m_keepUntil)
        return;
    m_keepUntil = until;
    m_linger.start(time);
}

void HelperSoundPlayer::retireIfIdle()
{
    // A play still running extends the helper's life when it ends.
    if (!m_helper || !m_playing.empty())
        return;
    // Its input closed, it ends on its own; lost() then deletes it.
    ::close(std::exchange(m_input, -1));
    m_helper = nullptr;
}

void HelperSoundPlayer::prepare(const QString &path, const QString &fallback)
{
    send("PREPARE " + field(path) + ' ' + field(fallback));
    keepFor(m_afterPrepare);
}

void HelperSoundPlayer::play(const QString &path, const QString &fallback, Ended ended)
{
    const quint64 id = ++m_lastId;
    m_playing.emplace(id, std::move(ended));
    send("PLAY " + QByteArray::number(id) + ' ' + field(path) + ' ' + field(fallback));
}

void HelperSoundPlayer::beep()
{
    QApplication::beep();
}

void HelperSoundPlayer::stop()
{
    if (m_helper)
        send("STOP");
}
