#include "fakes/FakeTrayIcon.h"

void FakeTrayIcon::add(const QString &tipField)
{
    calls.append(QStringLiteral("add:") + tipField);
    visible = true;
    field = tipField;
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
