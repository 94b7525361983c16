#pragma once

#include "platform/ColourPicker.h"

#include <QList>

// Answers `answer` every time (nullopt = cancelled).
class FakeColourPicker : public ColourPicker {
public:
    std::optional<qint32> answer;
    QList<qint32> startColours;
    std::optional<qint32> pick(qint32 startColour) override
    {
        startColours.append(startColour);
        return answer;
    }
};
