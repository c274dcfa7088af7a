#!/usr/bin/env bash
# demo.sh VO_ABC: looks into the sample archive and exports its meshes, curves and points.
set -euo pipefail
vo_abc=$1
sample=samples/showcase.abc
out=build/demo

mkdir -p "$out"
run() { echo "\$ vo_abc $*"; "$vo_abc" "$@"; echo; }
run info "$sample"
run tree "$sample"
run dump "$sample" /scene/camera/cameraShape --time 0.5
run export "$sample" --time 0.5 -o "$out/showcase.obj"
run export "$sample" --time 0.5 -o "$out/fountain.ply"
echo "The meshes and curves of $sample are in $out/showcase.obj, its points in $out/fountain.ply"
