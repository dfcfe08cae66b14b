# Sourced by ./dev: the main job, run for real.

help_demo() {
  cat <<'TEXT'
usage: ./dev demo [--fast]

Builds the add-in and both simulators, runs the main job for real and prints what happens, in short; at the end
it names the file with every call.

  --fast   does not wait anywhere for a reader (so far the demo never does)
TEXT
}

# wait_for_client LOG PID: until the PLM client serves its pipe; fails if it ended.
wait_for_client() {
  local tries
  for tries in $(seq 100); do
    grep -q '^serving' "$1" 2>/dev/null && return
    kill -0 "$2" 2>/dev/null || fail "the PLM client ended: $(cat "$1")"
    sleep 0.1
  done
  fail "the PLM client does not serve its pipe"
}

demo() {
  [ "${1:-}" = --fast ] && shift
  no_arguments demo "$@"
  setup_product
  build_preset windows solidworks_add_in cad_host_console plm_client_console
  # The add-in's folders and the models lie on the prefix's drive C, so that the answers can name them.
  export WINEPREFIX="$root/build/windows/wine" TAVO_HOME='C:\tavo-demo\home'
  local bin=build/windows/bin folder="$WINEPREFIX/drive_c/tavo-demo" client
  start_wine
  rm -rf "$folder"
  mkdir -p "$folder/download/nut-new" "$folder/home"

  say "making model files, registering the add-in"
  scripts/wine "$bin/cad_host.exe" demo/models.txt >/dev/null
  scripts/wine regsvr32 /s "$bin/solidworks_add_in.dll"
  say "the PLM client starts, then the CAD host: \"->\" is the host calling the add-in, below it the add-in calling the host"
  scripts/wine "$bin/plm_client.exe" --answers demo/answers > >(tee "$folder/plm_client.log") &
  client=$!
  started+=("$client")
  wait_for_client "$folder/plm_client.log" "$client"
  scripts/wine "$bin/cad_host.exe" --state 'C:\tavo-demo' --journal 'C:\tavo-demo\transcript.txt' \
    demo/session.txt || fail "the session failed; every call is in $folder/transcript.txt"
  kill "$client"
  scripts/wine regsvr32 /u /s "$bin/solidworks_add_in.dll"

  stop_wine
  say "the add-in's log; \"AttributesBackFill failed<hr=0x0>\" is written after each created material, 0x0 is success"
  cat "$folder/home/log/SolidWorks.log"
  say "everything lies in ${folder#"$root"/}:"
  cat <<'TEXT'
transcript.txt            the full transcript: every call and event, with arguments and results
download/                 the model files
plm_client.log            what the PLM client was asked
home/log/SolidWorks.log   the add-in's log
TEXT
}
