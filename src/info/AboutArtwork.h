#pragma once

#include <QImage>
#include <QSize>

// The About window's pictures, painted at run time so no picture file has to
// ship with the program. Sizes are logical pixels; the image carries `dpr` so
// it stays sharp on high-density screens.

// The large picture: the program's clock on a shelf under a night sky.
QImage drawAboutScene(QSize size, qreal dpr = 1.0);

// Red, white and red bands with a red leaf in the middle.
QImage drawCanadaFlag(QSize size, qreal dpr = 1.0);

// The maker today, and two faded snapshots from long ago.
enum class Portrait { Recent, OlderFirst, OlderSecond };
QImage drawPortrait(Portrait which, QSize size, qreal dpr = 1.0);
