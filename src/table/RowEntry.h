#pragma once

#include "table/RowControls.h"

class AlarmRows;
class QEvent;

// What a row's date and time boxes keep of what is typed: the time box's
// key filter while typing, and on leaving a box (or Enter) a date in any
// accepted form written "mmm dd, yyyy", a time repaired to "hh:nn", and
// anything else emptied, never reported. Each commit updates the tick's
// copy, the daily mark and the row's colour, and asks for an evaluation.
class RowEntry {
public:
    RowEntry(RowControls &rows, AlarmState &state, AlarmRows &alarmRows);

    void commitDate(int row);
    void commitTime(int row);
    // The daily mark: hidden for a row with a date, shown for a time alone.
    void derive24Mark(int row);
    // The time box's key filter. Typed characters pass, are rewritten (a
    // blank types a colon) or are dropped; shortcuts and moving keys are
    // not typing. Returns true when the event was dealt with here.
    bool filterTyping(int row, QEvent *event);

private:
    RowControls &m_rows;
    AlarmState &m_state;
    AlarmRows &m_alarmRows;
};
