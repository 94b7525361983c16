// The real sound player against what the world may do to it: paths that are
// no sound, an audio server that never answers, a stop in mid-play, and the
// program quitting while a play hangs.

#include "platform/qt/PulseSoundPlayer.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QtEndian>
#include <QtTest>

#include <cmath>
#include <cstring>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

// A mono 16-bit 8 kHz tone of the given length.
bool writeTone(const QString &path, double seconds)
{
    const quint32 frames = quint32(seconds * 8000);
    QByteArray data(int(frames * 2), Qt::Uninitialized);
    for (quint32 i = 0; i < frames; ++i)
        qToLittleEndian<qint16>(qint16(8000 * std::sin(i * 0.3)), data.data() + 2 * i);
    QByteArray header;
    const auto u32 = [&](quint32 v) { header.append(reinterpret_cast<const char *>(&v), 4); };
    const auto u16 = [&](quint16 v) { header.append(reinterpret_cast<const char *>(&v), 2); };
    header += "RIFF";
    u32(36 + quint32(data.size()));
    header += "WAVEfmt ";
    u32(16), u16(1), u16(1), u32(8000), u32(16000), u16(2), u16(16);
    header += "data";
    u32(quint32(data.size()));
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(header + data) == header.size() + data.size();
}

// A UNIX socket that takes connections (into its backlog) and never answers.
int listenMute(const QString &path)
{
    const int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray name = QFile::encodeName(path);
    if (fd < 0 || size_t(name.size()) >= sizeof address.sun_path)
        return -1;
    std::memcpy(address.sun_path, name.constData(), size_t(name.size()));
    if (::bind(fd, reinterpret_cast<sockaddr *>(&address), sizeof address) != 0 || ::listen(fd, 16) != 0)
        return -1;
    return fd;
}

qint64 msToPlay(PulseSoundPlayer &player, const QString &path)
{
    QElapsedTimer timer;
    timer.start();
    player.play(path);
    return timer.elapsed();
}

} // namespace

class SoundPlayerTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_tmp;
    int m_hung = -1; // accepts connections and never says a word
    QProcess m_server;   // a private PulseAudio with a null sink, where installed
    QString path(const QString &name) const { return m_tmp.filePath(name); }

    void useServer(const QString &socket) { qputenv("PULSE_SERVER", "unix:" + QFile::encodeName(socket)); }

    bool startAudioServer()
    {
        const QString runtime = path(QStringLiteral("pulse"));
        QDir().mkpath(runtime);
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime);
        env.insert(QStringLiteral("PULSE_RUNTIME_PATH"), runtime);
        m_server.setProcessEnvironment(env);
        m_server.start(QStringLiteral("pulseaudio"),
                       {QStringLiteral("-n"), QStringLiteral("--daemonize=no"), QStringLiteral("--exit-idle-time=-1"),
                        QStringLiteral("-Lmodule-null-sink sink_name=test"),
                        QStringLiteral("-Lmodule-native-protocol-unix auth-anonymous=1 socket=") + runtime
                            + QStringLiteral("/native"),
                        QStringLiteral("-Lmodule-always-sink")});
        if (!m_server.waitForStarted(3000))
            return false;
        for (int i = 0; i < 100 && !QFile::exists(runtime + QStringLiteral("/native")); ++i)
            QTest::qWait(50);
        useServer(runtime + QStringLiteral("/native"));
        return QFile::exists(runtime + QStringLiteral("/native"));
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_tmp.isValid());
        QVERIFY(writeTone(path(QStringLiteral("short.wav")), 0.4));
        QVERIFY(writeTone(path(QStringLiteral("long.wav")), 20));
        QVERIFY(mkfifo(QFile::encodeName(path(QStringLiteral("fifo.wav"))).constData(), 0600) == 0);
        QFile text(path(QStringLiteral("notes.wav")));
        QVERIFY(text.open(QIODevice::WriteOnly) && text.write("not a sound\n") > 0);
        text.close();
        m_hung = listenMute(path(QStringLiteral("hung")));
        QVERIFY(m_hung >= 0);
    }

    void cleanupTestCase()
    {
        ::close(m_hung);
        m_server.kill();
        m_server.waitForFinished(2000);
    }

    // None of these may wait: a FIFO would block a reader for ever.
    void whatIsNoSoundReturnsAtOnce_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("fifo") << "fifo.wav";
        QTest::newRow("folder") << "pulse";
        QTest::newRow("text") << "notes.wav";
        QTest::newRow("missing") << "gone.wav";
        QTest::newRow("a sound, but no audio server") << "short.wav";
    }
    void whatIsNoSoundReturnsAtOnce()
    {
        QFETCH(QString, name);
        QDir().mkpath(path(QStringLiteral("pulse")));
        useServer(path(name == QStringLiteral("short.wav") ? QStringLiteral("nobody") : QStringLiteral("hung")));
        PulseSoundPlayer player;
        player.prepare(path(name));
        QCOMPARE_LT(msToPlay(player, path(name)), 500);
    }

    // A server that takes the connection and never answers counts as none:
    // the play returns after the 2 s deadline, prepared or not.
    void aHungServerCountsAsNone()
    {
        useServer(path(QStringLiteral("hung")));
        PulseSoundPlayer player;
        const qint64 plain = msToPlay(player, path(QStringLiteral("long.wav")));
        QVERIFY2(plain >= 1900 && plain < 2500, qPrintable(QString::number(plain)));
        player.prepare(path(QStringLiteral("short.wav")));
        QCOMPARE_LT(msToPlay(player, path(QStringLiteral("short.wav"))), 2500);
    }

    void stopSilencesAPlayAtOnce()
    {
        if (!startAudioServer())
            QSKIP("no PulseAudio server could be started here");
        PulseSoundPlayer player;
        // A prepared play sounds in full; it also wakes the fresh server,
        // whose first stream starts late.
        player.prepare(path(QStringLiteral("short.wav")));
        QTest::qWait(200);
        QCOMPARE_GE(msToPlay(player, path(QStringLiteral("short.wav"))), 350);

        QElapsedTimer sinceStop;
        QTimer::singleShot(1500, this, [&] {
            sinceStop.start();
            player.stop();
        });
        const qint64 played = msToPlay(player, path(QStringLiteral("long.wav")));
        QVERIFY2(sinceStop.isValid() && sinceStop.elapsed() < 100,
                 qPrintable(QStringLiteral("played %1 ms, returned %2 ms after the stop")
                                .arg(played)
                                .arg(sinceStop.isValid() ? sinceStop.elapsed() : -1)));
    }

    // Last: quitting leaves this thread's event loops ended for good.
    void quittingDuringAHungPlayEndsWithinTwoSeconds()
    {
        useServer(path(QStringLiteral("hung")));
        auto player = std::make_unique<PulseSoundPlayer>();
        QTimer::singleShot(300, [] { QCoreApplication::exit(0); });
        QElapsedTimer timer;
        timer.start();
        player->play(path(QStringLiteral("long.wav")));
        player.reset();
        // Well within the 2 s allowed: a stop wakes the worker at once.
        QCOMPARE_LT(timer.elapsed(), 1000);
    }
};

QTEST_MAIN(SoundPlayerTest)
#include "tst_soundplayer.moc"
