#!/usr/bin/env bash
# Times the command-line tool on a big document: path data of 1,000,000 subpaths (about 19 MB: every
# other subpath a closed cubic, the rest closed triangles), generated here rather than kept in the
# repository. Reports wall time, CPU time and peak memory of info, --json info and convert.
#
#   bench/big-document.sh [TOOL] [SUBPATHS]     (TOOL defaults to build-bench/tools/simplepath)
#
# Build the tool in Release first, e.g.
#   cmake -S . -B build-bench -G Ninja -DCMAKE_BUILD_TYPE=Release && cmake --build build-bench --target simplepath_tool
set -euo pipefail
tool=${1:-build-bench/tools/simplepath}
count=${2:-1000000}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

awk -v n="$count" 'BEGIN {
    for (i = 0; i < n; i++) {
        x = i % 1000; y = int(i / 1000)
        if (i % 2 == 0) printf "M%d %dc1 2 3 2 4 0z", x, y; else printf "M%d %dl3 0 0 3z", x, y
    }
    print ""
}' > "$work/big.txt"
echo "input: $count subpaths, $(wc -c < "$work/big.txt") bytes"

for command in "info" "--json info" "convert"; do
    # shellcheck disable=SC2086 # the command is split into its words on purpose
    /usr/bin/time -f "$command: %e s wall, %U s user + %S s system, peak %M KB" \
        "$tool" "$work/big.txt" $command > "$work/out" 2> "$work/time" || { cat "$work/time"; exit 1; }
    tail -n 1 "$work/time"
done
