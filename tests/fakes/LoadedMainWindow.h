#pragma once

#include "fakes/FakePlatform.h"
#include "fakes/TestDatabase.h"
#include "shell/mdiAlarmClock.h"
#include "table/frmAlarmClock.h"

#include <QLineEdit>
#include <memory>

// The main window after a normal start-up on the fakes, with the table window
// loaded. `arrange` runs before the window exists, to change the database or
// the fakes; `services` may swap some fakes for real ones. Boxes, tray calls
// and the sound check made during start-up are forgotten.
struct LoadedMainWindow {
    FakePlatform fp;
    std::unique_ptr<mdiAlarmClock> w;
    frmAlarmClock *t = nullptr;
    QStringList startUpPlays;

    explicit LoadedMainWindow(const std::function<void(FakePlatform &)> &arrange = {},
                              const std::function<Platform(FakePlatform &)> &services = {})
    {
        if (arrange)
            arrange(fp);
        w = std::make_unique<mdiAlarmClock>(services ? services(fp) : fp.platform());
        w->MDIForm_Load();
        t = w->tableWindow();
        startUpPlays = std::exchange(fp.sound.played, {});
        fp.sound.fallbacks.clear();
        fp.sound.beeps = 0;
        fp.messages.shown.clear();
        fp.tray.calls.clear();
    }

    AlarmState &state() { return w->state(); }
    bool sql(const QString &statement) { return TestDatabase(fp.testDir.dbPath()).exec(statement); }
    QStringList rows(const QString &query) { return TestDatabase(fp.testDir.dbPath()).rows(query); }
    QString setting(const QString &column) { return rows("SELECT " + column + " FROM tblprogramsetting").join(u','); }

    // A row's date and time as loading puts them: the boxes and the committed
    // copies the tick reads.
    void setRow(int i, const QString &date, const QString &time)
    {
        t->txtACDate[i]->setText(date);
        t->txtACTime[i]->setText(time);
        state().strAlarmDates[size_t(i)] = date;
        state().strAlarmTimes[size_t(i)] = time;
    }
    void tickAt(const QDateTime &moment)
    {
        fp.clock.set(moment);
        t->tmrAlarmClock_Timer();
    }
};

// Runs the SQL on the fresh folder before the window loads.
inline std::function<void(FakePlatform &)> withSql(const QStringList &statements)
{
    return [statements](FakePlatform &fp) {
        TestDatabase db(fp.testDir.dbPath(), QStringLiteral("arrange"));
        for (const QString &s : statements)
            db.exec(s);
    };
}
