#!/usr/bin/env bash
# The long reliability runs that CI leaves out:
#  1. KILLS (default 250) SIGKILLs of a process that saves in a loop; after
#     each one the database must hold one whole saved set of 13 rows;
#  2. the fault tests again with a private PulseAudio server (null sink), so
#     broken sound files are really decoded and streamed, not refused at the
#     connection;
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
cmake --build "$build" -j"$(nproc)" --target tst_faults tst_soak

echo "== $kills kills during saves"
ALARMCLOCK_KILLS=$kills "$build/tests/tst_faults" killedWhileSavingLeavesOneWholeSet

if command -v pulseaudio >/dev/null; then
    echo "== fault tests with a sound server"
    runtime=$(mktemp -d)
    XDG_RUNTIME_DIR=$runtime PULSE_RUNTIME_PATH=$runtime/pulse \
        pulseaudio -n --daemonize=no --exit-idle-time=-1 --log-target=file:"$runtime/log" \
        -L "module-null-sink sink_name=test" -L module-native-protocol-unix -L module-always-sink &
    server=$!
    for _ in $(seq 50); do [ -S "$runtime/pulse/native" ] && break; sleep 0.1; done
    status=0
    XDG_RUNTIME_DIR=$runtime PULSE_RUNTIME_PATH=$runtime/pulse PULSE_SERVER=unix:$runtime/pulse/native \
        "$build/tests/tst_faults" brokenSoundsPlayAndReturn || status=$?
    kill "$server"
    wait "$server" 2>/dev/null || true
    rm -rf "$runtime"
    [ $status -eq 0 ]
else
    echo "== no pulseaudio: the sound faults ran only without a server (in ctest)"
fi

echo "== a day of ticks, sanitizers and leak detection on"
cmake -S . -B "$sanitize" -DCMAKE_BUILD_TYPE=Debug -DALARMCLOCK_SANITIZE=ON >/dev/null
cmake --build "$sanitize" -j"$(nproc)" --target tst_soak
# No suppressions: the soak reports no leak at all, Qt's own included.
ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 "$sanitize/tests/tst_soak"
