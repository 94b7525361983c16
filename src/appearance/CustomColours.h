#pragma once

#include <QtGlobal>
#include <array>

// Qt defines "slots" as a keyword macro once <QObject> is seen; shield the
// member so this header works in any include order. Outside this header, use
// slot()/setSlot(): a bare ".slots" is mangled in files that include QObject.
#pragma push_macro("slots")
#undef slots

// The user's ten custom colours, numbered 1..10 as the settings store them.
// Colours are 0x00BBGGRR (red in the low byte).
struct CustomColours {
    std::array<qint32, 10> slots{};

    // Out-of-range slot numbers read as 0 and are not stored.
    qint32 slot(int n) const { return n >= 1 && n <= 10 ? slots[size_t(n - 1)] : 0; }
    void setSlot(int n, qint32 v)
    {
        if (n >= 1 && n <= 10)
            slots[size_t(n - 1)] = v;
    }
};

#pragma pop_macro("slots")
