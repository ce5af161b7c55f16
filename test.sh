#!/usr/bin/env bash
# Installs what is missing, checks the style, builds everything twice (plain, and with the
# address and undefined behaviour sanitizers) and runs every test.
set -uo pipefail
cd "$(dirname "$0")"
. tools/packages.sh

echo "Vardenix: linting, building and running every test."
need_packages "${build_packages[@]}" "${run_packages[@]}" "${test_packages[@]}" || exit 1

passed=0
failed=0

# Adds what CTest counted in a log to the totals.
count_tests() {
  local log=$1 total lost
  total=$(sed -n 's/.* tests failed out of \([0-9]*\)$/\1/p' "$log" | tail -1)
  lost=$(sed -n 's/^.*, \([0-9]*\) tests failed out of .*$/\1/p' "$log" | tail -1)
  passed=$((passed + ${total:-0} - ${lost:-0}))
  failed=$((failed + ${lost:-1}))
}

run_tests() {
  local preset=$1 log=build/$1-tests.log
  shift
  configure_and_build "$preset" || { failed=$((failed + 1)); return; }
  ctest --test-dir "build/$preset" -j2 --output-on-failure --no-tests=error "$@" >"$log" 2>&1
  grep -vE '^ *[0-9/]+ Test +#.* Passed |^ +Start +[0-9]+:' "$log" | tail -60
  count_tests "$log"
}

run_tests tests
# What starts whole programs has been tried above; here the logic and the windows run again.
run_tests sanitize --label-exclude 'endtoend|tools'

if tools/lint.sh build/tests; then passed=$((passed + 1)); else failed=$((failed + 1)); fi

echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
