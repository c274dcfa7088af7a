#!/usr/bin/env bash
# interface_check.sh CHECK BUILD: compiles, links and runs the interface checks against the Alembic library of BUILD.
set -euo pipefail
check=$1
build=$(cd "$2" && pwd)
here=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

imath=$(sed -n 's|^Imath_DIR:PATH=||p' "$build/CMakeCache.txt")
include=$(cd "$imath/../../../.." && pwd)/include
export CXXFLAGS="-I$here/alembic/include -I$build/alembic/generated -I$include -I$include/Imath"
export LDFLAGS="-L$build/lib -lAlembic -Wl,-rpath,$build/lib -lImath-3_1"
OPTIONAL="collection material" "$check" syntax
OPTIONAL="collection material" "$check" link
"$check" run
