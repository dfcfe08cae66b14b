# Sourced by ./dev: one X display for everything that a verb runs under Wine.

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
