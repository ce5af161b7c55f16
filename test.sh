#!/usr/bin/env bash
# Installs what is missing, builds, runs every test, those of logic and windows once more under the
# address and undefined behaviour sanitizers, and checks the style.
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

# run_tests NAME CTEST-OPTION...: runs the tests that the options choose.
run_tests() {
  local log=build/$1-tests.log
  shift
  ctest --test-dir build/tests -j2 --output-on-failure --no-tests=error "$@" >"$log" 2>&1
  grep -vE '^ *[0-9/]+ Test +#.* Passed |^ +Start +[0-9]+:' "$log" | tail -60
  count_tests "$log"
}

if configure_and_build tests all; then
  # The tests on a desktop run one at a time; the linter has the other processor meanwhile.
  tools/lint.sh build/tests >build/lint.log 2>&1 &
  lint=$!
  run_tests plain --label-exclude sanitized --exclude-regex _sanitized_NOT_BUILT
  if configure_and_build tests sanitized; then
    run_tests sanitized --label-regex sanitized
  else
    failed=$((failed + 1))
  fi
  if wait "$lint"; then passed=$((passed + 1)); else failed=$((failed + 1)); fi
  cat build/lint.log
else
  failed=$((failed + 1))
fi

echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
