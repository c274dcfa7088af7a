#!/usr/bin/env bash
# demo.sh VO_ABC [FOLDER]: writes the sample archive, looks into it, takes geometry out of it and makes pictures of it.
set -euo pipefail
vo_abc=$1
out=${2:-build/demo}
sample=$out/showcase.abc

mkdir -p "$out"
run() { echo "\$ vo_abc $*"; "$vo_abc" "$@"; echo; }
run sample -o "$sample"
run info "$sample"
run tree "$sample"
run dump "$sample" /scene/camera/cameraShape --time 0.5
run export "$sample" --time 0.5 -o "$out/showcase.obj"
run export "$sample" --time 0.5 -o "$out/spray.ply"
run render "$sample" --camera /scene/camera --shade group --time 0.25 --shutter 0.02 --size 960x540 -o "$out/showcase.png"
run render "$sample" --camera /scene/camera --shade group --sheet 12 --size 320x180 --samples 8 -o "$out/sheet.png"
echo "The scene is in $sample, its geometry in $out/showcase.obj and $out/spray.ply."
echo "Look at $out/showcase.png, and at $out/sheet.png: 12 moments of it."
