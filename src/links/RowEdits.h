#pragma once

#include <QString>

// What a dialog that edits one row (0..12) tells the table window. Both
// count as unsaved changes of the table.
class RowEdits {
public:
    virtual ~RowEdits() = default;

    // The row's web address; its marker shows it as edited.
    virtual void setRowURL(int row, const QString &address) = 0;
    virtual void setRowSoundPath(int row, const QString &path) = 0;
};
