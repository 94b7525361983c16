#pragma once

class QWidget;

// Brings a top-level window to the front in its normal state, shown, and
// asks for the user's attention, on X11 and on Wayland alike.
void bringToFront(QWidget &window);
