#pragma once

#include "links/SecondaryHost.h"

// What the custom colours dialog asks of the main window, beyond what every
// secondary window asks.
class CustomColorsHost : public SecondaryHost {
public:
    // Shows the legend, loading it first when it is not open.
    virtual void showLegend() = 0;
    virtual void subUnloadSecondaryForms() = 0;
    // Checks exactly one colour command (Regular 0, Matrix 1, Custom 2).
    virtual void setColourMarks(int scheme) = 0;
    // Paints the table window in the current scheme.
    virtual void subSetMainForeAndBackGroundColors() = 0;
    virtual void subResetMainWindowSize() = 0;
};
