#pragma once

#include <QString>
#include <optional>

class Database;

// The four stored on/off switches, in the order the program applies them.
struct StoredSwitches {
    bool timeRow = false;
    bool alarmPopupForm = false;
    bool sound = true;
    bool minimizeToTray = true;
};

// Every read and write of the one settings record. Nothing is cached: each
// call reads the database anew. The report-and-default readers show their own
// "ERROR" box when the database fails and then return an empty value, as a
// trapped routine does.
class ProgramSettings {
public:
    explicit ProgramSettings(Database &db) : m_db(db) {}

    // nullopt when the table has no record. Throws AppError.
    std::optional<StoredSwitches> readSwitches();
    // nullopt when the table has no record. Throws AppError.
    std::optional<qint16> readSoundAlarmTimes();

    QString subReturnAlarmclockVersion();
    QString subReturnAlarmclockName();
    qint16 intReturnColorPicked();
    bool readDonotAskAnyMore();

    // One literal statement on a fresh handle. Throws AppError.
    void execute(const QString &statement);

private:
    QString readText(const QString &routine, const QString &statement, const QString &column,
                     const QString &fallback);
    Database &m_db;
};
