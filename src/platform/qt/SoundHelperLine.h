#pragma once

#include <QByteArray>
#include <QString>

// What the program and its sound helper say to each other, a line each,
// fields separated by spaces and percent-encoded so that any path fits:
//   to the helper:   "PREPARE path fallback", "PLAY id path fallback", "STOP"
//   from the helper: "ENDED id found", found being 1 or 0
namespace SoundHelperLine {

inline QByteArray field(const QString &text)
{
    return text.toUtf8().toPercentEncoding();
}

inline QString text(const QByteArray &field)
{
    return QString::fromUtf8(QByteArray::fromPercentEncoding(field));
}

} // namespace SoundHelperLine
