#include "rules/CountdownText.h"

#include "rules/ValueConversions.h"

QString strPrintCountDownHours(qint32 seconds, const QString &marker)
{
    if (seconds < 0)
        return marker;

    double rest = seconds;
    double days = wholePart(rest / 86400.0);
    if (days < 0)
        days = 0;
    rest -= days * 86400.0;
    const double hours = wholePart(rest / 3600.0);
    rest -= hours * 3600.0;
    const double minutes = wholePart(rest / 60.0);
    rest -= minutes * 60.0;
    const double secs = rest < 0 ? 0.0 : rest;

    if (days + hours + minutes + secs == 0)
        return marker;
    return QStringLiteral("%1d %2h %3m %4s ")
        .arg(qint64(days))
        .arg(qint64(hours))
        .arg(qint64(minutes))
        .arg(qint64(secs));
}
