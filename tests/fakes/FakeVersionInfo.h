#pragma once

#include "platform/VersionInfo.h"

class FakeVersionInfo : public VersionInfo {
public:
    int maj = 1, min = 0, rev = 5;
    int major() const override { return maj; }
    int minor() const override { return min; }
    int revision() const override { return rev; }
};
