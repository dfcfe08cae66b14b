# Sourced by ./dev: searches for inputs that the parts which read foreign bytes do not stand.

help_fuzz() {
  cat <<'TEXT'
usage: ./dev fuzz [TARGET] [SECONDS]

Tries the parts that read foreign bytes with inputs that libFuzzer makes up, with the address and
undefined-behaviour sanitizers: every target for 60 seconds, or one. Fails if an input is found that breaks one;
keep it in fuzz/crashes/TARGET/, where ./dev test tries it from then on. What the search has learnt lies in
build/fuzz/corpus/ and is used again.

  TARGET    such as json; ./dev fuzz list prints all
  SECONDS   how long each target is tried
TEXT
}

fuzz_seconds=60
# A header of the pipe has 8 KiB at most, and the parts that read blocks are past them: more says nothing new.
fuzz_largest=10000

fuzz_targets() { ninja -C build/fuzz -t targets all | sed -n 's|^bin/fuzz_\(.*\): .*|\1|p' | sort; }

# fuzz_one TARGET SECONDS: prints one line of figures; fails if an input was found.
fuzz_one() {
  local target="$1" seconds="$2" options=() seeds=("fuzz/seeds/$1")
  local output="build/fuzz/output/$target.txt" found="build/fuzz/found/$target"
  rm -rf "$found"
  mkdir -p "build/fuzz/corpus/$target" build/fuzz/output "$found"
  [ -e "fuzz/dictionaries/$target" ] && options+=("-dict=fuzz/dictionaries/$target")
  [ -d "fuzz/crashes/$target" ] && seeds+=("fuzz/crashes/$target")
  if ! ASAN_SYMBOLIZER_PATH="$(compgen -G '/usr/lib/llvm-*/bin/llvm-symbolizer' | head -n 1)" \
    "build/fuzz/bin/fuzz_$target" -max_total_time="$seconds" -max_len="$fuzz_largest" -timeout=10 \
    -artifact_prefix="$found/" -print_final_stats=1 "${options[@]}" "build/fuzz/corpus/$target" "${seeds[@]}" \
    >"$output" 2>&1; then
    echo "$target: FOUND $(ls "$found"/* 2>/dev/null | tr '\n' ' '); see $output:"
    grep -E -m 3 'what\(\)|ERROR: |runtime error: ' "$output" | sed 's/^/    /'
    return 1
  fi
  sed -nE "s/^#([0-9]+)\s+DONE +cov: ([0-9]+) .*exec\/s: ([0-9]+).*/$target: \1 inputs in $seconds s, \3 a second, \2 places reached/p" "$output"
}

fuzz() {
  local wanted="" seconds="$fuzz_seconds" argument target broken=0
  for argument in "$@"; do
    case "$argument" in
      -*) refuse fuzz "$argument" ;;
      *[!0-9]*) [ -z "$wanted" ] || refuse fuzz "$argument"; wanted="$argument" ;;
      *) seconds="$argument" ;;
    esac
  done
  setup_fuzz
  configure fuzz
  if [ "$wanted" = list ]; then
    fuzz_targets
    return
  fi
  [ -z "$wanted" ] || has_target fuzz "fuzz_$wanted" || fail "no such target: $wanted; ./dev fuzz list prints all"
  build_preset fuzz "${wanted:+fuzz_}${wanted:-fuzz_programs}"
  for target in ${wanted:-$(fuzz_targets)}; do
    fuzz_one "$target" "$seconds" || broken=$((broken + 1))
  done
  [ "$broken" -eq 0 ] || fail "targets that broke: $broken"
}
