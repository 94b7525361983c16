#pragma once

// The executable's own version numbers.
class VersionInfo {
public:
    virtual ~VersionInfo() = default;
    virtual int major() const = 0;
    virtual int minor() const = 0;
    virtual int revision() const = 0;
};
