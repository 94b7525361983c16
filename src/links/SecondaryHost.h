#pragma once

// What a window opened beside the table asks of the main window.
class SecondaryHost {
public:
    virtual ~SecondaryHost() = default;

    // What every such window does when it closes: the main window back to
    // its size, the table maximized, the other secondary windows unloaded.
    virtual void closeSequence() = 0;
    virtual void maximizeTableWindow() = 0;
};
