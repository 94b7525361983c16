#pragma once

#include <QString>

// The folder of the executable, without a trailing separator (unless it is
// the root). The shipped files live here, never in the working directory.
class AppDirectory {
public:
    virtual ~AppDirectory() = default;
    virtual QString path() const = 0;
    // The user's own folder for the program's data ($XDG_DATA_HOME/...),
    // used when the user may not write to path(). It may not exist yet.
    virtual QString userDataPath() const = 0;
};
