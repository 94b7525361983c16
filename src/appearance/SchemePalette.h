#pragma once

#include "rules/CustomColours.h"

#include <optional>

// The fixed text and background colours of a scheme (0x00BBGGRR).
struct SchemePalette {
    qint32 text;           // labels, check boxes, text boxes
    qint32 rowNumberText;  // row numbers and the daily marks
    qint32 detailsText;    // the description boxes
    qint32 windowText;     // the table window itself
    qint32 background;     // every painted control and the window
};

// Regular 0, Matrix 1, Custom 2 (from the custom slots); nullopt for any other
// value, which paints nothing.
inline std::optional<SchemePalette> schemePalette(int scheme, const CustomColours &custom)
{
    switch (scheme) {
    case 0:
        // The window's own text is white while its controls' text is black.
        return SchemePalette{0x000000, 0xC000C0, 0x000000, 0xFFFFFF, 0xFFFFFF};
    case 1:
        return SchemePalette{0x00FF00, 0x00FF00, 0x00FF00, 0x00FF00, 0x004000};
    case 2:
        return SchemePalette{custom.slot(1), custom.slot(1), custom.slot(8), custom.slot(1), custom.slot(2)};
    default:
        return std::nullopt;
    }
}

// The background picture of a scheme, a file in the application folder.
inline const char *schemePictureName(int scheme)
{
    switch (scheme) {
    case 0:
        return "backgroundregular.bmp";
    case 1:
        return "backgroundmatrix.bmp";
    case 2:
        return "backgroundcustom.bmp";
    default:
        return nullptr;
    }
}
