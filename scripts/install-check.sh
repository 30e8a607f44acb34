#!/usr/bin/env bash
# Builds the library alone, installs it into a scratch prefix, then configures, builds and runs a tiny
# consumer that finds it through find_package(SimplePath CONFIG). A second consumer pulls the source
# tree in with add_subdirectory and must get the library without tests, tools or benchmarks.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
work="$root/build-install"
rm -rf "$work"
cmake -S "$root" -B "$work/lib" -G Ninja -DCMAKE_BUILD_TYPE=Release -DSIMPLEPATH_BUILD_TESTS=OFF \
    -DSIMPLEPATH_BUILD_BENCH=OFF -DSIMPLEPATH_BUILD_EXAMPLES=OFF -DSIMPLEPATH_BUILD_TOOLS=OFF \
    -DCMAKE_INSTALL_PREFIX="$work/prefix"
cmake --build "$work/lib" -j "$(nproc)"
cmake --install "$work/lib"
# Only the public headers are installed, and the umbrella header names every one of them.
installed="$work/prefix/include/simplepath"
if [ -n "$(find "$installed" -path '*/detail/*')" ]; then
    echo "private headers (detail/) were installed" >&2
    exit 1
fi
(cd "$work/prefix/include" && find simplepath -name '*.h' ! -path simplepath/simplepath.h | sort) >"$work/installed.txt"
sed -n 's/^#include "\(simplepath\/[^"]*\)"$/\1/p' "$installed/simplepath.h" | sort >"$work/umbrella.txt"
if ! diff -u "$work/umbrella.txt" "$work/installed.txt" >&2; then
    echo "the installed headers and those the umbrella header includes differ" >&2
    exit 1
fi
cmake -S "$root/tests/consumer" -B "$work/consumer" -G Ninja -DCMAKE_PREFIX_PATH="$work/prefix"
cmake --build "$work/consumer"
"$work/consumer/consumer"
cmake -S "$root/tests/consumer" -B "$work/subdir" -G Ninja -DSIMPLEPATH_SOURCE_DIR="$root"
cmake --build "$work/subdir"
"$work/subdir/consumer"
if [ -n "$(find "$work/subdir" -name 'simplepath_*_tests' -o -name 'bench_*' -type f)" ]; then
    echo "add_subdirectory build produced test or benchmark programs it was not asked for" >&2
    exit 1
fi
echo "install-check: find_package and add_subdirectory consumers both built and ran"
