# Sourced by ./dev: the main job, run for real in the windows of both simulators.

help_demo() {
  cat <<'TEXT'
usage: ./dev demo [--fast]

Builds the add-in and both simulators, plays a designer's day in their windows and prints what happens, in short; at
the end it names the files that it leaves, among them pictures of the main moments. With a display it is slow enough
to follow; without one nobody sees the windows, but the pictures.

  --fast   does not wait for anybody who looks on
TEXT
}

help_host() {
  cat <<'TEXT'
usage: ./dev host [OPTION ...]

Builds the add-in and both simulators, and opens the CAD host and the PLM client with a vault of sample content. It
ends when the CAD host is closed. Needs a display. What is done in the vault lasts until ./dev demo or ./dev clean.

  OPTION   for the CAD host, such as --language zh-CN; cad_host_window.exe --help names all
TEXT
}

help_pictures() {
  cat <<'TEXT'
usage: ./dev pictures

Runs the demo without a display, and makes the pictures in docs/pictures/ anew.
TEXT
}

# Where everything lies that the simulators use: on drive C, so that scripts can name it.
demo_drive='C:\tavo-demo'

# prepare_windows: builds what a person sees, starts Wine, makes the vault unless there is one, registers the add-in.
prepare_windows() {
  setup_windows
  build_preset windows solidworks_add_in cad_host_window_program plm_client_window
  export WINEPREFIX="$root/build/windows/wine" TAVO_HOME="$demo_drive\\home"
  bin=build/windows/bin folder="$WINEPREFIX/drive_c/tavo-demo"
  start_wine
}

# make_vault: the add-in's folder, and a vault unless there is one.
make_vault() {
  mkdir -p "$folder/home" "$folder/pictures" "$folder/download/nut-new"  # the last for demo/models.txt
  [ -e "$folder/vault" ] || scripts/wine "$bin/plm_client_window.exe" --make-sample "$demo_drive\\vault" >/dev/null
  scripts/wine regsvr32 /s "$bin/solidworks_add_in.dll"
}

# start_client [OPTION ...]: the PLM client on the vault; returns when it serves its pipe.
start_client() {
  local tries
  scripts/wine "$bin/plm_client_window.exe" --vault "$demo_drive\\vault" "$@" >"$folder/plm_client.log" 2>&1 &
  client=$!
  started+=("$client")
  for tries in $(seq 100); do
    grep -q '^serving' "$folder/plm_client.log" 2>/dev/null && return
    kill -0 "$client" 2>/dev/null || fail "the PLM client ended: $(cat "$folder/plm_client.log")"
    sleep 0.1
  done
  fail "the PLM client does not serve its pipe"
}

# take_pictures FOLDER: whenever a program wants a picture, takes one of the whole display. NAME.window says where
# in it the window with the keyboard is.
take_pictures() {
  local wanted name
  while sleep 0.05; do
    for wanted in "$1"/*.wanted; do
      [ -e "$wanted" ] || continue
      name="${wanted%.wanted}"
      import -silent -window root "$name.part.png"
      mv "$wanted" "$name.window"
      mv "$name.part.png" "$name.png"
    done
  done
}

# end_simulators: the client goes, and the add-in's registration with it.
end_simulators() {
  kill "$client" 2>/dev/null || true
  scripts/wine regsvr32 /u /s "$bin/solidworks_add_in.dll"
  stop_wine
}

demo() {
  local bin folder client step=0
  if [ "${1:-}" = --fast ]; then
    shift
  elif [ -n "${DISPLAY:-}" ]; then
    step=1200
  fi
  no_arguments demo "$@"
  prepare_windows
  rm -rf "$folder"
  say "making a vault with model files, registering the add-in"
  make_vault
  say "the PLM client starts, then the CAD host: \"->\" is the host calling the add-in, below it the add-in calling the host"
  take_pictures "$folder/pictures" &
  started+=($!)
  start_client --person demo/day/person.txt --step-ms "$step" --pictures "$demo_drive\\pictures"
  scripts/wine "$bin/cad_host_window.exe" --state "$demo_drive" --journal "$demo_drive\\transcript.txt" \
    --script demo/day/session.txt --step-ms "$step" --pictures "$demo_drive\\pictures" ||
    fail "the session failed; every call is in $folder/transcript.txt"
  end_simulators
  rm -rf build/pictures
  mkdir -p build/pictures
  cp "$folder"/pictures/*.png "$folder"/pictures/*.window build/pictures/
  say "the add-in's log; \"AttributesBackFill failed<hr=0x0>\" is written after each created material, 0x0 is success"
  cat "$folder/home/log/SolidWorks.log"
  say "pictures of the main moments: $(ls build/pictures/*.png | tr '\n' ' ')"
  say "everything else lies in ${folder#"$root"/}:"
  cat <<'TEXT'
transcript.txt            the full transcript: every call and event, with arguments and results
vault/                    the PLM vault with its model files; those that the host opened are in its folder "work"
home/log/SolidWorks.log   the add-in's log
TEXT
}

host() {
  local bin folder client
  [ -n "${DISPLAY:-}" ] || fail "there is no display; ./dev demo runs without one"
  prepare_windows
  make_vault
  start_client
  say "close the CAD host to end; the add-in's log is ${folder#"$root"/}/home/log/SolidWorks.log"
  scripts/wine "$bin/cad_host_window.exe" --state "$demo_drive" --connect 'TAVO SolidWorks Integration' "$@" || true
  end_simulators
}

# The commands of the user's guide, by the names of their pictures.
command_pictures=(
  log-in log-out data-selector search my-check-out-list my-tasks start-workflow get-code import-current import-lot
  create-change-items create-material my-temporary-materials fill-from-material
)

# make_picture NAME PICTURE: a picture of the demo, without the empty part of the display and with few colours.
make_picture() {
  convert "build/pictures/$1.png" -bordercolor black -border 1 -trim +repage -resize 900x -colors 64 -strip "PNG8:$2"
}

# make_panel_picture NAME PICTURE: of a picture of the demo only the client's panel, without request and answer at
# its bottom, which are for developers.
make_panel_picture() {
  convert "build/pictures/$1.png" -crop "$(cat "build/pictures/$1.window")" +repage -gravity south -chop 0x194 \
    -resize '75%' -colors 64 -strip "PNG8:$2"
}

pictures() {
  no_arguments pictures "$@"
  (unset DISPLAY && demo --fast)
  local name
  mkdir -p docs/pictures/commands
  for name in search assembly message-box; do make_picture "$name" "docs/pictures/$name.png"; done
  for name in "${command_pictures[@]}"; do make_panel_picture "$name" "docs/pictures/commands/$name.png"; done
  say "docs/pictures"
}
