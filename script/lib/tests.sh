# shellcheck shell=bash
# Runs test presets and counts, over all of them, what passed and what failed.

passed=0
failed=0
counted_steps=0 # failed steps whose failures are in `failed` one by one
not_run=()

export UBSAN_OPTIONS=print_stacktrace=1

# test_step PRESET: one step that runs a preset's tests and adds its result to the totals.
test_step() {
  local preset=$1 report="$PWD/build/logs/$1-tests.xml" status=0
  rm -f "$report"
  step "$preset tests" run_tests "$preset" "$report" || status=$?
  if [ ! -f "$report" ]; then return $status; fi

  local all failures name
  all=$(attribute tests "$report")
  failures=$(attribute failures "$report")
  if [ -z "$all" ] || [ -z "$failures" ]; then fail "cannot read $report"; fi
  while IFS= read -r name; do
    not_run+=("$name ($preset)")
    all=$((all - 1))
  done < <(left_out "$report")
  passed=$((passed + all - failures))
  failed=$((failed + failures))
  if [ "$failures" -gt 0 ]; then counted_steps=$((counted_steps + 1)); fi
  return $status
}

run_tests() {
  local runner=()
  # The thread sanitizer maps fixed addresses, which a strongly randomised layout may already hold.
  if [ "$1" = tsan ] && setarch -R true 2>/dev/null; then runner=(setarch -R); fi
  ${runner[@]+"${runner[@]}"} ctest --preset "$1" -j "$cores" --output-junit "$2"
}

# A number from the head of a test report.
attribute() {
  head -n 20 "$2" | tr '\n\t' '  ' | LC_ALL=C sed -n "s/.*<testsuite[^>]* $1=\"\([0-9]*\)\".*/\1/p"
}

# The tests that were skipped or are disabled.
left_out() {
  LC_ALL=C sed -nE 's/^.*<testcase name="([^"]*)".* status="(notrun|disabled)".*/\1/p' "$1"
}

# Prints what was left out and what failed, then the totals. A failed step that is no list of tests, such
# as a build, counts as one failure, so that "0 failed" means that everything is well.
finish() {
  failed=$((failed + ${#failed_steps[@]} - counted_steps))
  local text
  for text in ${not_run[@]+"${not_run[@]}"}; do echo "Not run: $text"; done
  for text in ${failed_steps[@]+"${failed_steps[@]}"}; do echo "Failed: $text"; done
  echo "$passed passed, $failed failed"
  [ $failed -eq 0 ] && [ $passed -gt 0 ]
}
