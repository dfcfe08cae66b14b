# Sourced by ./dev: runs test programs and adds the results up.

help_test() {
  cat <<'TEXT'
usage: ./dev test [--debug | --hardened] [PROGRAM [FILTER]]

Builds and runs every test program, or one; the last line is "N passed, N failed". What a program printed lies in
build/*/test-output/PROGRAM.txt.

  PROGRAM   such as invoker_test; ./dev test list prints all
  FILTER    runs only the tests whose Suite.Name matches, such as 'Framing*' or '*Frame.Is*'
  --debug   runs the programs of build/windows-debug
  --hardened
            runs those of build/windows-hardened, which end at undefined behaviour, at a wrong use of the
            standard library and at damaged memory. Each block is looked at when it is given back, and all after
            every $HEAP_CHECK_INTERVAL blocks (1000) and after each test. An interval of 1 is slow, and shows the
            place where memory is damaged
TEXT
}

# How many blocks of memory a hardened program gives back between two looks at all of them: so many that this takes
# little of its time. Each block is looked at when it is given back.
heap_check_interval=1000

# A program that tells nothing here: it holds a table against what the DLL imports, and what is hardened imports more.
hardened_without=(failing_calls_coverage_test)

# harden_heap: has Wine fill the bytes behind each block, in which a check then sees what was written there.
harden_heap() {
  scripts/wine reg add 'HKLM\System\CurrentControlSet\Control\Session Manager' \
    /v GlobalFlag /t REG_DWORD /d 0x10 /f >/dev/null
}

# programs_of PRESET: the names of its test programs.
programs_of() {
  ctest --preset "$1" --show-only=json-v1 | sed -nE 's/^ *"name" *: *"([a-z_0-9]+_test)".*/\1/p' |
    if [ "$1" = windows-hardened ]; then grep -vxF -f <(printf '%s\n' "${hardened_without[@]}"); else cat; fi
}

# run_program PRESET PROGRAM [FILTER]: runs one test program; what it prints goes into a file.
run_program() {
  local output="build/$1/test-output/$2.txt"
  rm -f "build/$1/test-results/$2.xml"
  mkdir -p "build/$1/test-output"
  GTEST_FILTER="${3:-*}" ctest --preset "$1" --tests-regex "^$2\$" --no-tests=error --quiet --verbose \
    --output-log "$output" || true
}

# chosen_programs PRESET [PROGRAM]: the names of its test programs, or PROGRAM if it is one of them.
chosen_programs() { programs_of "$1" | grep -x -- "${2:-.*}" || true; }

# run_programs PRESET PROGRAM FILTER ACTION: runs its test programs, or one, and after each the action with the
# preset and the program.
run_programs() {
  local program
  while read -r program <&3; do
    run_program "$1" "$program" "$3"
    "$4" "$1" "$program"
  done 3< <(chosen_programs "$1" "$2")
}

# show_failures PRESET PROGRAM: the failed tests of a program, and what they printed.
show_failures() {
  local results="build/$1/test-results/$2.xml" output="build/$1/test-output/$2.txt" name
  if [ ! -s "$results" ]; then
    echo "failed: $1 $2: the program ended early; the end of $output:"
    tail -n 40 "$output" | sed 's/^/    /'
    return
  fi
  sed -nE '/<testcase /{s/.*<testcase name="([^"]*)".*classname="([^"]*)".*/\2.\1/;h}; /<failure /{x;p;x}' \
    "$results" | uniq | while read -r name; do
    echo "failed: $1 $2: $name; see $output:"
    sed -nE "s/^[0-9]+: //; /\[ RUN      \] ${name//\//\\/}\$/,/\[  FAILED  \] ${name//\//\\/}/p" "$output" |
      sed -n '1,40s/^/    /p'  # not head, which would end this script: a program that writes on fails then
  done
}

# count_results PRESET PROGRAM: adds up `passed` and `failed`. A program without results (it crashed, hung or
# was not built) counts as one failure, and so does a damaged heap.
count_results() {
  if grep -qE ':(err|warn):heap:' "build/$1/test-output/$2.txt"; then
    failed=$((failed + 1))
    echo "failed: $1 $2: a damaged heap; see build/$1/test-output/$2.txt:"
    grep -E -m 3 ':(err|warn):heap:' "build/$1/test-output/$2.txt" | sed 's/^/    /'
  fi
  local results="build/$1/test-results/$2.xml" tests failures
  if [ -s "$results" ]; then
    read -r tests failures < <(sed -nE 's/^<testsuites tests="([0-9]+)" failures="([0-9]+)".*/\1 \2/p' "$results")
    passed=$((passed + tests - failures)) failed=$((failed + failures))
    [ "$failures" -eq 0 ] || show_failures "$1" "$2"
  else
    failed=$((failed + 1))
    show_failures "$1" "$2"
  fi
}

test() {
  local windows=windows words=() argument preset program known=false
  for argument in "$@"; do
    case "$argument" in
      --debug) windows=windows-debug ;;
      --hardened) windows=windows-hardened ;;
      -*) refuse test "$argument" ;;
      *) words+=("$argument") ;;
    esac
  done
  [ ${#words[@]} -le 2 ] || refuse test "${words[2]}"
  local wanted="${words[0]:-}" filter="${words[1]:-}"

  setup_tests
  configure "$windows"
  configure native
  if [ "$wanted" = list ]; then
    for preset in native "$windows"; do programs_of "$preset" | sed "s/^/$preset /"; done
    return
  fi
  if [ -n "$wanted" ]; then
    for preset in native "$windows"; do
      programs_of "$preset" | grep -qx "$wanted" && known=true
    done
    $known || fail "no such test program: $wanted; ./dev test list prints all"
  fi

  build_preset "$windows" ${wanted:+"$wanted"}
  build_preset native ${wanted:+"$wanted"}
  if [ "$windows" = windows-hardened ]; then
    export WINEPREFIX="$root/build/$windows/wine" WINEDEBUG=-all,err+heap
    export HEAP_CHECK_INTERVAL="${HEAP_CHECK_INTERVAL:-$heap_check_interval}"
    start_display  # before Wine: the windows of a prefix need one display
    harden_heap
  fi
  start_wine
  passed=0 failed=0
  say "running the tests of build/native and build/$windows"
  run_programs native "$wanted" "$filter" : &  # beside the others: they share nothing
  local beside=$!
  started+=("$beside")
  run_programs "$windows" "$wanted" "$filter" count_results
  wait "$beside"
  while read -r program; do count_results native "$program"; done < <(chosen_programs native "$wanted")
  stop_wine
  [ -z "$wanted" ] || say "output: $(ls build/*/test-output/"$wanted".txt | tr '\n' ' ')"
  echo "$passed passed, $failed failed"
  [ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
}
