#include "data/ProgramSettings.h"

#include "data/Database.h"
#include "platform/MessageBox.h"
#include "rules/AppError.h"
#include "rules/ValueConversions.h"

std::optional<StoredSwitches> ProgramSettings::readSwitches()
{
    Recordset rs = m_db.MyDB().openRecordset(QStringLiteral(
        "SELECT booTimeRow, booAlarmPopupForm, booSound, booMinimizeToTray FROM tblprogramsetting ORDER BY "
        "lngprogramsettingid;"));
    if (rs.eof())
        return std::nullopt;
    rs.moveFirst();
    // Any value other than 0 counts as on; Null counts as off.
    StoredSwitches s;
    s.timeRow = longValue(rs.field(QStringLiteral("booTimeRow"))) != 0;
    s.alarmPopupForm = longValue(rs.field(QStringLiteral("booAlarmPopupForm"))) != 0;
    s.sound = longValue(rs.field(QStringLiteral("booSound"))) != 0;
    s.minimizeToTray = longValue(rs.field(QStringLiteral("booMinimizeToTray"))) != 0;
    rs.close();
    return s;
}

std::optional<qint16> ProgramSettings::readSoundAlarmTimes()
{
    Recordset rs = m_db.MyDB().openRecordset(
        QStringLiteral("SELECT intSoundAlarmTimes FROM tblprogramsetting ORDER BY lngprogramsettingid;"));
    if (rs.eof())
        return std::nullopt;
    rs.moveFirst();
    const qint16 times = integerValue(rs.field(QStringLiteral("intSoundAlarmTimes")));
    rs.close();
    return times;
}

QString ProgramSettings::readText(const QString &routine, const QString &statement, const QString &column,
                                  const QString &fallback)
{
    try {
        Recordset rs = m_db.MyDB().openRecordset(statement);
        if (rs.eof())
            return fallback;
        rs.moveFirst();
        // A Null here is not text: it raises the error rather than falling
        // back, so a damaged record is noticed.
        const QVariant value = rs.field(column);
        if (value.isNull())
            throw invalidUseOfNull();
        const QString text = value.toString();
        rs.close();
        return text;
    } catch (const AppError &e) {
        showErrorBox(m_db.messages(), routine, e);
        return QString();
    }
}

QString ProgramSettings::subReturnAlarmclockVersion()
{
    return readText(QStringLiteral("subReturnAlarmclockVersion"),
                    QStringLiteral("SELECT strVersion FROM tblprogramsetting ORDER BY lngprogramsettingid;"),
                    QStringLiteral("strVersion"),
                    QStringLiteral("1.00"));
}

QString ProgramSettings::subReturnAlarmclockName()
{
    return readText(QStringLiteral("subReturnAlarmclockName"),
                    QStringLiteral("SELECT strprogramname FROM tblprogramsetting ORDER BY lngprogramsettingid;"),
                    QStringLiteral("strprogramname"),
                    QStringLiteral("Quorvel Alarm Clock"));
}

qint16 ProgramSettings::intReturnColorPicked()
{
    try {
        Recordset rs = m_db.MyDB().openTable(QStringLiteral("tblprogramsetting"));
        if (rs.eof())
            return 0;
        rs.moveFirst();
        const qint16 pick = integerValue(rs.field(QStringLiteral("intColorPick")));
        rs.close();
        return pick;
    } catch (const AppError &e) {
        showErrorBox(m_db.messages(), QStringLiteral("intReturnColorPicked"), e);
        return 0;
    }
}

bool ProgramSettings::readDonotAskAnyMore()
{
    Recordset rs = m_db.MyDB().openTable(QStringLiteral("tblprogramsetting"));
    if (rs.eof())
        return false;
    rs.moveFirst();
    const bool on = longValue(rs.field(QStringLiteral("booDonotAskAnyMore"))) != 0;
    rs.close();
    return on;
}

void ProgramSettings::execute(const QString &statement) { m_db.MyDB().execute(statement); }
