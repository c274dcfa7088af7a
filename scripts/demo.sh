#!/usr/bin/env bash
# demo.sh VO_ABC: looks into the sample archive and exports its meshes.
set -euo pipefail
vo_abc=$1
sample=samples/shading_groups.abc
out=build/demo

mkdir -p "$out"
run() { echo "\$ vo_abc $*"; "$vo_abc" "$@"; echo; }
run info "$sample"
run tree "$sample"
run export "$sample" -o "$out/shading_groups.obj"
echo "The meshes of $sample are in $out/shading_groups.obj"
