#pragma once

#include <QString>

// Opens an address in the user's default browser. Returns false when no
// browser could be started. An address typed without a scheme
// ("www.example.org") is taken as a web address, as a browser's own address
// bar takes it.
class UrlOpener {
public:
    virtual ~UrlOpener() = default;
    virtual bool open(const QString &address) = 0;
};
