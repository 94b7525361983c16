#!/usr/bin/env bash
# Installs the Debian packages named on the command line that are not
# installed yet (nothing to do, nothing run). Uses sudo when not root.
set -euo pipefail
missing=()
for pkg in "$@"; do
    status=$(dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null || true)
    [ "$status" = "install ok installed" ] || missing+=("$pkg")
done
[ ${#missing[@]} -eq 0 ] && exit 0
sudo=""
[ "$(id -u)" -eq 0 ] || sudo="sudo"
echo "Installing: ${missing[*]}"
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends -o DPkg::Lock::Timeout=120 "${missing[@]}"
