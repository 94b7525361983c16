#pragma once

#include <QString>

// Opens an address in the user's default browser. Returns false when no
// browser could be started. The address is passed on as typed.
class UrlOpener {
public:
    virtual ~UrlOpener() = default;
    virtual bool open(const QString &address) = 0;
};
