#pragma once

#include <QString>
#include <QVariant>
#include <optional>

// Tolerant conversions for every value read from the database or a text box.
// None of them throws: anything unusable becomes "" or 0.

// Null/invalid -> "", bool -> "True"/"False", otherwise the text with
// surrounding blanks (spaces and tabs) removed.
QString textValue(const QVariant &v);

// Numbers: empty -> 0, "TRUE"/"FALSE" (any case) -> -1/0, non-numeric -> 0,
// integers rounded half-to-even, out of range -> 0.
qint16 integerValue(const QVariant &v);
qint32 longValue(const QVariant &v); // also "&H" hexadecimal, up to 8 digits
double doubleValue(const QVariant &v);

// Truncates through the 15-significant-digit decimal text; tiny values whose
// text has a negative exponent give 0.
double wholePart(double d);

// Helpers shared with the other text parsers.
// 0..15 for a hexadecimal digit (either case), -1 for anything else.
int hexDigitValue(QChar c);
bool isBlank(QChar c); // space or tab
QString trimBlanks(const QString &text);
// A plain decimal number: optional blanks, sign, digits with an optional
// point, optional exponent. nullopt when the text is not one or the value
// does not fit a double.
std::optional<double> parseNumericText(const QString &text);
// Round half-to-even to a 32-bit integer; nullopt when out of range.
std::optional<qint32> roundToInt32(double d);
