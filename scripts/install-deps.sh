#!/bin/sh
# Installs the Debian 12 packages that building and testing need. As root, missing
# packages are installed with apt-get; otherwise the missing ones are named and the
# script fails, so that nothing half-builds.
set -eu
here=$(dirname "$0")
pkgs=$(grep -v '^#' "$here/packages.txt" | tr -s ' \n' ' ')
missing=""
for p in $pkgs; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing="$missing $p"
  fi
done
[ -z "$missing" ] && exit 0
if [ "$(id -u)" = 0 ]; then
  echo "Installing:$missing"
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq || apt-get update
  # shellcheck disable=SC2086
  apt-get install -y -qq --no-install-recommends $missing
else
  echo "Missing Debian packages:$missing" >&2
  echo "Install them with: sudo apt-get install -y$missing" >&2
  exit 1
fi
