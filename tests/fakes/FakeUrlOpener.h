#pragma once

#include "platform/UrlOpener.h"

#include <QStringList>

class FakeUrlOpener : public UrlOpener {
public:
    QStringList opened;
    bool result = true;
    bool open(const QString &address) override
    {
        opened.append(address);
        return result;
    }
};
