#!/usr/bin/env bash
# Starts the staged program under a private Xvfb (with a tray host when one is
# installed), waits, and saves a screenshot of the whole screen.
#   scripts/screenshot.sh APP_DIR OUT.png [SECONDS] [COMMAND]
# COMMAND (one shell string, e.g. xdotool clicks) runs with DISPLAY set after
# the wait, before the picture is taken.
set -euo pipefail
app_dir=$1; out=$2; wait_s=${3:-3}; actions=${4:-}
display=":$((90 + RANDOM % 400))"
runtime=$(mktemp -d)
Xvfb "$display" -screen 0 ${SCREEN:-1024x768x24} -nolisten tcp >/dev/null 2>&1 &
xvfb=$!
trap 'kill $app $tray $xvfb 2>/dev/null || true; rm -rf "$runtime"' EXIT
for _ in $(seq 50); do [ -e "/tmp/.X11-unix/X${display#:}" ] && break; sleep 0.1; done
export DISPLAY=$display XDG_RUNTIME_DIR=$runtime
tray=""
if command -v trayer >/dev/null; then
    trayer --edge top --align right --widthtype pixel --width 120 --heighttype pixel --height 28 \
        --transparent false --tint 0x888888 >/dev/null 2>&1 &
    tray=$!
fi
"$app_dir/alarmclock" >/dev/null 2>&1 &
app=$!
sleep "$wait_s"
if [ -n "$actions" ]; then
    bash -c "$actions"
    sleep 1
fi
import -window root "$out"
echo "saved $out"
