#!/usr/bin/env bash
# coverage.sh: line and branch coverage of the container and of the Ogawa back end by the tests of alembic/ and tests/fuzz.
# Builds in build/coverage; gcovr is installed when it is missing.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
jobs=${JOBS:-$(nproc)}
programs=(alembic_ogawa_tests alembic_core_tests fuzz_tests allocation_tests)

if ! command -v gcovr >/dev/null; then
    as_root=()
    [[ $(id -u) -eq 0 ]] || as_root=(sudo)
    "${as_root[@]}" apt-get install -y -q --no-install-recommends gcovr
fi
cmake --preset coverage >/dev/null
cmake --build build/coverage -j "$jobs" --target "${programs[@]}"
find build/coverage -name '*.gcda' -delete
for program in "${programs[@]}"; do
    build/coverage/bin/"$program" --gtest_brief=1
done
for folder in alembic/ogawa alembic/core/ogawa; do
    echo "$folder"
    gcovr --root . --filter "$folder/" --exclude-throw-branches --exclude-unreachable-branches --print-summary \
        --object-directory build/coverage --output build/coverage/"${folder//\//_}".txt build/coverage
done
