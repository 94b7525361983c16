#include "platform/qt/IniPreferences.h"

namespace {

const QString kWakeComputer = QStringLiteral("wakeComputer");

} // namespace

IniPreferences::IniPreferences()
    : m_settings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("quorvel-alarmclock"),
                 QStringLiteral("quorvel-alarmclock"))
{
}

bool IniPreferences::wakeComputer() const { return m_settings.value(kWakeComputer, false).toBool(); }

void IniPreferences::setWakeComputer(bool on) { m_settings.setValue(kWakeComputer, on); }
