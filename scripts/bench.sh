#!/usr/bin/env bash
# Builds, then measures the real program on a private desktop and prints a
# table: start-up, memory and idle cost as ratios to a bare window of the
# program's shape, the same figures on their own, alarm onset, tick
# punctuality, memory over a long run, and the time to save and reload 13 rows. Takes about an hour with the defaults.
#   scripts/bench.sh [--tick-minutes N] [--trips N] [--startup-runs N] [--idle-seconds N]
#                    [--shape-runs N] [--memory-minutes N] [--only shape|startup|idle|onset|ticks|memory ...]
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
scripts/deps.sh "${BUILD_PACKAGES[@]}" "${ACCEPTANCE_PACKAGES[@]}" python3-xlib
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j"$(nproc)" >/dev/null
echo "A day of ticks on the fake clock:"
QT_QPA_PLATFORM=offscreen build/bench/bench_soak | sed "s/^/  /"
echo "Save and reload of 13 rows (Qt Test benchmark, ms per call):"
QT_QPA_PLATFORM=offscreen build/bench/bench_saveload 2>&1 | grep -E '^RESULT|msecs' | sed 's/^/  /'
/usr/bin/python3 bench/run.py build/app --floor build/bench/bench_floor "$@"
