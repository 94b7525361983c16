#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

// A private application folder for one test: a fresh copy of every file of
// the build's staged application folder, deleted afterwards.
class TestAppDir {
public:
    TestAppDir()
    {
        const QDir staged(QStringLiteral(STAGED_APP_DIR));
        for (const QString &name : staged.entryList(QDir::Files)) {
            QFile::copy(staged.filePath(name), filePath(name));
            // Tests change these files; a read-only original must not stop them.
            QFile::setPermissions(filePath(name), QFile::ReadOwner | QFile::WriteOwner);
        }
    }
    QString path() const { return m_dir.path(); }
    QString filePath(const QString &name) const { return m_dir.filePath(name); }
    QString dbPath() const { return filePath(QStringLiteral("alarmclock.mdb")); }
    bool remove(const QString &name) { return QFile::remove(filePath(name)); }
    bool writeBytes(const QString &name, const QByteArray &bytes)
    {
        QFile file(filePath(name));
        return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size();
    }

private:
    QTemporaryDir m_dir;
};
