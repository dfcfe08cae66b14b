# Sourced by ./dev: measures the product beside what else could do its jobs.

help_bench() {
  cat <<'TEXT'
usage: ./dev bench [PROGRAM ...]

Builds and runs the measurements, all or the named ones (json, text, dispatch, command, calls, large_answer, memory,
properties, connect), and writes docs/performance.md from all results that there are. It takes about half an hour;
leave the machine alone meanwhile. What a program measured lies in build/bench.
TEXT
}

bench_programs=(json text dispatch command calls large_answer memory properties connect)

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

# run_bench NAME: runs a measurement; ours and its peers take turns, so that both see the same machine.
run_bench() {
  local name="$1" turns=10 seconds=0.2
  say "measuring: $name"
  case "$name" in
    memory)
      scripts/wine "build/windows/bench/${name}_bench.exe" >"build/bench/$name.txt"
      return ;;
    calls) count_calls; return ;;
    json) seconds=0.1 ;;
  esac
  scripts/wine "build/windows/bench/${name}_bench.exe" --benchmark_repetitions=$turns \
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
  grep -q '^benchmark\b\|libbenchmark' build/windows/build.ninja 2>/dev/null || rm -f build/windows/build.ninja
  build_preset windows benches solidworks_add_in
  start_wine
  mkdir -p build/bench
  for name in "${chosen[@]}"; do run_bench "$name"; done
  stop_wine
  python3 bench/report.py build/bench docs/performance.md build/windows/bin/solidworks_add_in.dll
  say "docs/performance.md"
}
