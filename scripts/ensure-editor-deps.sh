#!/usr/bin/env bash
# Installs what the browser editor needs when it is missing: the WebAssembly compiler, a headless browser
# and the pinned npm packages of the test runner (web/package-lock.json).
set -euo pipefail
cd "$(dirname "$0")/.."
packages=(emscripten chromium python3)
missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
    echo "Installing missing packages: ${missing[*]}"
    sudo_cmd=""
    [ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"
    $sudo_cmd apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo_cmd apt-get install -y -qq --no-install-recommends -o DPkg::Lock::Timeout=600 \
        "${missing[@]}"
fi
# npm comes with Node.js from other sources; with Debian's own Node.js it is a package of its own.
if ! command -v npm >/dev/null; then
    sudo_cmd=""
    [ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"
    DEBIAN_FRONTEND=noninteractive $sudo_cmd apt-get install -y -qq --no-install-recommends -o DPkg::Lock::Timeout=600 npm
fi
if [ "${1:-}" = "--npm" ] && [ ! -d web/node_modules/playwright-core ]; then
    (cd web && npm ci --no-audit --no-fund --ignore-scripts)
fi
