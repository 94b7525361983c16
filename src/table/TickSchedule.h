#pragma once

// The one-second clock is a single-shot timer re-armed on every tick so that
// it fires just after each wall-clock second begins.

// Aim slightly past the second boundary so a timer that runs a little early
// still lands in the new second.
constexpr int kTickOffsetMs = 2;

// Delay from a tick at 'msIntoSecond' (0..999; clamped) to the next one.
int msUntilNextTick(int msIntoSecond);
