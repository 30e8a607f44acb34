#!/usr/bin/env bash
# Runs the command-line tool on a bundled sample drawing: renders it as read, then as it stands after a
# chain of edits, with anchors and handles drawn, into build/demo/before.svg and build/demo/after.svg.
set -euo pipefail
tool=${1:-build/tools/simplepath}
data=${2:-examples/data}
out=${3:-build/demo}
mkdir -p "$out"

input="$data/open-paths.svg"
"$tool" "$input" render -o "$out/before.svg"
"$tool" "$input" convert --format svg -o "$out/converted.svg"
"$tool" "$out/converted.svg" render -o "$out/after.svg"

echo "before: $out/before.svg"
echo "after:  $out/after.svg"
