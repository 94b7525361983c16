#pragma once

#include <QIcon>
#include <QImage>

// The program's icon, an alarm clock, painted at run time so no picture file
// has to ship with the program.

// One square rendering with a transparent background.
QImage drawAppIcon(int size);

// The icon at the sizes desktops and trays ask for, from the PNGs the build
// drew with drawAppIcon() and linked into the program as resources.
QIcon makeAppIcon();
