#pragma once

#include <QString>

// The folder of the executable, without a trailing separator (unless it is
// the root). Data files live here, never in the working directory.
class AppDirectory {
public:
    virtual ~AppDirectory() = default;
    virtual QString path() const = 0;
};
