#pragma once

#include <QString>
#include <QtGlobal>

// How an alarm moment that the ticks did not see is handled, by how late
// the first tick after it comes: up to a minute it rings as usual, up to
// half an hour it rings once, late, and later still it only shows in the
// list of missed alarms (a night's sleep makes no storm of sound).
enum class Lateness { OnTime, Late, Missed };
Lateness latenessOf(qint64 secondsLate);

// Why the wall clock moved further than the ticks saw.
enum class GapCause { None, Asleep, ClockSet };
// From how far the wall clock, the boot clock (CLOCK_BOOTTIME) and the time
// asleep (CLOCK_BOOTTIME less CLOCK_MONOTONIC) moved since the last tick,
// in milliseconds. A wall clock that ran ahead of the boot clock was set;
// a busy thread or the hour skipped in spring are neither.
GapCause gapCause(qint64 wallMs, qint64 bootMs, qint64 asleepMs);
// What a late alarm's notification says first: "Late: the computer was
// asleep." or "Late: the clock was set forward.", or nothing.
QString lateNote(GapCause cause);
