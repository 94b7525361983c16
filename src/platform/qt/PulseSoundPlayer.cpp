#include "platform/qt/PulseSoundPlayer.h"

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
#include <cmath>
#include <condition_variable>
#include <mutex>
#include <numbers>
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
// samples, counts as no server: the play ends and the alarm goes on.
constexpr std::chrono::seconds ServerDeadline{2};
// How long the player's end waits for its workers; one blocked in the file
// system (a mount that hangs) is left behind rather than waited for.
constexpr std::chrono::milliseconds EndDeadline{1500};

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

// What a play sends: a sound file, or, where no file can be played, three
// short pips the player makes itself.
class Source {
public:
    bool open(const QByteArray &path)
    {
        m_file = std::make_unique<SoundFile>();
        if (m_file->open(path) && m_file->playable())
            return true;
        m_file.reset();
        return false;
    }

    void makeTone()
    {
        constexpr int rate = 44100, pipMs = 150, gapMs = 100, fadeMs = 5;
        for (int pip = 0; pip < 3; ++pip) {
            if (pip > 0)
                m_tone.insert(m_tone.end(), size_t(rate * gapMs / 1000), short(0));
            const int frames = rate * pipMs / 1000, fade = rate * fadeMs / 1000;
            for (int i = 0; i < frames; ++i) {
                const double edge = std::min({1.0, double(i) / fade, double(frames - i) / fade});
                m_tone.push_back(short(16000 * edge * std::sin(2 * std::numbers::pi * 880 * i / rate)));
            }
        }
    }

    bool ready() const { return m_file || !m_tone.empty(); }

    pa_sample_spec spec() const
    {
        return m_file ? m_file->spec() : pa_sample_spec{PA_SAMPLE_S16NE, 44100, 1};
    }

    // Up to `frames` frames into `samples`; 0 at the end.
    sf_count_t read(short *samples, sf_count_t frames)
    {
        if (m_file)
            return sf_readf_short(m_file->file, samples, frames);
        const sf_count_t count = std::min<sf_count_t>(frames, sf_count_t(m_tone.size() - m_played));
        std::copy_n(m_tone.begin() + ptrdiff_t(m_played), count, samples);
        m_played += size_t(count);
        return count;
    }

private:
    std::unique_ptr<SoundFile> m_file;
    std::vector<short> m_tone;
    size_t m_played = 0;
};

} // namespace

struct PulseSoundPlayer::Playback : std::enable_shared_from_this<Playback> {
    QByteArray encodedPath;
    QByteArray encodedFallback;
    QString path;
    QString fallback;
    QByteArray streamName;
    bool toneOnly = false;
    std::thread worker;
    std::atomic<bool> cancel{false};
    // Window thread only: what to tell when the play has ended.
    Ended report;

    // Guards what follows: the worker reports to the player only while it is
    // still there, and others wake the audio loop only while it exists.
    std::mutex mutex;
    std::condition_variable ended;
    PulseSoundPlayer *owner = nullptr;
    bool done = false;
    bool found = true;
    bool go = false;
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
    bool claim()
    {
        std::lock_guard lock(mutex);
        if (done)
            return false;
        go = true;
        if (mainloop)
            pa_mainloop_wakeup(mainloop);
        return true;
    }

