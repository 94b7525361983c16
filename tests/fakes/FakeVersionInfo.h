#pragma once

#include "platform/VersionInfo.h"

class FakeVersionInfo : public VersionInfo {
public:
    int maj = 1;
    int min = 0;
    int rev = 5;

    int major() const override;
    int minor() const override;
    int revision() const override;
};
