#!/usr/bin/env bash
# Starts the staged program under a private Xvfb with a tray host, waits, and
# saves a screenshot of the whole screen. Installs what is missing; builds
# first when APP_DIR is the build's own folder and holds no program yet.
#   scripts/screenshot.sh [APP_DIR] [OUT.png] [SECONDS] [COMMAND]
# APP_DIR defaults to build/app, OUT.png to screenshot.png. COMMAND (one shell
# string, e.g. xdotool clicks) runs with DISPLAY set after the wait, before the
# picture is taken.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
app_dir=${1:-build/app}; out=${2:-screenshot.png}; wait_s=${3:-3}; actions=${4:-}
source "$root/scripts/packages.sh"
"$root/scripts/deps.sh" "${BUILD_PACKAGES[@]}" "${SCREENSHOT_PACKAGES[@]}"
if [ ! -x "$app_dir/alarmclock" ]; then
    if [ "$(realpath -m "$app_dir")" != "$root/build/app" ]; then
        echo "screenshot: no program in $app_dir" >&2
        exit 1
    fi
    cmake -S "$root" -B "$root/build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
    cmake --build "$root/build" --target alarmclock stage_app_dir -j"$(nproc)" >/dev/null
fi
display=":$((90 + RANDOM % 400))"
runtime=$(mktemp -d)
app="" tray=""
Xvfb "$display" -screen 0 ${SCREEN:-1024x768x24} -nolisten tcp >/dev/null 2>&1 &
xvfb=$!
trap 'kill $app $tray $xvfb 2>/dev/null || true; rm -rf "$runtime"' EXIT
for _ in $(seq 50); do [ -e "/tmp/.X11-unix/X${display#:}" ] && break; sleep 0.1; done
export DISPLAY=$display XDG_RUNTIME_DIR=$runtime
trayer --edge top --align right --widthtype pixel --width 120 --heighttype pixel --height 28 \
    --transparent false --tint 0x888888 >/dev/null 2>&1 &
tray=$!
"$app_dir/alarmclock" >/dev/null 2>&1 &
app=$!
sleep "$wait_s"
if [ -n "$actions" ]; then
    bash -c "$actions"
    sleep 1
fi
import -window root "$out"
echo "saved $out"
