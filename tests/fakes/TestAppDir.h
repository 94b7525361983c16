#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

// A private application folder for one test: a fresh copy of every file of
// the build's staged application folder, deleted afterwards.
class TestAppDir {
public:
    TestAppDir();

    QString path() const;
    QString filePath(const QString &name) const;
    QString dbPath() const;

    bool remove(const QString &name);
    bool writeBytes(const QString &name, const QByteArray &bytes);

private:
    QTemporaryDir m_dir;
};
