#include "platform/qt/HelperWakeAlarm.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <ctime>
#include <sys/xattr.h>

namespace {

// Why waking cannot work with this helper on this machine, or nothing.
QString probe(const QString &helper, bool clockCanWake)
{
    if (!clockCanWake)
        return QStringLiteral("This computer has no clock that can wake it.");
    if (!QFileInfo(helper).isExecutable())
        return QStringLiteral("Needs the installed program: its wake-up helper is missing.");
    if (getxattr(QFile::encodeName(helper).constData(), "security.capability", nullptr, 0) <= 0)
        return QStringLiteral("The wake-up helper may not wake this computer (it lacks cap_wake_alarm).");
    return QString();
}

} // namespace

HelperWakeAlarm::HelperWakeAlarm(const QString &helperPath, bool clockCanWake)
    : m_helper(helperPath), m_reason(probe(helperPath, clockCanWake))
{
}

bool HelperWakeAlarm::clockCanWake()
{
    // The kernel answers only where a real-time clock can wake the machine.
    timespec resolution{};
    return clock_getres(CLOCK_REALTIME_ALARM, &resolution) == 0;
}

HelperWakeAlarm::~HelperWakeAlarm()
{
    if (m_process) {
        m_process->closeWriteChannel();
        m_process->waitForFinished(1000);
    }
}

void HelperWakeAlarm::setEnabled(bool on)
{
    m_enabled = on;
    updateLater();
}

void HelperWakeAlarm::setNextAlarm(const QDateTime &moment)
{
    m_next = moment;
    updateLater();
}

// After the event at hand: an evaluation that trips an alarm moves the
// wake-up too, and starting the helper must not stand before the sound.
void HelperWakeAlarm::updateLater()
{
    if (!m_updatePending)
        QMetaObject::invokeMethod(this, &HelperWakeAlarm::update, Qt::QueuedConnection);
    m_updatePending = true;
}

void HelperWakeAlarm::update()
{
    m_updatePending = false;
    const qint64 at = m_next.isValid() ? m_next.toSecsSinceEpoch() : 0;
    // A moment only just ahead may have passed by the time the helper reads it.
    const qint64 wanted = m_enabled && m_reason.isEmpty() && at > std::time(nullptr) + 2 ? at : 0;
    if (wanted == m_armed)
        return;
    m_armed = wanted;
    if (!m_enabled) {
        // Its input closed, the helper ends and lets the wake-up go.
        if (m_process) {
            connect(m_process, &QProcess::finished, m_process, &QObject::deleteLater);
            m_process->closeWriteChannel();
            m_process = nullptr;
        }
        return;
    }
    if (!m_process) {
        m_process = new QProcess(this);
        connect(m_process, &QProcess::readyReadStandardOutput, this, [this, helper = m_process] { answered(*helper); });
        connect(m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart) {
                m_reason = QStringLiteral("The wake-up helper would not start.");
                becameUnavailable(m_reason);
            }
        });
        m_process->start(m_helper, {});
    }
    m_process->write(wanted ? "ARM " + QByteArray::number(wanted) + '\n' : QByteArray("DISARM\n"));
}

void HelperWakeAlarm::answered(QProcess &helper)
{
    while (helper.canReadLine()) {
        const QByteArray line = helper.readLine().trimmed();
        // Only a helper that cannot set a wake-up at all makes the command
        // unavailable; a refused moment is the next evaluation's to fix.
        if (line.startsWith("ERR cannot set") && m_reason.isEmpty()) {
            m_reason = QStringLiteral("The wake-up helper %1.").arg(QString::fromUtf8(line.mid(4)));
            becameUnavailable(m_reason);
        }
    }
}
