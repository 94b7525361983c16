#include "platform/qt/LockFileInstanceGuard.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QSocketNotifier>
#include <QStandardPaths>

#include <cstring>
#include <optional>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

// The socket's address, if its path fits one.
std::optional<sockaddr_un> addressOf(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (name.size() >= qsizetype(sizeof address.sun_path))
        return std::nullopt;
    std::memcpy(address.sun_path, name.constData(), name.size());
    return address;
}

} // namespace

QString LockFileInstanceGuard::defaultLockPath()
{
    QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (folder.isEmpty() || !QDir().mkpath(folder))
        folder = QDir::tempPath();
    // Per user as well: the runtime folder is the user's own, but the
    // temporary folder it falls back to is shared by everyone.
    const QByteArray key = QCoreApplication::applicationFilePath().toUtf8() + '\0' + QByteArray::number(::getuid());
    const QByteArray hash = QCryptographicHash::hash(key, QCryptographicHash::Sha256)
                                .toHex()
                                .left(16);
    return QDir(folder).filePath(QStringLiteral("quorvel-alarmclock-%1.lock").arg(QString::fromLatin1(hash)));
}

LockFileInstanceGuard::LockFileInstanceGuard() : LockFileInstanceGuard(defaultLockPath()) {}

LockFileInstanceGuard::~LockFileInstanceGuard()
{
    if (m_listener < 0)
        return;
    m_knocks.reset();
    ::close(m_listener);
    QFile::remove(socketPath());
}

LockFileInstanceGuard::LockFileInstanceGuard(const QString &lockPath) : m_path(lockPath), m_lock(lockPath)
{
    // Age alone never makes a lock stale; Qt still takes over a lock whose
    // owning process no longer exists.
    m_lock.setStaleLockTime(0);
}

bool LockFileInstanceGuard::previousInstanceRunning()
{
    if (m_lock.isLocked())
        return false;
    if (m_lock.tryLock(0)) {
        listen();
        return false;
    }
    // Only a lock held by someone else counts; an unwritable folder must not
    // keep the program from starting.
    return m_lock.error() == QLockFile::LockFailedError;
}

void LockFileInstanceGuard::listen()
{
    const auto address = addressOf(socketPath());
    if (!address)
        return;
    // The socket of a copy that died is this lock's to clear.
    QFile::remove(socketPath());
    const int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (fd < 0)
        return;
    // Only this user may knock; the umask is the process's own, so set it
    // on the file rather than around bind().
    if (::bind(fd, reinterpret_cast<const sockaddr *>(&*address), sizeof *address) != 0
        || ::chmod(address->sun_path, 0600) != 0 || ::listen(fd, 8) != 0) {
        ::close(fd);
        return;
    }
    m_listener = fd;
    m_knocks = std::make_unique<QSocketNotifier>(fd, QSocketNotifier::Read);
    QObject::connect(m_knocks.get(), &QSocketNotifier::activated, m_knocks.get(), [this] { answerKnocks(); });
}

void LockFileInstanceGuard::answerKnocks()
{
    // A knock is the whole message: take every waiting one, then answer once.
    int knocks = 0;
    for (int fd; (fd = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC)) >= 0; ++knocks)
        ::close(fd);
    if (knocks > 0)
        showRequested();
}

void LockFileInstanceGuard::askPreviousToShow()
{
    const auto address = addressOf(socketPath());
    if (!address)
        return;
    // Never waits: a copy that hangs with a full backlog is simply not told.
    const int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (fd < 0)
        return;
    ::connect(fd, reinterpret_cast<const sockaddr *>(&*address), sizeof *address);
    ::close(fd);
}
