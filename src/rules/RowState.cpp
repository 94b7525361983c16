#include "rules/RowState.h"

namespace {
// Colour schemes as the settings store them.
constexpr int RegularScheme = 0;
constexpr int MatrixScheme = 1;
constexpr int CustomScheme = 2;
} // namespace

RowState classifyRow(bool dated, qint32 secondsLeft)
{
    if (secondsLeft >= 1) {
        if (secondsLeft <= 480)
            return RowState::WithinEight;
        if (secondsLeft <= 3600)
            return RowState::WithinHour;
        return RowState::FarAhead;
    }
    if (dated)
        return RowState::Sounded;
    const qint64 passed = -qint64(secondsLeft); // INT_MIN has no 32-bit negation
    if (passed >= 1 && passed <= 300)
        return RowState::JustPassed;
    if (passed >= 301 && passed <= 3600)
        return RowState::PassedWithinHour;
    return RowState::PassedLong;
}

std::optional<qint32> rowStateColour(RowState state, bool dated, int scheme, const CustomColours &custom)
{
    if (scheme != RegularScheme && scheme != MatrixScheme && scheme != CustomScheme)
        return std::nullopt;

    // {Regular, Matrix, custom slot}; slot 0 = leave the colour alone.
    struct Choice {
        qint32 regular;
        qint32 matrix;
        int customSlot;
    };
    Choice choice{};
    switch (state) {
    case RowState::FarAhead:
        // A repeating row far ahead keeps whatever custom colour it had.
        choice = dated ? Choice{0xFFFFFF, 0x008000, 3} : Choice{0xFFFFFF, 0x008000, 0};
        break;
    case RowState::WithinHour:
        choice = {0x00FFFF, 0x00C000, 5};
        break;
    case RowState::WithinEight:
        choice = {0x00FF00, 0x00FF00, 4};
        break;
    case RowState::Sounded:
        choice = {0x0000FF, 0x00FFFF, 6};
        break;
    case RowState::JustPassed:
        // Shares the "within eight minutes" custom colour.
        choice = {0x0000FF, 0x00FFFF, 4};
        break;
    case RowState::PassedWithinHour:
        choice = {0x80FF80, 0x80FF80, 7};
        break;
    case RowState::PassedLong:
        // Matrix dims long-passed rows a shade differently from far-ahead ones.
        choice = {0xFFFFFF, 0x007007, 3};
        break;
    }

    switch (scheme) {
    case RegularScheme:
        return choice.regular;
    case MatrixScheme:
        return choice.matrix;
    default:
        if (choice.customSlot == 0)
            return std::nullopt;
        return custom.slot(choice.customSlot);
    }
}
