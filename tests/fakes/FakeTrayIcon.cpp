#include "fakes/FakeTrayIcon.h"

void FakeTrayIcon::add(const QString &tip)
{
    calls.append(QStringLiteral("add:") + tip);
    visible = true;
    field = tip;
}

void FakeTrayIcon::remove()
{
    calls.append(QStringLiteral("remove"));
    visible = false;
}

void FakeTrayIcon::setMouseHandler(std::function<void(int message)> mouseHandler)
{
    handler = std::move(mouseHandler);
}

void FakeTrayIcon::sendMouse(int message)
{
    if (handler)
        handler(message);
}
