#pragma once

#include <QDateTime>

// Local wall-clock time, with milliseconds.
class Clock {
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;
};
