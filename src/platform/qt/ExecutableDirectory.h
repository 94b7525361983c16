#pragma once

#include "platform/AppDirectory.h"

class ExecutableDirectory : public AppDirectory {
public:
    QString path() const override;
    QString userDataPath() const override;
};
