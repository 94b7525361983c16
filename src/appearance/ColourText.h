#pragma once

#include <QString>

// A colour setting's text as a 0x00BBGGRR value: "&H" hexadecimal (upper-case
// H; 1..4 digits without a trailing "&" are a signed 16-bit value, otherwise
// 32-bit) or a decimal number rounded half-to-even. Anything else gives 0.
qint32 colourFromText(const QString &text);
