#!/bin/bash
# ./test.sh   installs what is missing, builds, and runs all tests: optimised, once more where
#             numbers have decimal commas, and with address and undefined-behaviour sanitizers.
set -uo pipefail
cd "$(dirname "$0")" || exit 1

passed=0
failed=0
broken=()

# Passed and failed cases in ctest's JUnit file; a test that is no list of cases, or died, counts as
# one.
count_cases() {
    awk '/<testcase / { ran = /status="run"/; listed = bad = 0 }
         /\[  PASSED  \]/ { passed += $4; listed = 1 }
         /\[  FAILED  \] [0-9]+ tests?, listed/ { failed += $4; bad = 1 }
         /<\/testcase>/ { if (ran && !listed) ++passed; if (!ran && !bad) ++failed }
         END { print passed + 0, failed + 0 }' "$1"
}

run_tests() {
    local name=$1 preset=$2 results=$PWD/build/$2/results.xml counts
    echo "== $name"
    rm -f "$results"
    ctest --preset "$preset" --parallel "$(nproc)" --no-tests=error --output-junit "$results" \
        --test-output-size-passed 10000000 --test-output-size-failed 10000000 || broken+=("$name")
    counts=$(count_cases "$results")
    passed=$((passed + ${counts% *}))
    failed=$((failed + ${counts#* }))
    echo "== $name: ${counts% *} passed, ${counts#* } failed"
}

build() {
    cmake --preset "$1" && cmake --build --preset "$1" && return
    echo "The $1 build failed." >&2
    exit 1
}

with_decimal_comma() {
    local folder=$PWD/build/locale
    mkdir -p "$folder"
    [ -d "$folder/de_DE.UTF-8" ] || localedef -i de_DE -f UTF-8 "$folder/de_DE.UTF-8" || return 1
    LOCPATH=$folder LC_ALL=de_DE.UTF-8 ZEP_TEST_COMMA=1 run_tests "decimal comma" release
}

scripts/install-dependencies.sh || exit 1

build release
run_tests "optimised" release
with_decimal_comma || broken+=("locale with decimal comma")
build asan
run_tests "sanitizers" asan

echo "$passed passed, $failed failed"
[ ${#broken[@]} -eq 0 ] && exit 0
printf 'Not passed: %s\n' "${broken[@]}"
exit 1
