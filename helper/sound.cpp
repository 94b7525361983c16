// The program's sound stack in a process of its own (PulseAudio, libsndfile
// and its codecs), so that the program holds none of it while no sound is
// near, and a sound file that crashes a decoder cannot take the clock down.
// It takes commands on its standard input, reports each play's end on its
// standard output, and ends when its input closes.
#include "platform/qt/PulseSoundPlayer.h"
#include "platform/qt/SoundHelperLine.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <cerrno>
#include <cstdio>
#include <unistd.h>

using SoundHelperLine::text;

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    PulseSoundPlayer player;

    const auto obey = [&player](const QByteArray &line) {
        const QList<QByteArray> f = line.split(' ');
        if (f[0] == "STOP") {
            player.stop();
        } else if (f[0] == "PREPARE" && f.size() == 3) {
            player.prepare(text(f[1]), text(f[2]));
        } else if (f[0] == "PLAY" && f.size() == 4) {
            player.play(text(f[2]), text(f[3]), [id = f[1]](bool found) {
                std::printf("ENDED %s %d\n", id.constData(), found ? 1 : 0);
                std::fflush(stdout);
            });
        }
    };

    QByteArray pending;
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &app, [&] {
        char buffer[4096];
        const ssize_t n = ::read(STDIN_FILENO, buffer, sizeof buffer);
        if (n < 0 && errno == EINTR)
            return;
        if (n <= 0) {
            // The program has gone or let go: every play stops with the player.
            input.setEnabled(false);
            app.quit();
            return;
        }
        pending.append(buffer, n);
        for (qsizetype end; (end = pending.indexOf('\n')) >= 0; pending.remove(0, end + 1))
            obey(pending.left(end));
    });
    return app.exec();
}
