#pragma once

#include "platform/VersionInfo.h"

// The version the build system stamps into this file's compile definitions.
class BuildVersionInfo : public VersionInfo {
public:
    int major() const override;
    int minor() const override;
    int revision() const override;
};
