#!/usr/bin/env bash
# Installs the Debian packages the build and the tests need, when any is missing.
# Safe to run again: it does nothing when everything is there.
set -euo pipefail
packages=(cmake g++ make pkg-config libgtest-dev libgmock-dev libbenchmark-dev
          libsqlite3-dev libedit-dev libcairo2-dev mdbtools
          clang libclang-rt-14-dev    # clang and libFuzzer: make fuzz
          python3-ezdxf librecad poppler-utils)   # the DXF round-trip check
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0
echo "Installing: ${missing[*]}"
sudo=""
[ "$(id -u)" -eq 0 ] || sudo="sudo"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -q
$sudo apt-get install -y -q --no-install-recommends "${missing[@]}"
