#include "fakes/TestAppDir.h"

#include <QDir>
#include <QFile>

TestAppDir::TestAppDir()
{
    if (!m_dir.isValid()) {
        qWarning("TestAppDir: cannot create a temporary folder: %s", qPrintable(m_dir.errorString()));
        return;
    }
    const QDir staged(QStringLiteral(STAGED_APP_DIR));
    for (const QString &name : staged.entryList(QDir::Files | QDir::Hidden)) {
        const QString target = filePath(name);
        if (!QFile::copy(staged.filePath(name), target)) {
            qWarning("TestAppDir: cannot copy %s", qPrintable(name));
            continue;
        }
        // Tests change these files; a read-only original must not stop them.
        QFile::setPermissions(target, QFile::permissions(target) | QFile::ReadOwner | QFile::WriteOwner);
    }
}

QString TestAppDir::path() const
{
    return m_dir.path();
}

QString TestAppDir::filePath(const QString &name) const
{
    return m_dir.filePath(name);
}

QString TestAppDir::dbPath() const
{
    return filePath(QStringLiteral("alarmclock.mdb"));
}

bool TestAppDir::remove(const QString &name)
{
    return QFile::remove(filePath(name));
}

bool TestAppDir::writeBytes(const QString &name, const QByteArray &bytes)
{
    QFile file(filePath(name));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    return file.write(bytes) == bytes.size();
}
