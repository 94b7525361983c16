#include "fakes/FakeNotifier.h"

void FakeNotifier::show(const QString &summary, const QString &body)
{
    shown.append(summary + u'|' + body);
    open = true;
}

void FakeNotifier::close()
{
    if (open)
        ++closed;
    open = false;
}
