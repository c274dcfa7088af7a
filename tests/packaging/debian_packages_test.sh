#!/usr/bin/env bash
# debian_packages_test.sh BUILD SOURCE: makes the Debian packages, unpacks them into an empty folder, and looks at what a
# machine would have after installing them.
set -euo pipefail
build=$1 source=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() { echo "Debian packages: $*" >&2; exit 1; }

(cd "$build" && cpack -B "$work/packages" >"$work/log" 2>&1) || { cat "$work/log" >&2; fail "cpack failed"; }
root=$work/root
for name in libvo-abc-io1 libvo-abc-io-dev vo-abc-tools; do
    package=$(echo "$work/packages/$name"_*.deb)
    [[ -f $package ]] || fail "there is no package $name"
    dpkg-deb -x "$package" "$root"
    dpkg-deb -f "$package" Depends >"$work/$name.depends"
done

for name in libvo-abc-io-dev vo-abc-tools; do
    grep -q 'libvo-abc-io1 (= ' "$work/$name.depends" || fail "$name does not depend on the library of its version"
done
grep -q 'libimath-3' "$work/libvo-abc-io1.depends" || fail "the library's dependencies were not found out"
outside=$(find "$root" -mindepth 1 -maxdepth 1 ! -name opt ! -name usr)
[[ -z $outside ]] || fail "files outside /opt and /usr: $outside"
[[ ! -e $root/usr/include && -z $(find "$root/usr" -name '*.so*') ]] || fail "libraries or headers in /usr itself"
paths=$(grep -rlF -e "$build" -e "$work" "$root" || true)
[[ -z $paths ]] || fail "the folder of the build is named in $paths"

# Every link under /usr leads to a file of the packages, and the tool runs with the libraries of the packages alone.
while read -r link; do
    target=$(readlink "$link")
    [[ $target != /* || -e $root$target ]] || fail "$link leads to nothing"
done < <(find "$root" -type l)
for link in bin/vo_abc share/man/man1/vo_abc.1 share/bash-completion/completions/vo_abc share/cmake/vo_abc_io/vo_abc_ioConfig.cmake share/pkgconfig/vo_abc_io.pc; do
    [[ -L $root/usr/$link || -e $root/usr/$link ]] || fail "there is no /usr/$link"
done
tool=$root$(readlink "$root/usr/bin/vo_abc")
"$tool" info "$source/samples/showcase.abc" >"$work/log" || fail "vo_abc does not run"
ldd "$tool" | grep -E 'libvo_|libAlembic' | grep -v "$root" && fail "vo_abc takes libraries from elsewhere"
exit 0