    void run(bool prepared)
    {
        bool playable = false;
        Source sound = open(playable);
        {
            std::lock_guard lock(mutex);
            found = playable;
        }
        if (sound.ready() && !cancel.load()) {
            pa_mainloop *created = pa_mainloop_new();
            {
                std::lock_guard lock(mutex);
                mainloop = created;
            }
            if (connect(sound.spec()) && (!prepared || waitForGo()))
                writeAll(sound);
            closeConnection();
        }
        finish();
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

    // The file asked for, else the fallback, else the pips; nothing at all
    // when there is no fallback.
    Source open(bool &found)
    {
        Source source;
        if (toneOnly) {
            source.makeTone();
            return source;
        }
        found = source.open(encodedPath);
        if (!found && !encodedFallback.isEmpty() && (encodedFallback == encodedPath || !source.open(encodedFallback)))
            source.makeTone();
        return source;
    }

    // Done: the player hears of it through its event loop, if it is still there.
    void finish()
    {
        std::lock_guard lock(mutex);
        done = true;
        ended.notify_all();
        if (owner)
            QMetaObject::invokeMethod(
                &owner->m_receiver, [owner = owner, self = shared_from_this()] { owner->finished(self); },
                Qt::QueuedConnection);
    }

    // How long the server may rightly take to want more: its buffer's length
    // on top of the deadline for a server that does not answer.
    SteadyClock::duration stallLimit(const pa_sample_spec &spec) const
    {
        const pa_buffer_attr *attr = pa_stream_get_buffer_attr(stream);
        const pa_usec_t buffered = attr ? pa_bytes_to_usec(attr->tlength, &spec) : 0;
        return ServerDeadline + std::chrono::microseconds(buffered);
    }

    void writeAll(Source &sound)
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
            const sf_count_t read = sound.read(samples.data(), sf_count_t(frames));
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
    for (const auto &playback : m_playbacks) {
        {
            std::lock_guard lock(playback->mutex);
            playback->owner = nullptr;
        }
        playback->stop();
    }
    // Every worker answers a stop within one turn of its loop, whatever the
    // audio server does; only one stuck in the file system may not.
    const auto deadline = SteadyClock::now() + EndDeadline;
    for (const auto &playback : m_playbacks) {
        std::unique_lock lock(playback->mutex);
        const bool done = playback->ended.wait_until(lock, deadline, [&] { return playback->done; });
        lock.unlock();
        if (done)
            playback->worker.join();
        else
            playback->worker.detach(); // it holds its own share of the state
    }
}

std::shared_ptr<PulseSoundPlayer::Playback> PulseSoundPlayer::start(const QString &path, const QString &fallback,
                                                                    bool prepared, bool toneOnly)
{
    auto playback = std::make_shared<Playback>();
    playback->path = path;
    playback->fallback = fallback;
    playback->encodedPath = QFile::encodeName(path);
    playback->encodedFallback = QFile::encodeName(fallback);
    playback->streamName = path.section(QLatin1Char('/'), -1).toUtf8();
    playback->owner = this;
    playback->toneOnly = toneOnly;
    // m_playbacks keeps the state until the worker has been joined.
    m_playbacks.push_back(playback);
    playback->worker = std::thread([playback, prepared] { playback->run(prepared); });
    return playback;
}

void PulseSoundPlayer::finished(const std::shared_ptr<Playback> &playback)
{
    playback->worker.join(); // it has reported: only its return is left
    m_playbacks.remove(playback);
    if (m_prepared == playback)
        m_prepared.reset();
    bool found = true;
    {
        std::lock_guard lock(playback->mutex);
        found = playback->found;
    }
    // Told last: the report may well start the next play.
    if (const Ended report = std::exchange(playback->report, {}))
        report(found);
}

void PulseSoundPlayer::prepare(const QString &path, const QString &fallback)
{
    if (m_prepared && m_prepared->path == path && m_prepared->fallback == fallback) {
        std::lock_guard lock(m_prepared->mutex);
        if (!m_prepared->done)
            return; // already waiting for this file
    }
    if (m_prepared)
        m_prepared->stop();
    m_prepared = start(path, fallback, true);
}

void PulseSoundPlayer::play(const QString &path, const QString &fallback, Ended ended)
{
    std::shared_ptr<Playback> playback;
    if (m_prepared && m_prepared->path == path && m_prepared->fallback == fallback) {
        // A prepared play that ended on its own (its server went away) is
        // replaced by a fresh one.
        if (m_prepared->claim())
            playback = m_prepared;
        m_prepared.reset();
    }
    if (!playback)
        playback = start(path, fallback, false);
    playback->report = std::move(ended);
}

void PulseSoundPlayer::stop()
{
    for (const auto &playback : m_playbacks)
        if (playback != m_prepared)
            playback->stop();
}

void PulseSoundPlayer::beep()
{
    // The pips, as for a sound that cannot be played: this player has no
    // display to ring the bell of.
    start(QString(), QString(), false, true);
}
