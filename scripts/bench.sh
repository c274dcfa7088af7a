#!/usr/bin/env bash
# bench.sh BUILD: times reading and writing against plain copies, then counts the instructions of the hierarchy tasks.
set -euo pipefail
build=$1
scenes=$build/scenes

"$build/bin/vo_abc_bench" "$scenes"

command -v valgrind >/dev/null || {
    echo "valgrind is not installed: instructions are not counted"
    exit 0
}
instructions() {
    valgrind --tool=callgrind --callgrind-out-file=/dev/null "$build/bin/hierarchy" "$scenes/hierarchy_small.abc" "$1" 2>&1 |
        sed -n 's/.*Collected : //p'
}
objects=2005
base=$(instructions open)
echo
echo "instructions on $objects objects, opening ($base) left out:"
echo "  walk    $((($(instructions walk) - base) / objects)) an object"
echo "  walkx   $((($(instructions walkx) - base) / objects)) an object"
echo "  find    $((($(instructions find) - base) / 10)) a look-up, the first one included"
