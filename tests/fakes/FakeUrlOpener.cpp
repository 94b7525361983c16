#include "fakes/FakeUrlOpener.h"

bool FakeUrlOpener::open(const QString &address)
{
    opened.append(address);
    return result;
}
