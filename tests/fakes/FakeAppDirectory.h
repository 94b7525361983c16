#pragma once

#include "platform/AppDirectory.h"

class FakeAppDirectory : public AppDirectory {
public:
    explicit FakeAppDirectory(QString folder, QString userFolder = {});

    QString directory;
    QString userData;

    QString path() const override;
    QString userDataPath() const override;
};
