#include "platform/qt/PulseSoundPlayer.h"

#include <QApplication>
#include <QEventLoop>
#include <QFile>

#include <pulse/context.h>
#include <pulse/mainloop.h>
#include <pulse/stream.h>
#include <sndfile.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <climits>
#include <mutex>
#include <thread>
#include <vector>

namespace {

using SteadyClock = std::chrono::steady_clock;

constexpr const char *ClientName = "Quorvel Alarm Clock";
// A small server-side buffer: the drain at the end then waits only for the
// sound itself, and the first samples are heard almost at once.
constexpr pa_usec_t TargetLatencyUs = 15000;
constexpr size_t FramesPerWrite = 1024;
// How long a prepared stream waits for its play before giving up.
constexpr std::chrono::seconds PreparedLifetime{90};
// An audio server that takes longer than this to connect, or to take more
// samples, counts as no server: the play returns and the alarm goes on.
constexpr std::chrono::seconds ServerDeadline{2};

// The file as libsndfile reads it. Only a regular file is opened: a FIFO or
// a device could block the reader for ever, so those count as missing.
struct SoundFile {
    int fd = -1;
    SNDFILE *file = nullptr;
    SF_INFO info{};

    ~SoundFile()
    {
        if (file)
            sf_close(file);
        if (fd >= 0)
            ::close(fd);
    }

    bool open(const QByteArray &path)
    {
        fd = ::open(path.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        struct stat status {};
        if (fd < 0 || ::fstat(fd, &status) != 0 || !S_ISREG(status.st_mode))
            return false;
        file = sf_open_fd(fd, SFM_READ, &info, SF_FALSE);
        return file && info.channels > 0 && info.samplerate > 0;
    }

    pa_sample_spec spec() const
    {
        return pa_sample_spec{PA_SAMPLE_S16NE, uint32_t(info.samplerate), uint8_t(info.channels)};
    }

    bool playable() const
    {
        const pa_sample_spec s = spec();
        return info.channels <= int(PA_CHANNELS_MAX) && pa_sample_spec_valid(&s);
    }
};

} // namespace

struct PulseSoundPlayer::Playback {
    QString path;
    QByteArray encodedPath;
    QByteArray streamName;
    std::thread worker;
    std::atomic<bool> cancel{false};

    // Guards `done`, `go`, `loop` and `mainloop`: the worker may only poke the
    // waiting loop while play() is still waiting in it, and others may only
    // wake the audio loop while it exists.
    std::mutex mutex;
    bool done = false;
    bool go = false;
    QEventLoop *loop = nullptr;
    pa_mainloop *mainloop = nullptr;

    // Worker-only audio objects.
    pa_context *context = nullptr;
    pa_stream *stream = nullptr;

    void stop()
    {
        cancel = true;
        std::lock_guard lock(mutex);
        if (mainloop)
            pa_mainloop_wakeup(mainloop);
    }

    // Hands a prepared play to play(): false when it has already ended.
    bool claim(QEventLoop *waiting)
    {
        std::lock_guard lock(mutex);
        if (done)
            return false;
        loop = waiting;
        go = true;
        if (mainloop)
            pa_mainloop_wakeup(mainloop);
        return true;
    }

    void run(bool prepared)
    {
        SoundFile sound;
        if (sound.open(encodedPath) && sound.playable()) {
            pa_mainloop *created = pa_mainloop_new();
            {
                std::lock_guard lock(mutex);
                mainloop = created;
            }
            if (connect(sound.spec()) && (!prepared || waitForGo()))
                writeAll(sound);
            closeConnection();
        }
        std::lock_guard lock(mutex);
        done = true;
        if (loop)
            QMetaObject::invokeMethod(loop, &QEventLoop::quit, Qt::QueuedConnection);
    }

private:
    bool failed() const
    {
        const auto broken = [](auto state, auto failedState, auto terminated) {
            return state == failedState || state == terminated;
        };
        return (context && broken(pa_context_get_state(context), PA_CONTEXT_FAILED, PA_CONTEXT_TERMINATED))
               || (stream && broken(pa_stream_get_state(stream), PA_STREAM_FAILED, PA_STREAM_TERMINATED));
    }

