#pragma once

#include "fakes/FakePlatform.h"
#include "fakes/TestDatabase.h"
#include "shell/mdiAlarmClock.h"
#include "table/frmAlarmClock.h"

#include <QLineEdit>
#include <functional>
#include <memory>

// The fakes, with some services swapped for real or failing ones.
inline Platform withServices(FakePlatform &fp, SoundPlayer *sound, TrayIcon *tray = nullptr,
                             PictureLoader *pictures = nullptr)
{
    return Platform{fp.messages, fp.input,  sound ? *sound : fp.sound, tray ? *tray : fp.tray, fp.browser,
                    fp.colours,  fp.clock,  fp.files, fp.appDir, fp.instance, fp.version, fp.end,
                    pictures ? *pictures : fp.pictures, fp.wallTimer, fp.notifier, fp.autostart};
}

// The main window after a normal start-up on the fakes, with the table
// window loaded. `arrange` runs before the window exists (to change the
// database or the fakes first). Boxes shown during start-up are forgotten.
struct LoadedMainWindow {
    FakePlatform fp;
    std::unique_ptr<mdiAlarmClock> w;
    frmAlarmClock *t = nullptr;

    explicit LoadedMainWindow(const std::function<void(FakePlatform &)> &arrange = {},
                              const std::function<Platform(FakePlatform &)> &services = {})
    {
        if (arrange)
            arrange(fp);
        w = std::make_unique<mdiAlarmClock>(services ? services(fp) : fp.platform());
        w->MDIForm_Load();
        t = w->tableWindow();
        fp.messages.shown.clear();
        fp.tray.calls.clear();
    }

    AlarmState &state() { return w->state(); }
    bool sql(const QString &statement) { return TestDatabase(fp.testDir.dbPath()).exec(statement); }
    QStringList rows(const QString &query) { return TestDatabase(fp.testDir.dbPath()).rows(query); }
    QString setting(const QString &column) { return rows(QStringLiteral("SELECT %1 FROM tblprogramsetting").arg(column)).join(u','); }

    // Puts a row's date and time in place the way loading does: boxes and
    // the committed copies the tick reads.
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

// Runs the arrangement's SQL on a fresh folder before the window loads.
inline std::function<void(FakePlatform &)> withSql(const QStringList &statements)
{
    return [statements](FakePlatform &fp) {
        TestDatabase db(fp.testDir.dbPath(), QStringLiteral("arrange"));
        for (const QString &s : statements)
            db.exec(s);
    };
}
