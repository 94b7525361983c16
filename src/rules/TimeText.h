#pragma once

#include <QChar>
#include <QString>
#include <QTime>
#include <optional>

// "h:m", "hh:nn" or "hh:nn:ss" (one or two digits per field, blanks around).
std::optional<QTime> parseTimeOfDay(const QString &text);

QString formatTimeText(const QString &text); // "hh:nn"; not a time -> unchanged
QString timeOrEmpty(const QString &text);    // "hh:nn"; not a time -> empty

// The time box's repair when it loses focus: wraps an hour of 24 or more to
// "00", drops minutes of 60 or more to "00", then formats. Anything that is
// not five characters long, or not a time once repaired, is cleared.
QString normaliseTime(const QString &text);

// The time box's key filter: digits, ':' and backspace pass, a blank becomes
// ':', anything else is dropped (nullopt).
std::optional<QChar> filterTimeKey(QChar typed);