    // Runs the audio loop until `ready` holds. False when stopped, when the
    // connection broke, or at the deadline.
    template <typename Ready>
    bool waitUntil(SteadyClock::time_point deadline, Ready ready)
    {
        while (!ready()) {
            const auto now = SteadyClock::now();
            if (cancel.load() || failed() || now >= deadline)
                return false;
            const auto left = std::chrono::duration_cast<std::chrono::microseconds>(deadline - now).count();
            const int timeout = int(std::min<long long>(left, INT_MAX));
            if (pa_mainloop_prepare(mainloop, timeout) < 0 || pa_mainloop_poll(mainloop) < 0
                || pa_mainloop_dispatch(mainloop) < 0)
                return false;
        }
        return !cancel.load();
    }

    bool connect(const pa_sample_spec &spec)
    {
        if (!mainloop)
            return false;
        context = pa_context_new(pa_mainloop_get_api(mainloop), ClientName);
        // No autospawn: the desktop session owns the audio server, and a
        // spawn would wait inside the connect call where no deadline reaches.
        if (!context || pa_context_connect(context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0)
            return false;
        const auto deadline = SteadyClock::now() + ServerDeadline;
        if (!waitUntil(deadline, [this] { return pa_context_get_state(context) == PA_CONTEXT_READY; }))
            return false;

        stream = pa_stream_new(context, streamName.constData(), &spec, nullptr);
        pa_buffer_attr attr{};
        attr.maxlength = uint32_t(-1);
        attr.tlength = uint32_t(pa_usec_to_bytes(TargetLatencyUs, &spec));
        attr.prebuf = uint32_t(-1);
        attr.minreq = uint32_t(-1);
        attr.fragsize = uint32_t(-1);
        if (!stream
            || pa_stream_connect_playback(stream, nullptr, &attr, PA_STREAM_ADJUST_LATENCY, nullptr, nullptr) < 0)
            return false;
        return waitUntil(deadline, [this] { return pa_stream_get_state(stream) == PA_STREAM_READY; });
    }

    bool waitForGo()
    {
        return waitUntil(SteadyClock::now() + PreparedLifetime, [this] {
            std::lock_guard lock(mutex);
            return go;
        });
    }

    // How long the server may rightly take to want more: its buffer's length
    // on top of the deadline for a server that does not answer.
    SteadyClock::duration stallLimit(const pa_sample_spec &spec) const
    {
        const pa_buffer_attr *attr = pa_stream_get_buffer_attr(stream);
        const pa_usec_t buffered = attr ? pa_bytes_to_usec(attr->tlength, &spec) : 0;
        return ServerDeadline + std::chrono::microseconds(buffered);
    }

    void writeAll(SoundFile &sound)
    {
        const pa_sample_spec spec = sound.spec();
        const size_t frameBytes = size_t(spec.channels) * sizeof(short);
        const auto limit = stallLimit(spec);
        std::vector<short> samples(FramesPerWrite * spec.channels);
        const auto roomForAFrame = [&] {
            const size_t writable = pa_stream_writable_size(stream);
            return writable != size_t(-1) && writable >= frameBytes;
        };
        for (;;) {
            if (!waitUntil(SteadyClock::now() + limit, roomForAFrame))
                return;
            const size_t frames = std::min(pa_stream_writable_size(stream) / frameBytes, FramesPerWrite);
            const sf_count_t read = sf_readf_short(sound.file, samples.data(), sf_count_t(frames));
            if (read <= 0)
                break;
            if (pa_stream_write(stream, samples.data(), size_t(read) * frameBytes, nullptr, 0, PA_SEEK_RELATIVE) < 0)
                return;
        }
        // Returns when the server has played the last sample.
        bool drained = false;
        pa_operation *drain = pa_stream_drain(
            stream, [](pa_stream *, int, void *flag) { *static_cast<bool *>(flag) = true; }, &drained);
        if (!drain)
            return;
        waitUntil(SteadyClock::now() + limit, [&] { return drained; });
        pa_operation_cancel(drain);
        pa_operation_unref(drain);
    }

    void closeConnection()
    {
        // Disconnecting drops whatever the server still holds: a stopped
        // play falls silent at once.
        if (stream) {
            pa_stream_disconnect(stream);
            pa_stream_unref(stream);
            stream = nullptr;
        }
        if (context) {
            pa_context_disconnect(context);
            pa_context_unref(context);
            context = nullptr;
        }
        pa_mainloop *ended = nullptr;
        {
            std::lock_guard lock(mutex);
            std::swap(ended, mainloop);
        }
        if (ended)
            pa_mainloop_free(ended);
    }
};

PulseSoundPlayer::PulseSoundPlayer() = default;

PulseSoundPlayer::~PulseSoundPlayer()
{
    // Every worker answers a stop within one turn of its loop, whatever the
    // audio server does, so these joins are short.
    for (const auto &playback : m_playbacks)
        playback->stop();
    for (const auto &playback : m_playbacks)
        if (playback->worker.joinable())
            playback->worker.join();
}

void PulseSoundPlayer::reapFinished()
{
    for (auto it = m_playbacks.begin(); it != m_playbacks.end();) {
        bool done = false;
        {
            std::lock_guard lock((*it)->mutex);
            done = (*it)->done && !(*it)->loop;
        }
        if (done) {
            (*it)->worker.join();
            it = m_playbacks.erase(it);
        } else {
            ++it;
        }
    }
}

std::shared_ptr<PulseSoundPlayer::Playback> PulseSoundPlayer::start(const QString &path, bool prepared, QEventLoop *waiting)
{
    auto playback = std::make_shared<Playback>();
    playback->path = path;
    playback->encodedPath = QFile::encodeName(path);
    playback->streamName = path.section(QLatin1Char('/'), -1).toUtf8();
    playback->loop = waiting;
    // m_playbacks keeps the state alive until the worker has been joined.
    m_playbacks.push_back(playback);
    playback->worker = std::thread([raw = playback.get(), prepared] { raw->run(prepared); });
    return playback;
}

void PulseSoundPlayer::prepare(const QString &path)
{
    reapFinished();
    if (m_prepared) {
        std::lock_guard lock(m_prepared->mutex);
        if (m_prepared->path == path && !m_prepared->done)
            return; // already waiting for this file
    }
    if (m_prepared)
        m_prepared->stop();
    m_prepared = start(path, true);
}

void PulseSoundPlayer::play(const QString &path)
{
    reapFinished();

    QEventLoop loop;
    std::shared_ptr<Playback> playback;
    if (m_prepared && m_prepared->path == path) {
        // A prepared play that ended on its own (its server went away) is
        // replaced by a fresh one.
        if (m_prepared->claim(&loop))
            playback = m_prepared;
        m_prepared.reset();
    }
    if (!playback)
        playback = start(path, false, &loop);
    loop.exec();

    bool done = false;
    {
        std::lock_guard lock(playback->mutex);
        playback->loop = nullptr;
        done = playback->done;
    }
    if (!done) {
        // The application is quitting: stop the sound. The worker is joined
        // later (next play or the destructor).
        playback->stop();
        return;
    }
    playback->worker.join();
    m_playbacks.remove(playback);
}

void PulseSoundPlayer::stop()
{
    for (const auto &playback : m_playbacks)
        if (playback != m_prepared)
            playback->stop();
}

void PulseSoundPlayer::beep()
{
    QApplication::beep();
}
