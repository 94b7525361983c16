#!/usr/bin/env bash
# Installs what is missing, builds if needed, and runs the desktop acceptance
# suite: the real program on a private Xvfb with a tray host, a session bus and
# an audio server, driven through its accessibility tree, mouse and keyboard.
#   scripts/acceptance.sh [BUILD_DIR]        (default: build)
# Prints PASS/FAIL per scenario and "N passed, M failed"; exits 1 on a failure
# and prints the folder that keeps the failed scenarios' screenshots and logs.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
scripts/deps.sh "${BUILD_PACKAGES[@]}" "${ACCEPTANCE_PACKAGES[@]}"

build=${1:-build}
if [ ! -f "$build/CMakeCache.txt" ]; then
    cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
fi
cmake --build "$build" --target alarmclock stage_app_dir app_icons packaging_files -j"$(nproc)" >/dev/null

# The staged folder may hold a database someone has used; every run starts
# from files exactly as a build makes them.
stage=$(mktemp -d /tmp/alarmclock-acceptance-app.XXXXXX)
trap 'rm -rf "$stage"' EXIT
cp "$build/app/alarmclock" "$build/app/alarmclock-sound" "$stage/"
"$build/tools/stage_assets" "$stage" assets/schema.sql >/dev/null

# The package, for the scenario that installs it as users do.
(cd "$build" && cpack -G DEB -B "$stage/deb" >/dev/null)
deb=$(ls "$stage"/deb/*.deb)

status=0
timeout --kill-after=30 1500 /usr/bin/python3 acceptance/run.py --app "$stage" --deb "$deb" || status=$?
exit "$status"
