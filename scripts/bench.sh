#!/usr/bin/env bash
# Builds, then measures the real program on a private desktop and prints a
# table: start-up, memory, idle cost, alarm onset, tick punctuality, and the
# time to save and reload 13 rows. Takes about 20 minutes with the defaults.
#   scripts/bench.sh [--tick-minutes N] [--trips N] [--startup-runs N] [--idle-seconds N]
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
scripts/deps.sh "${BUILD_PACKAGES[@]}" "${ACCEPTANCE_PACKAGES[@]}" python3-xlib
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j"$(nproc)" >/dev/null
echo "Save and reload of 13 rows (Qt Test benchmark, ms per call):"
QT_QPA_PLATFORM=offscreen build/bench/bench_saveload 2>&1 | grep -E '^RESULT|msecs' | sed 's/^/  /'
/usr/bin/python3 bench/run.py build/app "$@"
