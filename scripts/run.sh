#!/usr/bin/env bash
# Installs what is missing, builds, and starts the alarm clock.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
scripts/deps.sh "${BUILD_PACKAGES[@]}"
cmake -S . -B build -DCMAKE_BUILD_TYPE=Release -DALARMCLOCK_TESTS=OFF >/dev/null
cmake --build build -j"$(nproc)"
exec build/app/alarmclock
