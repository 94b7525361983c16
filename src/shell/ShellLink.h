#pragma once

#include <QString>

class QWidget;

// The menu entries that mirror the table window's four switches.
enum class MenuPair { Sound, PopupForm, TimeRow, MinimizeToTray };

// The windows the main window opens beside the table.
enum class SecondaryForm { Legend, About, EditURL, EditWAVEFileNamePath, CustomColors, Tables };

// What the table window and the secondary windows ask of the main window.
class ShellLink {
public:
    virtual ~ShellLink() = default;

    // Marks the pair's "on" entry and unmarks its "off" entry, or the reverse.
    virtual void setMenuPair(MenuPair pair, bool on) = 0;
    // The "Limit Application Questions Asked" mark.
    virtual bool questionsLimited() const = 0;
    virtual void subMinimizeToTray(bool bHideForm, const QString &zMessage) = 0;
    virtual void subRemoveTrayIcon() = 0;
    // Normal state, shown.
    virtual void restoreMainWindow() = 0;
    virtual void subResetMainWindowSize() = 0;
    virtual void subUnloadSecondaryForms() = 0;
    virtual void maximizeTableWindow() = 0;
    // Reads the four stored switches into the menu pairs and the table
    // window's switches.
    virtual void subApplyMDIProgramSettings() = 0;
    // The widget that shows the main window's background picture.
    virtual QWidget *mainPictureTarget() = 0;
    // Checks exactly one colour command (Regular 0, Matrix 1, Custom 2).
    virtual void setColourMarks(int scheme) { (void)scheme; }
    // Shows a secondary window, loading it first when it is not open.
    virtual QWidget *showForm(SecondaryForm form)
    {
        (void)form;
        return nullptr;
    }

    // What every secondary window does when it closes.
    void closeSequence()
    {
        subResetMainWindowSize();
        maximizeTableWindow();
        subUnloadSecondaryForms();
    }
};
