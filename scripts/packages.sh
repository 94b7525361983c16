# The Debian packages the program builds and runs with. Sourced by the scripts.
BUILD_PACKAGES=(cmake g++ make pkg-config qt6-base-dev libqt6sql6-sqlite libpulse-dev libsndfile1-dev
                fonts-liberation)
# Also needed by the tests (a private sound server with a recorder that keeps
# its null sink playing in real time, and a private session bus).
# The Debian package check needs cpack's helpers (dpkg-shlibdeps from dpkg-dev,
# file) and the two validators.
TEST_PACKAGES=(desktop-file-utils pulseaudio pulseaudio-utils dbus dpkg-dev file lintian appstream libcap2-bin)
# The desktop acceptance suite: X server, tray host, session bus, audio server
# and recorder, accessibility client, keyboard and mouse, screenshots, and a
# Wayland compositor with Qt's Wayland plugin.
ACCEPTANCE_PACKAGES=(xvfb trayer openbox dbus dbus-x11 at-spi2-core python3 python3-gi python3-pyatspi
                     gir1.2-atspi-2.0 xdotool x11-utils imagemagick pulseaudio pulseaudio-utils
                     weston qt6-wayland dpkg-dev file python3-dbusmock libfaketime)
# A screenshot of the real program (scripts/screenshot.sh, readme-screenshots.sh).
SCREENSHOT_PACKAGES=(xvfb trayer imagemagick xdotool python3)
# Line coverage (scripts/coverage.sh).
COVERAGE_PACKAGES=(gcovr)
# The fault runner (scripts/mutants.sh) reads its list with Python.
MUTANTS_PACKAGES=(python3)
