#pragma once

#include <QtGlobal>
#include <array>

// The user's ten custom colours, numbered 1..10 as the settings store them.
// Colours are 0x00BBGGRR (red in the low byte).
struct CustomColours {
    std::array<qint32, 10> values{};

    // Out-of-range slot numbers read as 0 and are not stored.
    qint32 slot(int n) const { return n >= 1 && n <= 10 ? values[size_t(n - 1)] : 0; }
    void setSlot(int n, qint32 v)
    {
        if (n >= 1 && n <= 10)
            values[size_t(n - 1)] = v;
    }
};
