#!/usr/bin/env bash
# installed_tree_test.sh BUILD SOURCE: installs, moves the tree, and builds and runs the program of docs/embedding.md
# against it, with CMake and with pkg-config.
set -euo pipefail
build=$1 source=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() { echo "installed tree: $*" >&2; exit 1; }
quietly() { "$@" >"$work/log" 2>&1 || { cat "$work/log" >&2; fail "failed: $*"; }; }

# page_lines N PREFIX: the commands of the page's Nth console block, for this build and that prefix instead of /opt.
page_lines() {
    awk -v n="$1" '/^```console$/ { ++i; next } /^```/ { if (i == n) exit } i == n && /^\$ / { print substr($0, 3) }' \
        "$source/docs/embedding.md" | sed "s|/opt/vo_abc_io|$2|g; s|build/release|$build|g"
}
# block LANGUAGE: the first code block of that language in the page.
block() { sed -n "/^\`\`\`$1\$/,/^\`\`\`\$/{//!p;/^\`\`\`\$/q}" "$source/docs/embedding.md"; }

[[ $(grep -c '^```console$' "$source/docs/embedding.md") == 3 ]] || fail "the page has other blocks of commands than these"
quietly bash -euc "$(page_lines 1 "$work/first")"
mv "$work/first" "$work/moved" # an installed tree may be moved
prefix=$work/moved
sample=$source/samples/showcase.abc
expected=$(sed -n '/^\$ build\/host /{n;p;q}' "$source/docs/embedding.md")
[[ -n $expected ]] || fail "the page shows no output of its program"

mkdir "$work/host"
cd "$work/host"
block cpp >main.cpp
block cmake >CMakeLists.txt
ln -s "$source/samples" samples
export CXXFLAGS="-Wall -Wextra -Werror"
quietly bash -euc "$(page_lines 2 "$prefix")"
[[ $(tail -n 1 "$work/log") == "$expected" ]] || fail "the program printed '$(tail -n 1 "$work/log")', the page says '$expected'"
build/host "$sample" /scene/nobody >log 2>&1 && fail "a mesh that is not there was loaded"
ldd build/host | grep -E 'libvo_|libAlembic' | grep -v "$prefix" && fail "libraries are taken from elsewhere"

if command -v pkg-config >/dev/null; then
    quietly bash -euc "$(page_lines 3 "$prefix")"
    [[ $(./host "$sample" /scene/ring/ringShape) == "$expected" ]] || fail "built with pkg-config, it differs"
fi

# Beside an Alembic of another make nothing is installed, and none is mixed in.
mkdir -p "$work/foreign/include/Alembic"
cmake --install "$build" --prefix "$work/foreign" >log 2>&1 && fail "installed over another Alembic"
grep -q "holds another Alembic" log || fail "the refusal does not say why: $(cat log)"
mkdir -p "$work/library/lib" && touch "$work/library/lib/libAlembic.so.1.8"
cmake --install "$build" --prefix "$work/library" >log 2>&1 && fail "installed over the library of another Alembic"
# What an interrupted installation left behind is no other make.
mkdir "$work/interrupted" && touch "$work/interrupted/include" # a file where the folder of headers is to be
cmake --install "$build" --prefix "$work/interrupted" >log 2>&1 && fail "installed headers into a file"
rm "$work/interrupted/include"
quietly cmake --install "$build" --prefix "$work/interrupted"
sed -i '/^find_package/i add_library(Alembic::Alembic INTERFACE IMPORTED)\
target_include_directories(Alembic::Alembic INTERFACE ${CMAKE_SOURCE_DIR})' CMakeLists.txt
cmake -G Ninja -B mixed -DCMAKE_PREFIX_PATH="$prefix" >log 2>&1 && fail "mixed with another Alembic"
tr -s " \n" " " <log | grep -q "another one has been found before" || fail "the refusal does not say why: $(cat log)"

"$prefix/bin/vo_abc" info "$sample" >log || fail "the installed vo_abc does not run"
