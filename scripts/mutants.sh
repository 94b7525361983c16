#!/usr/bin/env bash
# Applies the deliberate faults of scripts/mutants.txt one at a time, rebuilds
# incrementally in build-mutants/, runs the tests that should notice, restores
# the file, and reports how many faults the suite caught and which survived.
#
#   scripts/mutants.sh [LIST] [NAME-FILTER]
#
# LIST defaults to scripts/mutants.txt; NAME-FILTER (a substring) runs only
# the faults whose file or description contains it. Equivalent faults (marked
# "equivalent:" in the list) are applied too, and reported apart.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$(pwd)
list=${1:-scripts/mutants.txt}
filter=${2:-}
build=${MUTANTS_BUILD_DIR:-build-mutants}
jobs=${MUTANTS_JOBS:-2}

source scripts/packages.sh
scripts/deps.sh "${BUILD_PACKAGES[@]}" "${TEST_PACKAGES[@]}" "${MUTANTS_PACKAGES[@]}"

export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$root} QT_QPA_PLATFORM=offscreen
launcher=()
command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo "${launcher[@]}" >/dev/null
cmake --build "$build" -j"$jobs" >/dev/null

# The tests that watch each folder of src/, unless a fault names its own.
tests_for() {
    case "$1" in
        src/shell/*) echo "tst_shell tst_table" ;;
        src/data/*) echo "tst_database tst_table tst_shell" ;;
        src/editors/*) echo "tst_editors" ;;
        src/appearance/*) echo "tst_appearance tst_rules" ;;
        src/info/*) echo "tst_info" ;;
        src/rules/*) echo "tst_rules tst_table" ;;
        src/platform/*) echo "tst_platform" ;;
        src/table/*) echo "tst_table tst_alarm" ;;
        src/links/*) echo "tst_table tst_shell tst_editors tst_appearance" ;;
        helper/*) echo "tst_wake" ;;
        *) echo "tst_rules" ;;
    esac
}

# One fault per record, fields "file:", "find:", "replace:", "why:", and
# optional "tests:" and "equivalent:"; records are separated by blank lines.
# <NL> in find/replace stands for a line break. Prints one tab-separated line
# per record: file, find, replace, why, tests, equivalent.
records=$(python3 - "$list" "$filter" <<'EOF'
import sys
text = open(sys.argv[1], encoding='utf-8').read()
for block in text.split('\n\n'):
    rec = {}
    for line in block.splitlines():
        if line.startswith('#') or ':' not in line:
            continue
        key, _, value = line.partition(':')
        rec[key.strip()] = value[1:] if value.startswith(' ') else value
    if 'file' not in rec:
        continue
    if sys.argv[2] and sys.argv[2] not in rec['file'] and sys.argv[2] not in rec.get('why', ''):
        continue
    print('\x1f'.join([rec['file'], rec['find'], rec.get('replace', ''), rec.get('why', ''),
                     rec.get('tests', ''), rec.get('equivalent', '')]))
EOF
)

total=0 caught=0 equivalent=0
survivors=()
started=$(date +%s)
while IFS=$'\x1f' read -r file find replace why tests equiv; do
    [[ -n "$file" ]] || continue
    total=$((total + 1))
    cp "$file" "$file.orig"
    if ! python3 - "$file" "$find" "$replace" <<'EOF'
import sys
path, find, replace = sys.argv[1], sys.argv[2].replace('<NL>', '\n'), sys.argv[3].replace('<NL>', '\n')
text = open(path, encoding='utf-8').read()
if text.count(find) != 1:
    sys.exit(f'{path}: the text to find occurs {text.count(find)} times: {find!r}')
open(path, 'w', encoding='utf-8').write(text.replace(find, replace))
EOF
    then
        mv "$file.orig" "$file"
        echo "BROKEN LIST ENTRY: $why"
        survivors+=("(not applied) $file: $why")
        continue
    fi
    tests=${tests:-$(tests_for "$file")}
    # A test program that no longer exists would fail the build and pass for a
    # catch. Tests that are scripts (include_floors) build nothing.
    missing="" programs=""
    for t in $tests; do
        [[ $t == tst_* ]] || continue
        programs="$programs $t"
        [[ -x "$build/tests/$t" ]] || missing="$missing $t"
    done
    if [[ -n "$missing" ]]; then
        mv "$file.orig" "$file"
        echo "BROKEN LIST ENTRY (no test program$missing): $why"
        survivors+=("(not run) $file: $why")
        continue
    fi
    verdict=survived
    # shellcheck disable=SC2086
    if [[ -n "$programs" ]] && ! cmake --build "$build" -j"$jobs" --target $programs >"$build/mutant.log" 2>&1; then
        verdict="caught (build)"
    elif ! (cd "$build" && ctest -j"$jobs" --timeout 120 -R "^($(echo $tests | tr ' ' '|'))\$" >>mutant.log 2>&1); then
        verdict=caught
    fi
    mv "$file.orig" "$file"
    touch "$file" # the restored file must be rebuilt, whatever its time stamp
    if [[ "$verdict" != survived ]]; then
        caught=$((caught + 1))
    elif [[ -n "$equiv" ]]; then
        equivalent=$((equivalent + 1))
        verdict="survived (equivalent: $equiv)"
    else
        survivors+=("$file: $why")
    fi
    printf '%3d %-16s %s: %s\n' "$total" "${verdict%% (*}" "$file" "$why"
done <<<"$records"

# Leave the build as the sources are.
cmake --build "$build" -j"$jobs" >/dev/null || true
minutes=$(( ($(date +%s) - started + 59) / 60 ))
echo
echo "$caught of $total faults caught ($equivalent equivalent, ${#survivors[@]} survivors) in about $minutes min"
for s in "${survivors[@]}"; do
    echo "  SURVIVOR  $s"
done
[[ ${#survivors[@]} -eq 0 ]]
