# Sourced by ./dev: runs every test program and adds the results up.

# run_tests PRESET: runs the preset's test programs; what fails is printed.
run_tests() {
  say "running the tests of build/$1"
  rm -rf "build/$1/test-results"
  ctest --preset "$1" --no-tests=error --quiet --output-log "build/$1/tests.log" || true
}

# count_results: adds up passed and failed tests of all test programs. A program without results (it
# crashed, hung or was not built) counts as one failure. The last line is "N passed, N failed".
count_results() {
  local passed=0 failed=0 preset program results tests failures
  for preset in windows native; do
    while read -r program; do
      results="build/$preset/test-results/$program.xml"
      if [ -s "$results" ]; then
        read -r tests failures < <(sed -nE \
          's/^<testsuites tests="([0-9]+)" failures="([0-9]+)".*/\1 \2/p' "$results")
        passed=$((passed + tests - failures)) failed=$((failed + failures))
        [ "$failures" -eq 0 ] || sed -nE \
          '/<testcase /{s/.*<testcase name="([^"]*)".*classname="([^"]*)".*/\2.\1/;h}; /<failure /{x;p;x}' \
          "$results" | sort -u | sed "s|^|failed: $preset $program: |"
      else
        echo "failed: $preset $program: no results; see build/$preset/tests.log"
        failed=$((failed + 1))
      fi
    done < <(ctest --preset "$preset" --show-only=json-v1 |
             sed -nE 's/^ *"name" *: *"([a-z_0-9]+_test)".*/\1/p')
  done
  echo "$passed passed, $failed failed"
  [ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
}

test() {
  build
  start_wine
  run_tests native
  run_tests windows
  stop_wine
  count_results
}
