#pragma once

#include "fakes/FakePlatform.h"
#include "shell/mdiAlarmClock.h"
#include "table/frmAlarmClock.h"

#include <QLineEdit>
#include <functional>
#include <memory>

// The main window after a normal start-up on the fakes, with the table
// window loaded. `arrange` runs before the window exists (to change the
// database or the fakes first). Boxes shown during start-up are forgotten.
struct LoadedMainWindow {
    FakePlatform fp;
    std::unique_ptr<mdiAlarmClock> w;
    frmAlarmClock *t = nullptr;

    explicit LoadedMainWindow(const std::function<void(FakePlatform &)> &arrange = {})
    {
        if (arrange)
            arrange(fp);
        w = std::make_unique<mdiAlarmClock>(fp.platform());
        w->MDIForm_Load();
        t = w->tableWindow();
        fp.messages.shown.clear();
        fp.tray.calls.clear();
    }

    AlarmState &state() { return w->state(); }

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
