# Sourced by ./dev: lets the add-in work for a long time in one host process.

help_soak() {
  cat <<'TEXT'
usage: ./dev soak [COMMANDS [KILLED [CONNECTIONS [SEED]]]]

Lets the add-in work in one host process: mixed commands and events in a random order, then while the PLM client is killed
and started again at random moments, then connecting and disconnecting. Fails if a command comes out wrong, or if
anything grows that the process holds: memory, handles, threads, references to the host, GDI and USER objects, temporary
files. Prints a table while it goes. The whole takes about a quarter of an hour; run no tests meanwhile, which would
register their own add-in and host in the same place.

  COMMANDS      how many mixed commands, 100000
  KILLED        how many while the PLM client is killed, 1000
  CONNECTIONS   how many connections, 1000
  SEED          repeats the order of a run, which prints its seed
TEXT
}

soak() {
  setup_tests
  configure windows
  build_preset windows soak
  start_wine
  local result=0
  scripts/wine build/windows/tests/soak.exe "$@" || result=$?
  stop_wine
  return "$result"
}
