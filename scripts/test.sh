#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test. With --sanitize the
# same tests run once more in a build with AddressSanitizer and
# UndefinedBehaviorSanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
scripts/deps.sh "${BUILD_PACKAGES[@]}" "${TEST_PACKAGES[@]}"
jobs=$(nproc)

cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j"$jobs"
(cd build && ctest --output-on-failure -j"$jobs")

if [ "${1:-}" = "--sanitize" ]; then
    cmake -S . -B build-sanitize -DCMAKE_BUILD_TYPE=Debug -DALARMCLOCK_SANITIZE=ON >/dev/null
    cmake --build build-sanitize -j"$jobs"
    (cd build-sanitize && ASAN_OPTIONS=detect_leaks=0 UBSAN_OPTIONS=print_stacktrace=1 \
        ctest --output-on-failure -j"$jobs")
fi
