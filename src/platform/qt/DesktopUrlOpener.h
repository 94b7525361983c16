#pragma once

#include "platform/UrlOpener.h"

// The desktop's default handler for the address (xdg-open on Linux).
class DesktopUrlOpener : public UrlOpener {
public:
    bool open(const QString &address) override;
};
