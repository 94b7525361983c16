#pragma once

#include "platform/AppDirectory.h"

class FakeAppDirectory : public AppDirectory {
public:
    explicit FakeAppDirectory(QString folder);

    QString directory;

    QString path() const override;
};
