#!/usr/bin/env bash
# coverage.sh: line and branch coverage of the container and of the Ogawa back end by the tests of alembic/ and tests/fuzz.
# Builds in build/coverage; installs gcovr when it is missing. Fails below the percentages here.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
least_lines=95
least_branches=85
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

status=0
for folder in alembic/ogawa alembic/core/ogawa; do
    echo "$folder"
    # Of code that the compiler adds for exceptions nobody wrote a branch.
    gcovr --root . --filter "$folder/" --object-directory build/coverage --exclude-throw-branches \
        --exclude-unreachable-branches --print-summary --fail-under-line "$least_lines" \
        --fail-under-branch "$least_branches" --output build/coverage/"${folder//\//_}".txt \
        build/coverage/alembic build/coverage/tests || status=1
done
((status == 0)) || echo "coverage: below $least_lines % of the lines or $least_branches % of the branches" >&2
exit "$status"
