#!/usr/bin/env bash
# Runs the command-line tool on a bundled sample drawing: renders it as read, then after a chain of edits,
# with anchors and handles drawn, into before.svg and after.svg.
set -euo pipefail
tool=${1:-build/tools/simplepath}
data=${2:-examples/data}
out=${3:-build/demo}
mkdir -p "$out"

# open-paths.svg holds three open strokes: path 0 a wave, path 1 a spiral, path 2 a zigzag with a tail.
input="$data/open-paths.svg"
echo "== $input as read"
"$tool" --decimals 3 "$input" render -o "$out/before.svg" info

# One call, edits in order, each seeing the drawing the previous one left:
#   pull the wave's first trough down, put a sharp corner on its middle crest,
#   add a vertex halfway along the zigzag's first stroke and make it symmetric,
#   cut the spiral in two (the zigzag becomes path 3) and turn its outer half by 30 degrees,
#   and join the wave's end to the zigzag's end into one stroke.
echo
echo "== after: drag the wave, a straight corner, insert + symmetric on the zigzag, split the spiral,"
echo "==        turn its outer half by 30 degrees, join the wave's end to the zigzag's end"
"$tool" --decimals 3 "$input" \
    drag --path 0 --at 1:0.5 --to 77.5 60 \
    mode straight --path 0 --vertex 2 \
    insert --path 2 --at 0:0.5 \
    mode symmetric --path 2 --vertex 1 \
    split --path 1 --vertex 18 \
    transform rotate 30 --path 2 \
    join 0:end 3:end \
    render -o "$out/after.svg" \
    info

echo
echo "before: $out/before.svg"
echo "after:  $out/after.svg"
