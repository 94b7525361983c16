#!/usr/bin/env bash
# The long reliability runs that CI leaves out:
#  1. KILLS (default 250) SIGKILLs of a process that saves in a loop; after
#     each one the database must hold one whole saved set of 13 rows;
#  2. the broken sound files again (the test starts its own PulseAudio with
#     a null sink, so they are really decoded and streamed);
#  3. the day-long soak in the sanitizer build with leak detection on.
#   scripts/reliability.sh [KILLS]
set -euo pipefail
cd "$(dirname "$0")/.."
kills=${1:-250}
source scripts/packages.sh
scripts/deps.sh "${BUILD_PACKAGES[@]}" "${TEST_PACKAGES[@]}"
build=${BUILD_DIR:-build}
sanitize=${SANITIZE_BUILD_DIR:-build-sanitize}
export QT_QPA_PLATFORM=offscreen

cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$build" -j"$(nproc)" --target tst_faults tst_platform

echo "== $kills kills during saves"
ALARMCLOCK_KILLS=$kills "$build/tests/tst_faults" killedWhileSavingLeavesOneWholeSet

echo "== broken sound files, decoded and streamed on a private sound server"
"$build/tests/tst_platform" soundsEndReportAndFallBack

echo "== a day of ticks, sanitizers and leak detection on"
cmake -S . -B "$sanitize" -DCMAKE_BUILD_TYPE=Debug -DALARMCLOCK_SANITIZE=ON >/dev/null
cmake --build "$sanitize" -j"$(nproc)" --target bench_soak
# No suppressions: the soak reports no leak at all, Qt's own included.
ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 "$sanitize/bench/bench_soak"
