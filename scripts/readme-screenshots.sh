#!/usr/bin/env bash
# Remakes the README's screenshots: the main window in each colour scheme,
# with a few sample alarms, under a private Xvfb. Installs what is missing and
# builds BUILD_DIR first when it holds no program.
#   scripts/readme-screenshots.sh [BUILD_DIR]
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
source scripts/packages.sh
scripts/deps.sh "${BUILD_PACKAGES[@]}" "${SCREENSHOT_PACKAGES[@]}"
if [ ! -x "$build/app/alarmclock" ]; then
    cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
    cmake --build "$build" --target alarmclock stage_app_dir -j"$(nproc)" >/dev/null
fi
out=docs/screenshots
mkdir -p "$out"
for scheme in 0 1 2; do
    name=$(echo regular matrix custom | cut -d' ' -f$((scheme + 1)))
    app=$(mktemp -d)
    cp "$build"/app/* "$app"/
    # Sample rows relative to now, so the countdowns and colours show a spread.
    sqlite_date() { date -d "$1" '+%b %d, %Y'; }
    python3 - "$app/alarmclock.mdb" "$scheme" <<PY
import sqlite3, sys
db = sqlite3.connect(sys.argv[1])
db.execute("UPDATE tblprogramsetting SET intColorPick = ?, booTimeRow = 1", (int(sys.argv[2]),))
rows = [("$(sqlite_date '+3 min')", "$(date -d '+3 min' +%H:%M)", "Tea is ready", "https://example.org/tea"),
        (None, "07:30", "Wake up", None),
        ("$(sqlite_date '+2 days')", "09:15", "Dentist appointment", None),
        (None, "$(date -d '-10 min' +%H:%M)", "Stand up and stretch", None),
        ("$(sqlite_date '+40 min')", "$(date -d '+40 min' +%H:%M)", "Call the plumber back", None),
        ("$(sqlite_date '-1 day')", "18:00", "Book club", None)]
db.executemany("INSERT INTO tblalarmclock (dtalarmclockmmmddyyyy, dtalarmclockhhnn, stralarmclock, strURL) VALUES (?, ?, ?, ?)", rows)
db.commit()
PY
    scripts/screenshot.sh "$app" "$app/screen.png" 4
    convert "$app/screen.png" -crop 804x616+0+0 +repage "$out/$name.png"
    rm -rf "$app"
    echo "wrote $out/$name.png"
done
