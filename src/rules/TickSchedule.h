#pragma once

#include <QDateTime>

// The clock ticks at the start of every wall-clock second. While the window
// is hidden a tick has nothing to show, and only the first second of a
// minute can trip an alarm, so it may sleep to the start of the next minute.
QDateTime nextTickAt(const QDateTime &now, bool wholeMinutes);
