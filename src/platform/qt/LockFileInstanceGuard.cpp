#include "platform/qt/LockFileInstanceGuard.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QLocalSocket>
#include <QStandardPaths>

#include <unistd.h>

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
        // A knock is the whole message. The socket of a copy that died is
        // this lock's to clear.
        QObject::connect(&m_server, &QLocalServer::newConnection, &m_server, [this] {
            while (QLocalSocket *knock = m_server.nextPendingConnection())
                knock->deleteLater();
            showRequested();
        });
        QLocalServer::removeServer(socketPath());
        m_server.setSocketOptions(QLocalServer::UserAccessOption);
        m_server.listen(socketPath());
        return false;
    }
    // Only a lock held by someone else counts; an unwritable folder must not
    // keep the program from starting.
    return m_lock.error() == QLockFile::LockFailedError;
}

void LockFileInstanceGuard::askPreviousToShow()
{
    QLocalSocket knock;
    knock.connectToServer(socketPath());
    // A copy that ends at once may wait this long for one that hangs.
    if (knock.waitForConnected(1000))
        knock.disconnectFromServer();
}
