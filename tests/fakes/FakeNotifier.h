#pragma once

#include "platform/Notifier.h"

#include <QStringList>

class FakeNotifier : public Notifier {
public:
    // "summary|body" of each notification shown.
    QStringList shown;
    int closed = 0;
    bool open = false;

    void show(const QString &summary, const QString &body) override;
    void close() override;
    // The user presses "Stop" on the notification.
    void pressStop() const { stopPressed(); }
};
