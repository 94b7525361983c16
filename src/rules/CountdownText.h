#pragma once

#include <QString>

// "<d>d <h>h <m>m <s>s " for the time left; 'marker' when nothing is left.
QString strPrintCountDownHours(qint32 seconds, const QString &marker);
