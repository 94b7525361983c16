#include "platform/qt/XdgAutostart.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

namespace {

// A path as one Exec argument: quoted, with the characters the desktop entry
// format reserves inside quotes escaped.
QString execArgument(const QString &path)
{
    QString quoted;
    for (const QChar c : path) {
        if (c == u'"' || c == u'`' || c == u'$' || c == u'\\')
            quoted += u'\\';
        quoted += c;
    }
    // The format escapes backslashes once more in every string value.
    quoted.replace(QStringLiteral("\\"), QStringLiteral("\\\\"));
    // A lone % would start a field code.
    quoted.replace(QStringLiteral("%"), QStringLiteral("%%"));
    return u'"' + quoted + u'"';
}

} // namespace

XdgAutostart::XdgAutostart(QString program) : m_program(std::move(program)) {}

QString XdgAutostart::entryPath() const
{
    // $XDG_CONFIG_HOME, or ~/.config when it is not set.
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
           + QStringLiteral("/autostart/quorvel-alarmclock.desktop");
}

bool XdgAutostart::enabled() const
{
    QFile entry(entryPath());
    if (!QFileInfo(entry).isFile() || !entry.open(QIODevice::ReadOnly | QIODevice::Text))
        return false;
    // The desktops' own autostart settings switch an entry off in place.
    bool inEntry = false;
    while (!entry.atEnd()) {
        const QByteArray line = entry.readLine().trimmed();
        const qsizetype equals = line.indexOf('=');
        if (line.startsWith('[')) {
            inEntry = line == "[Desktop Entry]";
        } else if (inEntry && equals > 0) {
            const QByteArray key = line.left(equals).trimmed(), value = line.mid(equals + 1).trimmed();
            if ((key == "Hidden" && value == "true") || (key == "X-GNOME-Autostart-enabled" && value == "false"))
                return false;
        }
    }
    return true;
}

QByteArray XdgAutostart::entryText(const QString &program)
{
    return QByteArrayLiteral("[Desktop Entry]\n"
                             "Type=Application\n"
                             "Name=Quorvel Alarm Clock\n"
                             "Comment=Starts the alarm clock with your session\n")
           + "Exec=" + execArgument(program).toUtf8() + '\n'
           + QByteArrayLiteral("Icon=quorvel-alarmclock\n"
                               "Terminal=false\n"
                               "X-GNOME-Autostart-enabled=true\n");
}

bool XdgAutostart::setEnabled(bool on)
{
    const QString path = entryPath();
    if (!on)
        return !QFileInfo::exists(path) || QFile::remove(path);
    if (!QDir().mkpath(QFileInfo(path).absolutePath()))
        return false;
    // Written whole or not at all: a session must never read half an entry.
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write(entryText(m_program));
    return file.commit();
}
