#!/usr/bin/env bash
# Checks the house rules of src/ that the compiler does not:
#  - a file includes only from its own folder or a floor below it;
#  - only the main window (shell/) knows the table window's class;
#  - no source file is over 600 non-blank lines.
# Prints each breach and exits 1 when there is any. CTest runs it.
#   scripts/check-floors.sh [SRC_DIR]
set -euo pipefail
src=${1:-"$(dirname "$0")/../src"}
cd "$src"

# From the ground up; a folder may include its own floor and those below.
floors=(rules platform data links appearance table editors info shell main.cpp)
floor_of() {
    local top=${1%%/*} i
    for i in "${!floors[@]}"; do
        [ "${floors[$i]}" = "$top" ] && { echo "$i"; return; }
    done
    echo -1
}

status=0
breach() { echo "$1"; status=1; }

while IFS= read -r file; do
    own=$(floor_of "$file")
    [ "$own" -ge 0 ] || { breach "$file: in no floor (add its folder to scripts/check-floors.sh)"; continue; }
    while IFS=: read -r line target; do
        there=$(floor_of "$target")
        if [ "$there" -lt 0 ]; then
            breach "$file:$line: includes \"$target\", which is in no floor"
        elif [ "$there" -gt "$own" ]; then
            breach "$file:$line: includes \"$target\" from a floor above (${floors[$own]} may use ${floors[*]:0:$own+1})"
        fi
        if [ "$target" = table/frmAlarmClock.h ] && [[ $file != table/* && $file != shell/* ]]; then
            breach "$file:$line: includes the table window; ask for what you need through links/"
        fi
    done < <(grep -n -E '^[[:space:]]*#[[:space:]]*include[[:space:]]*"' "$file" | sed -E 's/^([0-9]+):[^"]*"([^"]*)".*/\1:\2/' || true)
    lines=$(grep -c -v '^[[:space:]]*$' "$file" || true)
    [ "$lines" -le 600 ] || breach "$file: $lines non-blank lines, over 600"
done < <(find . -name '*.h' -o -name '*.cpp' | sed 's|^\./||' | sort)

[ $status -eq 0 ] && echo "floors: every include goes down, no file over 600 lines"
exit $status
