#!/usr/bin/env bash
# installed_tree_test.sh BUILD SOURCE: installs, moves the tree, and builds and runs the program of docs/embedding.md
# against it, with CMake and with pkg-config.
set -euo pipefail
build=$1 source=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() { echo "installed tree: $*" >&2; exit 1; }
quietly() { "$@" >"$work/log" 2>&1 || { cat "$work/log" >&2; fail "failed: $*"; }; }

# block LANGUAGE: the first code block of that language in the page.
block() { sed -n "/^\`\`\`$1\$/,/^\`\`\`\$/{//!p;/^\`\`\`\$/q}" "$source/docs/embedding.md"; }

quietly cmake --install "$build" --prefix "$work/first"
mv "$work/first" "$work/moved"
prefix=$work/moved
sample=$source/samples/showcase.abc
expected=$(sed -n '/^\$ build\/host /{n;p;q}' "$source/docs/embedding.md")
[[ -n $expected ]] || fail "the page shows no output of its program"

mkdir "$work/host"
cd "$work/host"
block cpp >main.cpp
block cmake >CMakeLists.txt
quietly cmake -G Ninja -B build -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_FLAGS="-Wall -Wextra -Werror"
quietly cmake --build build
printed=$(build/host "$sample" /scene/ring/ringShape)
[[ $printed == "$expected" ]] || fail "the program printed '$printed', the page says '$expected'"
build/host "$sample" /scene/nobody >log 2>&1 && fail "a mesh that is not there was loaded"
ldd build/host | grep -E 'libvo_|libAlembic' | grep -v "$prefix" && fail "libraries are taken from elsewhere"

if command -v pkg-config >/dev/null; then
    export PKG_CONFIG_PATH=$prefix/lib/pkgconfig
    quietly "${CXX:-c++}" -std=c++17 main.cpp $(pkg-config --cflags --libs vo_abc_io) -o with_pkg_config
    [[ $(./with_pkg_config "$sample" /scene/ring/ringShape) == "$expected" ]] || fail "built with pkg-config, it differs"
fi

# Beside an Alembic of another make nothing is installed, and none is mixed in.
mkdir -p "$work/foreign/include/Alembic"
cmake --install "$build" --prefix "$work/foreign" >log 2>&1 && fail "installed over another Alembic"
grep -q "holds another Alembic" log || fail "the refusal does not say why: $(cat log)"
mkdir -p "$work/library/lib" && touch "$work/library/lib/libAlembic.so.1.8"
cmake --install "$build" --prefix "$work/library" >log 2>&1 && fail "installed over the library of another Alembic"
sed -i '/^find_package/i add_library(Alembic::Alembic INTERFACE IMPORTED)\
target_include_directories(Alembic::Alembic INTERFACE ${CMAKE_SOURCE_DIR})' CMakeLists.txt
cmake -G Ninja -B mixed -DCMAKE_PREFIX_PATH="$prefix" >log 2>&1 && fail "mixed with another Alembic"
tr -s " \n" " " <log | grep -q "another one has been found before" || fail "the refusal does not say why: $(cat log)"

"$prefix/bin/vo_abc" info "$sample" >log || fail "the installed vo_abc does not run"
