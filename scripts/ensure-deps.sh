#!/usr/bin/env bash
# Installs the Debian packages that building, testing and benchmarking need, when any is missing.
set -euo pipefail
packages=(cmake ninja-build g++ clang clang-format libclang-rt-14-dev libgtest-dev libgmock-dev libbenchmark-dev
          libpugixml-dev libcli11-dev nlohmann-json3-dev python3)
missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0
echo "Installing missing packages: ${missing[*]}"
sudo_cmd=""
[ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"
$sudo_cmd apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo_cmd apt-get install -y -qq --no-install-recommends "${missing[@]}"
