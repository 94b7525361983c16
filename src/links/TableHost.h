#pragma once

#include <QString>

class QWidget;

// The menu entries that mirror the table window's four switches.
enum class MenuPair { Sound, PopupForm, TimeRow, MinimizeToTray };

// What the table window asks of the main window that holds it.
class TableHost {
public:
    virtual ~TableHost() = default;

    // Marks the pair's "on" entry and unmarks its "off" entry, or the reverse.
    virtual void setMenuPair(MenuPair pair, bool on) = 0;
    // The "Limit Application Questions Asked" mark.
    virtual bool questionsLimited() const = 0;
    // Reads the four stored switches into the menu pairs and the table
    // window's switches.
    virtual void subApplyMDIProgramSettings() = 0;

    virtual void subMinimizeToTray(bool bHideForm, const QString &zMessage) = 0;
    virtual void subRemoveTrayIcon() = 0;
    // Normal state, shown, in front.
    virtual void restoreMainWindow() = 0;
    virtual void subResetMainWindowSize() = 0;
    virtual void subUnloadSecondaryForms() = 0;
    // The widget that shows the main window's background picture.
    virtual QWidget *mainPictureTarget() = 0;

    // Opens the row's editor (row 0..12) on the value the row holds now.
    virtual void editRowSound(int row, const QString &path) = 0;
    virtual void editRowURL(int row, const QString &address) = 0;
};
