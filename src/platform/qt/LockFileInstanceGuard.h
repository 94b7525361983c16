#pragma once

#include "platform/InstanceGuard.h"

#include <QLockFile>
#include <QString>

#include <memory>

class QSocketNotifier;

// One running copy per executable file and user, through a lock file in the
// user's runtime folder. A lock whose owner died is taken over; a live
// owner's lock never goes stale, however long it has been held. The owner
// listens on a Unix socket beside the lock, where a later copy knocks to
// have the window brought forward: a plain socket, since a knock carries no
// data and Qt's local sockets would bring in its whole network library.
class LockFileInstanceGuard : public InstanceGuard {
public:
    LockFileInstanceGuard();
    explicit LockFileInstanceGuard(const QString &lockPath);
    ~LockFileInstanceGuard() override;

    bool previousInstanceRunning() override;
    void askPreviousToShow() override;

    QString lockPath() const { return m_path; }

    // The lock file this executable uses: named after a hash of its full
    // path and the user, so copies in different folders, or run by different
    // users, do not block each other.
    static QString defaultLockPath();

private:
    QString socketPath() const { return m_path + QStringLiteral(".socket"); }

    QString m_path;
    QLockFile m_lock;
    void listen();
    void answerKnocks();

    int m_listener = -1;
    std::unique_ptr<QSocketNotifier> m_knocks;
};
