# Sourced by ./dev: measures the product beside what else could do its jobs.

help_bench() {
  cat <<'TEXT'
usage: ./dev bench [PROGRAM ...]

Builds and runs the measurements, all or the named ones (json, text, native_text, instructions, dispatch, command,
calls, counts, large_answer, memory, properties, connect, covering), and writes docs/performance.md from all results
that there are. It takes about a quarter of an hour; leave the machine alone meanwhile. What a program measured lies
in build/bench.
TEXT
}

bench_programs=(json text native_text instructions dispatch command calls counts large_answer memory properties
                connect covering)

# count_calls: the calls of Wine's server for a command, in a prefix of its own, whose server traces them.
count_calls() {
  local kind thread count=50 folder="$root/build/bench"
  export WINEPREFIX="$folder/wine"
  scripts/wine cmd /c ver >/dev/null
  for kind in ours overlapped blocking; do
    timeout 20 /usr/lib/wine/wineserver64 -w || true  # the next one must start with the trace
    thread="$(WINEDEBUG=+server scripts/wine build/windows/bench/command_calls.exe "$kind" $count 2>"$folder/trace")"
    bench/count_server_calls.py "$kind" $count "${thread%$'\r'}" "$folder/trace"
  done >"$folder/calls.txt"
  rm -f "$folder/trace"
  unset WINEPREFIX
}

# count_instructions: the instructions of the parts that have nothing to do with Windows, and of their peers.
count_instructions() {
  local job variant script
  for job in receive read write encode decode; do
    for script in Chinese Latin; do
      for variant in ours peer; do
        echo "$job $script $variant $(bench/native/count_instructions build/native/bench/instruction_jobs \
          "$job" "$variant" "$script")"
      done
    done
  done >build/bench/instructions.txt
}

# run_bench NAME: runs a measurement; ours and its peers take turns, so that both see the same machine.
run_bench() {
  local name="$1" turns=10 seconds=0.2 program=(scripts/wine "build/windows/bench/$1_bench.exe")
  say "measuring: $name"
  case "$name" in
    memory) "${program[@]}" >"build/bench/$name.txt"; return ;;
    counts) scripts/wine build/windows/bench/counts.exe >"build/bench/$name.txt"; return ;;
    calls) count_calls; return ;;
    instructions) count_instructions; return ;;
    native_text) program=(build/native/bench/text_bench) ;;
    json) seconds=0.1 ;;
  esac
  "${program[@]}" --benchmark_repetitions=$turns \
    --benchmark_enable_random_interleaving=true --benchmark_min_time=$seconds --benchmark_display_aggregates_only=true \
    --benchmark_out="build/bench/$name.json" --benchmark_out_format=json >"build/bench/$name.txt"
}

bench() {
  local name chosen=("$@")
  for name in "${chosen[@]}"; do
    case " ${bench_programs[*]} " in *" $name "*) ;; *) refuse bench "$name" ;; esac
  done
  [ ${#chosen[@]} -gt 0 ] || chosen=("${bench_programs[@]}")
  setup_bench
  # The library was not there when a folder without it was configured.
  local preset
  for preset in windows native; do
    grep -q 'libbenchmark' "build/$preset/build.ninja" 2>/dev/null || rm -f "build/$preset/build.ninja"
  done
  build_preset windows benches solidworks_add_in
  build_preset native instruction_jobs text_bench
  start_wine
  mkdir -p build/bench
  for name in "${chosen[@]}"; do run_bench "$name"; done
  stop_wine
  python3 -B bench/report.py build/bench docs/performance.md build/windows/bin/solidworks_add_in.dll
  say "docs/performance.md"
}
