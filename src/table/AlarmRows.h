#pragma once

#include "table/RowControls.h"

#include <QString>

class Database;
class QWidget;

// The 13 rows as the table stores them (tblalarmclock, in key order): filled
// from the stored rows, stored in one transaction, emptied one at a time.
// Each keeps the tick's copies of the dates and times in step with the
// boxes. Asking the user and reporting errors are the window's.
class AlarmRows {
public:
    AlarmRows(RowControls &rows, AlarmState &state, const QWidget &window);

    // Throws AppError; the rows filled before the error keep what they got.
    void load(Database &db);
    // All or nothing: on AppError the stored rows are as they were.
    void save(Database &db);
    void empty(int row);

    // The URL marker: "?" without an address, "!" for one edited since the
    // last load, "*" for a stored one; its tooltip shows the address.
    void markUrl(int row, const QString &address, bool stored);
    // The description box in the scheme's resting colour.
    void paintRest(int row);
    // The URL marker's tooltip while the row has no address.
    static QString urlMarkerTip();

private:
    RowControls &m_rows;
    AlarmState &m_state;
    const QWidget &m_window;
};
