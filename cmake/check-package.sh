#!/usr/bin/env bash
# Test: the Debian package builds, passes lintian and the AppStream validator,
# declares its run-time dependencies and lays out the program under /usr.
#   cmake/check-package.sh BUILD_DIR
set -euo pipefail
build=$(cd "$1" && pwd)
out=$(mktemp -d /tmp/alarmclock-package.XXXXXX)
trap 'rm -rf "$out"' EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }

(cd "$build" && cpack -G DEB -B "$out" >"$out/cpack.log" 2>&1) || { cat "$out/cpack.log"; fail "cpack"; }
deb=$(ls "$out"/*.deb)
echo "built $(basename "$deb")"

# Errors fail; warnings and notes are printed for the record.
lintian --fail-on error --info "$deb" 2>/dev/null || fail "lintian reports errors"

depends=$(dpkg-deb -f "$deb" Depends)
for needed in libqt6sql6-sqlite libqt6widgets6 libqt6dbus6 libpulse0 libsndfile1 libcap2-bin; do
    [[ "$depends" == *"$needed"* ]] || fail "Depends lacks $needed: $depends"
done

root="$out/root"
dpkg -x "$deb" "$root"
app="$root/usr/lib/quorvel-alarmclock"
for f in "$app/alarmclock" "$app/alarmclock.mdb" "$app/alarm.wav" "$app/backgroundregular.bmp" \
         "$app/backgroundmatrix.bmp" "$app/backgroundcustom.bmp" "$app/quorvel-alarmclock-wake" "$app/alarmclock-sound" \
         "$root/usr/share/applications/quorvel-alarmclock.desktop" \
         "$root/usr/share/metainfo/quorvel-alarmclock.metainfo.xml" \
         "$root/usr/share/icons/hicolor/48x48/apps/quorvel-alarmclock.png" \
         "$root/usr/share/icons/hicolor/scalable/apps/quorvel-alarmclock.svg" \
         "$root/usr/share/man/man1/quorvel-alarmclock.1.gz" \
         "$root/usr/share/doc/quorvel-alarmclock/copyright"; do
    [ -f "$f" ] || fail "missing: ${f#"$root"}"
done
[ -x "$app/alarmclock" ] || fail "the program is not executable"
[ "$(readlink "$root/usr/bin/quorvel-alarmclock")" = ../lib/quorvel-alarmclock/alarmclock ] ||
    fail "/usr/bin/quorvel-alarmclock does not lead to the program"
grep -qx 'Exec=/usr/lib/quorvel-alarmclock/alarmclock' "$root/usr/share/applications/quorvel-alarmclock.desktop" ||
    fail "the desktop entry does not start /usr/lib/quorvel-alarmclock/alarmclock"
grep -qx 'StartupWMClass=quorvel-alarmclock' "$root/usr/share/applications/quorvel-alarmclock.desktop" ||
    fail "the desktop entry names no window class for docks to match"
desktop-file-validate "$root/usr/share/applications/quorvel-alarmclock.desktop" || fail "desktop-file-validate"
appstreamcli validate --no-net "$root/usr/share/metainfo/quorvel-alarmclock.metainfo.xml" ||
    fail "appstreamcli validate"
# Installed (root only, as CI runs): the postinst gives the helper its capability.
if [ "$(id -u)" -eq 0 ] && ! dpkg -s quorvel-alarmclock >/dev/null 2>&1; then
    dpkg -i "$deb" >"$out/dpkg.log" 2>&1 || { cat "$out/dpkg.log"; fail "dpkg -i"; }
    caps=$(getcap /usr/lib/quorvel-alarmclock/quorvel-alarmclock-wake)
    dpkg -r quorvel-alarmclock >/dev/null 2>&1
    [[ "$caps" == *cap_wake_alarm* ]] || fail "the installed helper lacks cap_wake_alarm: '$caps'"
fi
echo "package layout, dependencies and metadata are fine"
