# Sourced by ./dev: one X display and one running Wine for everything that a verb runs.

# start_display: a display of this run's own, unless the caller has one. It ends with the script.
start_display() {
  [ -n "${DISPLAY:-}" ] && return
  local number_file
  number_file="$(mktemp)"
  Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$number_file" >/dev/null 2>&1 &
  started+=($!)
  local tries
  for tries in $(seq 100); do
    [ -s "$number_file" ] && break
    sleep 0.1
  done
  [ -s "$number_file" ] || fail "Xvfb does not start"
  export DISPLAY=":$(cat "$number_file")"
  rm -f "$number_file"
}

# start_wine: keeps the prefix's services alive, which every program would start anew, until stop_wine.
start_wine() {
  start_display
  scripts/wine cmd /c ver >/dev/null  # makes the prefix
  coproc keeper { exec scripts/wine cmd >/dev/null 2>&1; }
  wine_keeper=$keeper_PID  # bash forgets its own variable when the process ends
  started+=("$wine_keeper")
}

# stop_wine: lets Wine's last processes go before the display does, which they would lament.
stop_wine() {
  kill "$wine_keeper" 2>/dev/null || true
  WINEPREFIX="${WINEPREFIX:-$root/build/windows/wine}" timeout 10 /usr/lib/wine/wineserver64 -w || true
}
