#include "fakes/FakeColourPicker.h"

std::optional<qint32> FakeColourPicker::pick(qint32 startColour)
{
    startColours.append(startColour);
    return answer;
}
