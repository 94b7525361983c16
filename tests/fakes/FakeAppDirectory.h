#pragma once

#include "platform/AppDirectory.h"

class FakeAppDirectory : public AppDirectory {
public:
    explicit FakeAppDirectory(QString folder) : directory(std::move(folder)) {}
    QString directory;
    QString path() const override { return directory; }
};
