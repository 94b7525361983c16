#pragma once

#include "rules/CustomColours.h"

#include <QtGlobal>
#include <optional>

// How close an alarm row is to going off, which picks its colour.
enum class RowState { FarAhead, WithinHour, WithinEight, Sounded, JustPassed, PassedWithinHour, PassedLong };

// 'dated' rows fire once on their date; the others repeat every 24 hours.
RowState classifyRow(bool dated, qint32 secondsLeft);

// The row colour (0x00BBGGRR) for a state under a scheme (0 Regular,
// 1 Matrix, 2 Custom); nullopt means leave the row's colour as it is.
std::optional<qint32> rowStateColour(RowState state, bool dated, int scheme, const CustomColours &custom);
