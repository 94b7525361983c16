#pragma once

#include <QtGlobal>
#include <optional>

// The system colour picker. Colours are 0x00BBGGRR values; nullopt means the
// user cancelled.
class ColourPicker {
public:
    virtual ~ColourPicker() = default;
    virtual std::optional<qint32> pick(qint32 startColour) = 0;
};
