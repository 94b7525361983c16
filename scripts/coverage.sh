#!/usr/bin/env bash
# Line coverage of src/ by the Qt tests, as a table per folder. Builds with
# --coverage in build-coverage/ (or COVERAGE_BUILD_DIR), runs every test and
# reads the counters with gcovr.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
scripts/deps.sh "${BUILD_PACKAGES[@]}" "${TEST_PACKAGES[@]}" "${COVERAGE_PACKAGES[@]}"
build=${COVERAGE_BUILD_DIR:-build-coverage}
# A cached object keeps the folder it was first compiled in, and gcov then
# cannot find its sources: counters must come from this build alone.
export CCACHE_DISABLE=1
jobs=$(nproc)

cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS="--coverage" \
    -DCMAKE_EXE_LINKER_FLAGS="--coverage" >/dev/null
cmake --build "$build" -j"$jobs"
find "$build" -name '*.gcda' -delete
# Objects of sources since deleted (a merged test program, a removed fake)
# would count the inline code they saw as never run.
find "$build" -name '*.gcno' -path '*/CMakeFiles/*.dir/*' | while read -r note; do
    folder=${note%%/CMakeFiles/*}
    source=${note#*.dir/}
    source=${source//__\//..\/} # CMake's name for a ".." in an object path
    [ -e "${folder/#$build/.}/${source%.gcno}" ] || [ -e "$folder/${source%.gcno}" ] || rm -f "$note"
done
# tst_faults kills children in the middle of saves; they write their counters
# under a GCOV_PREFIX of their own (a child killed while writing would corrupt
# the shared ones), and the test runs on its own all the same.
(cd "$build" && ctest -j"$jobs" -E '^tst_faults$' --output-on-failure && ctest -R '^tst_faults$' --output-on-failure) ||
    echo "coverage: some tests failed; the figures below still count what ran" >&2

# CMake's compiler probe leaves counters of its own; they are not the program's.
gcovr -r . --object-directory "$build" --filter 'src/' --exclude-directories "$build/CMakeFiles/[0-9.]+" \
    --json-summary "$build/coverage.json" >/dev/null
python3 - "$build/coverage.json" <<'PY'
import json, os, sys
folders = {}
for f in json.load(open(sys.argv[1]))['files']:
    parts = f['filename'].split('/')
    folder = '/'.join(parts[1:-1]) or '.'
    covered, total = folders.get(folder, (0, 0))
    folders[folder] = (covered + f['line_covered'], total + f['line_total'])
print(f"{'folder':<16}{'lines':>8}{'covered':>9}{'%':>7}")
all_c = all_t = 0
for folder in sorted(folders):
    c, t = folders[folder]
    all_c, all_t = all_c + c, all_t + t
    print(f"{folder:<16}{t:>8}{c:>9}{100 * c / t if t else 100:>7.1f}")
print(f"{'src (all)':<16}{all_t:>8}{all_c:>9}{100 * all_c / all_t:>7.1f}")
PY
