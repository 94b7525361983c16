#!/usr/bin/env bash
# Builds the libFuzzer targets in fuzz/ with clang and runs each one for
# SECONDS (default 30), then prints the executions per target. A crash, a
# sanitizer report or a broken invariant stops the run with the input saved
# as build-fuzz/<target>-crash-* and a non-zero exit.
#   scripts/fuzz.sh [SECONDS] [TARGET...]
# FUZZ_BUILD_DIR overrides the build folder (default build-fuzz).
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-30}
shift || true
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=(colour values countdown date time jetsql)

source scripts/packages.sh
scripts/deps.sh "${BUILD_PACKAGES[@]}" clang
# libFuzzer and the sanitizer runtimes; clang only recommends them.
clang_major=$(clang --version | sed -n 's/.*clang version \([0-9]*\).*/\1/p' | head -1)
scripts/deps.sh "libclang-rt-$clang_major-dev"

build=${FUZZ_BUILD_DIR:-build-fuzz}
cmake -S fuzz -B "$build" -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$build" -j"$(nproc)"

status=0
for target in "${targets[@]}"; do
    work="$build/corpus-$target" # grows as the fuzzer finds new paths; the seeds stay as committed
    mkdir -p "$work"
    dict=()
    [ -f "fuzz/$target.dict" ] && dict=(-dict="fuzz/$target.dict")
    log="$build/$target.log"
    set +e
    "$build/fuzz_$target" "${dict[@]}" -max_total_time="$seconds" -timeout=5 -rss_limit_mb=2048 \
        -print_final_stats=1 -artifact_prefix="$build/$target-" "$work" "fuzz/corpus/$target" >"$log" 2>&1
    rc=$?
    set -e
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
    if [ $rc -eq 0 ]; then
        printf '%-10s %12s executions in %ss\n' "$target" "${runs:-?}" "$seconds"
    else
        printf '%-10s FAILED after %s executions (exit %d), see %s\n' "$target" "${runs:-?}" "$rc" "$log"
        grep -m5 -E 'invariant failed|^input:|ERROR:|runtime error|SUMMARY' "$log" || true
        status=1
    fi
done
exit $status
