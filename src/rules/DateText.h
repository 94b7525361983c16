#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>
#include <optional>

// Accepts "Sep 30 2031", "Sep 30, 2031", "September 30 2031", "30 Sep 2031",
// "9/30/2031", "9/30/31" and "2031-09-30" (any case, any blanks). Two-digit
// years 00-29 are 2000s, 30-99 are 1900s. Years must lie in 100..9999.
std::optional<QDate> parseDate(const QString &text);

QString formatDate(const QDate &d);                // "Sep 05, 2031"
QString formatDateText(const QString &text);       // not a date -> unchanged
QString formatNowText(const QDateTime &now);       // "Sep 30, 2031 14:05:09"
QString formatAlarmTipTime(const QDateTime &now);  // "Sep, 30 at 14:05"
