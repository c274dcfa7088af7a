#!/usr/bin/env bash
# Installs the Debian packages listed in packages.txt that are not there yet. Touches no network when all are.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

missing=()
while read -r package; do
    [[ -z $package || $package == \#* ]] && continue
    status=$(dpkg-query -W -f='${Status}' "$package" 2>/dev/null || true)
    [[ $status == "install ok installed" ]] || missing+=("$package")
done <"$here/packages.txt"
[[ ${#missing[@]} -eq 0 ]] && exit 0

as_root=()
if [[ $(id -u) -ne 0 ]]; then
    command -v sudo >/dev/null || {
        echo "install_deps: run as root, or install sudo: ${missing[*]} are missing" >&2
        exit 1
    }
    as_root=(sudo)
fi
echo "install_deps: installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -q
"${as_root[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}"
