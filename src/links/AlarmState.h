#pragma once

#include "rules/CustomColours.h"

#include <QString>
#include <array>

constexpr int kAlarmRows = 13;

// The values the clock tick, the sounding cycle, the editors and the menus
// share. One instance lives for the whole run.
struct AlarmState {
    // The date and time of each row as the tick sees them; kept in step with
    // the boxes by whoever commits an edit.
    std::array<QString, kAlarmRows> strAlarmDates;
    std::array<QString, kAlarmRows> strAlarmTimes;
    // Evaluate every row on the next tick, not only at the top of the minute.
    bool bEvaluateNow = false;
    qint32 lngAlarmPlaysLeft = 0;
    bool bSoundOn = false;
    // 0 normal, 1 minimized (the tick then does no display work), 2 maximized.
    qint32 intMDIWindowState = 0;
    // 0 Regular, 1 Matrix, 2 Custom; any other value paints nothing.
    qint16 intColorPick = 0;
    // The row whose alarm tripped last: its sound is the one played.
    qint16 intAlarmRow = 0;
    CustomColours customColours;
};
