#!/usr/bin/env bash
# conversion_check.sh KIT DUMPER VO_ABC: converts every archive of the conformance kit, alone and in layers, and compares the
# kit's dumps of what was read and what was written.
set -euo pipefail
archives=$1/archives cases=$1/cases.txt expected=$1/expected
dumper=$(realpath "$2") vo_abc=$(realpath "$3")
work=$(mktemp -d -t conversion.XXXXXX)
trap 'rm -rf "$work"' EXIT
passed=0 failed=0

# What the writer says of itself, and which core reads the archive.
without_writer() { grep -vE '^ *(core |info (library|api|written) |meta _ai_(AlembicVersion|DateWritten)=)' "$1"; }

# HDF5 archives have no hashes.
without_hashes() { without_writer "$1" | grep -vE '^ *hash '; }

# Layers number their time samplings anew, name their top otherwise, and answer wrong requests in their own way.
objects_of_layers() {
  sed -n -e '/^== objects$/,/^== contract$/p' -e '/^== schemas$/,$p' "$1" |
    grep -vE '^ *(hash |meta _ai_)' |
    sed -E -e 's/ sampling [0-9]+/ sampling/; s/ parent properties [0-9]+$//' \
           -e 's|^object "" name "" |object "/" name "ABC" |; s|^( *)parent ""$|\1parent "/"|'
}

differences() { diff "$1" "$2" | grep '^[<>]' || true; }

pass() { passed=$((passed + 1)); }
fail() { failed=$((failed + 1)); printf 'FAIL  convert %s: %s\n' "$1" "$2"; }
pass_if_empty() { # name, what the lines are, file of lines
  if [ -s "$3" ]; then fail "$1" "$(wc -l <"$3") $2; first: $(head -1 "$3" | cut -c1-200)"; else pass; fi
}

dump() { # folder file: as the kit runs it, so that dumps show the same name
  (cd "$1" && "$dumper" "$2")
}

# Each line in which the copy differs from the HDF5 archive makes it like the Ogawa twin, and is one of two kinds: HDF5
# archives refuse to be read as other types, and of wide strings Ogawa archives take some for others, which convert names.
check_hdf5() { # name file
  local twin=${2#hdf5/} kinds='^[<>] +as '
  if grep -q 'of wide strings read as others' "$work/errors"; then kinds+='|^[<>] +[0-9]+: \[L"'; fi
  differences "$work/source.txt" "$work/copy.txt" >"$work/to_copy.txt"
  grep -vE "$kinds" "$work/to_copy.txt" >"$work/unexplained.txt" || true
  pass_if_empty "$1" "lines unlike its source" "$work/unexplained.txt"

  [ -f "$archives/ogawa/$twin" ] || return 0
  mkdir -p "$work/twin/hdf5" # the dumper lists properties of archives in such a folder by name: HDF5 keeps no order
  cp "$archives/ogawa/$twin" "$work/twin/$2"
  dump "$work/twin" "$2" >"$work/dump.txt"
  without_hashes "$work/dump.txt" >"$work/twin.txt"
  differences "$work/source.txt" "$work/twin.txt" >"$work/to_twin.txt"
  comm -23 <(sort "$work/to_copy.txt") <(sort "$work/to_twin.txt") >"$work/elsewhere.txt"
  pass_if_empty "$1" "lines neither like its source nor like its Ogawa twin" "$work/elsewhere.txt"
  differences "$work/copy.txt" "$work/twin.txt" >"$work/from_twin.txt"
  comm -23 <(sort "$work/from_twin.txt") <(sort "$work/to_twin.txt") >"$work/own.txt"
  pass_if_empty "$1" "lines differ from its Ogawa twin that do not in its source" "$work/own.txt"
  [ ! -s "$work/from_twin.txt" ] || printf 'note  %s: its source differs from the Ogawa twin, %s lines of %s\n' \
    "$1" "$(wc -l <"$work/from_twin.txt")" "$(wc -l <"$work/twin.txt")"
}

check() { # name expected files...
  local name=$1 wanted=$expected/$2.txt filter=without_writer copy=$3 file
  shift 2
  local strongest_last=()
  for file in "$@"; do strongest_last=("$file" "${strongest_last[@]}"); done
  if [ $# -gt 1 ]; then filter=objects_of_layers; fi
  case "$*" in
    *hdf5/*) copy=hdf5/copy.abc; [ $# -gt 1 ] || { copy=$1; filter=without_hashes; } ;;
  esac
  rm -rf "$work/copy"
  mkdir -p "$work/copy/$(dirname "$copy")"
  if ! (cd "$archives" && "$vo_abc" convert "${strongest_last[@]}" -o "$work/copy/$copy") >/dev/null 2>"$work/errors"; then
    fail "$name" "$(tail -1 "$work/errors")"
    return
  fi
  dump "$work/copy" "$copy" >"$work/dump.txt"
  $filter "$work/dump.txt" >"$work/copy.txt"
  $filter "$wanted" >"$work/source.txt"
  if [ $filter = without_hashes ]; then check_hdf5 "$name" "$1"; return; fi
  differences "$work/source.txt" "$work/copy.txt" >"$work/unexplained.txt"
  pass_if_empty "$name" "lines unlike its source" "$work/unexplained.txt"
}

while read -r name how wanted files; do
  [ "$how" = dump ] || continue
  case $files in *missing/* | *corrupt/*) continue ;; esac
  # shellcheck disable=SC2086  # names of files
  check "$name" "$wanted" $files
done <"$cases"
echo "conversion: $passed passed, $failed failed"
[ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
