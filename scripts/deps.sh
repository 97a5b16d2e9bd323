#!/usr/bin/env bash
# Installs the Debian packages the build needs, when they are missing and we are root.
set -euo pipefail
packages=(cmake ninja-build g++ clang pkg-config googletest libgtest-dev libgmock-dev
          libbenchmark-dev libpugixml-dev librapidcheck-dev libclang-rt-14-dev "$@")
missing=()
for p in "${packages[@]}"; do
  dpkg -s "$p" >/dev/null 2>&1 || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0
if [ "$(id -u)" -ne 0 ]; then
  echo "missing Debian packages: ${missing[*]} (run as root, or install them)" >&2
  exit 1
fi
echo "installing: ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
apt-get update -q
apt-get install -y -q --no-install-recommends "${missing[@]}"
