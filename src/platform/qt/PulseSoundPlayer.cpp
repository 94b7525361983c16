#include "platform/qt/PulseSoundPlayer.h"

#include <QApplication>
#include <QEventLoop>
#include <QFile>

#include <pulse/error.h>
#include <pulse/simple.h>
#include <sndfile.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace {

constexpr const char *ClientName = "Quorvel Alarm Clock";
// A small server-side buffer: the drain at the end then waits only for the
// sound itself, and a cancelled play stops almost at once.
constexpr pa_usec_t TargetLatencyUs = 15000;
constexpr sf_count_t FramesPerWrite = 1024;
// How long a prepared stream waits for its play before giving up.
constexpr std::chrono::seconds PreparedLifetime{90};

} // namespace

struct PulseSoundPlayer::Playback {
    QString path;
    SNDFILE *file = nullptr;
    SF_INFO info{};
    QByteArray streamName;

    std::thread worker;
    std::atomic<bool> cancel{false};

    // Guards `done`, `go` and `loop`: the worker may only poke the waiting
    // loop while play() is still waiting in it.
    std::mutex mutex;
    std::condition_variable wake;
    bool done = false;
    bool go = false;
    QEventLoop *loop = nullptr;

    ~Playback()
    {
        if (file)
            sf_close(file);
    }

    // A prepared playback connects first, then waits for play() to say go.
    void run(bool prepared)
    {
        pa_simple *stream = openStream();
        if (prepared) {
            std::unique_lock lock(mutex);
            wake.wait_for(lock, PreparedLifetime, [this] { return go || cancel.load(); });
            if (!go)
                cancel = true;
        }
        if (stream)
            writeSamples(stream);
        std::lock_guard lock(mutex);
        done = true;
        if (loop)
            QMetaObject::invokeMethod(loop, &QEventLoop::quit, Qt::QueuedConnection);
    }

    void stop()
    {
        cancel = true;
        std::lock_guard lock(mutex);
        wake.notify_all();
    }

    pa_simple *openStream()
    {
        pa_sample_spec spec{};
        spec.format = PA_SAMPLE_S16NE;
        spec.rate = uint32_t(info.samplerate);
        spec.channels = uint8_t(info.channels);

        pa_buffer_attr attr{};
        attr.maxlength = uint32_t(-1);
        attr.tlength = uint32_t(pa_usec_to_bytes(TargetLatencyUs, &spec));
        attr.prebuf = uint32_t(-1);
        attr.minreq = uint32_t(-1);
        attr.fragsize = uint32_t(-1);

        int error = 0;
        return pa_simple_new(nullptr, ClientName, PA_STREAM_PLAYBACK, nullptr, streamName.constData(), &spec,
                             nullptr, &attr, &error);
    }

    void writeSamples(pa_simple *stream)
    {
        int error = 0;
        std::vector<short> samples(size_t(FramesPerWrite) * size_t(info.channels));
        bool failed = false;
        while (!cancel.load()) {
            const sf_count_t frames = sf_readf_short(file, samples.data(), FramesPerWrite);
            if (frames <= 0)
                break;
            const size_t bytes = size_t(frames) * size_t(info.channels) * sizeof(short);
            if (pa_simple_write(stream, samples.data(), bytes, &error) < 0) {
                failed = true;
                break;
            }
        }
        if (cancel.load() || failed)
            pa_simple_flush(stream, &error);
        else
            pa_simple_drain(stream, &error);
        pa_simple_free(stream);
    }
};

PulseSoundPlayer::PulseSoundPlayer() = default;

PulseSoundPlayer::~PulseSoundPlayer()
{
    for (const auto &playback : m_playbacks) {
        playback->stop();
        if (playback->worker.joinable())
            playback->worker.join();
    }
}

void PulseSoundPlayer::reapFinished()
{
    for (auto it = m_playbacks.begin(); it != m_playbacks.end();) {
        bool done = false;
        {
            std::lock_guard lock((*it)->mutex);
            done = (*it)->done;
        }
        if (done) {
            (*it)->worker.join();
            it = m_playbacks.erase(it);
        } else {
            ++it;
        }
    }
}

std::shared_ptr<PulseSoundPlayer::Playback> PulseSoundPlayer::openFile(const QString &path)
{
    auto playback = std::make_shared<Playback>();
    playback->path = path;
    playback->file = sf_open(QFile::encodeName(path).constData(), SFM_READ, &playback->info);
    if (!playback->file)
        return nullptr;
    pa_sample_spec spec{PA_SAMPLE_S16NE, uint32_t(playback->info.samplerate),
                        uint8_t(playback->info.channels)};
    if (playback->info.channels <= 0 || playback->info.channels > int(PA_CHANNELS_MAX)
        || playback->info.samplerate <= 0 || !pa_sample_spec_valid(&spec))
        return nullptr;
    playback->streamName = path.section(QLatin1Char('/'), -1).toUtf8();
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
    m_prepared = openFile(path);
    if (!m_prepared)
        return;
    m_playbacks.push_back(m_prepared);
    m_prepared->worker = std::thread([raw = m_prepared.get()] { raw->run(true); });
}

void PulseSoundPlayer::play(const QString &path)
{
    reapFinished();

    std::shared_ptr<Playback> playback;
    QEventLoop loop;
    if (m_prepared && m_prepared->path == path) {
        std::lock_guard lock(m_prepared->mutex);
        if (!m_prepared->done) {
            playback = m_prepared;
            playback->loop = &loop;
            playback->go = true;
            playback->wake.notify_all();
        }
    }
    if (playback) {
        m_prepared.reset();
    } else {
        playback = openFile(path);
        if (!playback)
            return;
        playback->loop = &loop;
        // m_playbacks keeps the state alive until the worker has been joined.
        m_playbacks.push_back(playback);
        playback->worker = std::thread([raw = playback.get()] { raw->run(false); });
    }

    loop.exec();

    bool done = false;
    {
        std::lock_guard lock(playback->mutex);
        playback->loop = nullptr;
        done = playback->done;
    }
    if (!done) {
        // The application is quitting: stop the sound. The worker is joined
        // later (next play or the destructor) so a slow server cannot hold up
        // the shutdown here.
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
