# Sourced by ./dev: configuring, building, removing what was built.

help_build() {
  cat <<'TEXT'
usage: ./dev build [--debug] [--windows] [TARGET ...]

Builds everything, or the named targets (a test program such as invoker_test, the add-in solidworks_add_in):
build/windows, which runs under Wine, and build/native, the parts that have nothing to do with Windows, with
sanitizers. A target is built in every folder that has it.

  --debug     build/windows-debug instead of build/windows: nothing optimised, full debug information
  --windows   nothing in build/native
TEXT
}

help_clean() {
  cat <<'TEXT'
usage: ./dev clean [--all]

Removes what was built, but keeps the dependencies.

  --all   the dependencies too
TEXT
}

# configure PRESET: makes the preset's build folder ready. One that was moved or copied here from another
# place would build that place's sources: it is configured anew.
configure() {
  local folder="build/$1" home
  home="$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$folder/CMakeCache.txt" 2>/dev/null || true)"
  if [ -e "$folder/build.ninja" ] && [ "$home" = "$root" ]; then
    ninja -C "$folder" --quiet build.ninja >"build/$1.configure.log" 2>&1 ||  # if a CMakeLists.txt is newer
      fail "cmake cannot configure $folder: see build/$1.configure.log"
    return
  fi
  [ -z "$home" ] || [ "$home" = "$root" ] || say "$folder was configured for $home: configuring it anew"
  cmake --fresh --preset "$1" >"build/$1.configure.log" 2>&1 ||
    fail "cmake cannot configure $folder: see build/$1.configure.log"
}

# has_target PRESET TARGET
has_target() { ninja -C "build/$1" -t query "$2" >/dev/null 2>&1; }

# build_preset PRESET [TARGET ...]: builds everything, or those of the targets that the preset has.
build_preset() {
  local preset="$1" target targets=()
  shift
  configure "$preset"
  for target in "$@"; do
    has_target "$preset" "$target" && targets+=(--target "$target")
  done
  [ $# -gt 0 ] && [ ${#targets[@]} -eq 0 ] && return
  say "building build/$preset"
  cmake --build --preset "$preset" "${targets[@]}" -- --quiet
}

build() {
  local windows=windows native=native targets=() target
  for target in "$@"; do
    case "$target" in
      --debug) windows=windows-debug ;;
      --windows) native="" ;;
      -*) refuse build "$target" ;;
      *) targets+=("$target") ;;
    esac
  done
  setup_tests
  build_preset "$windows" "${targets[@]}"
  [ -z "$native" ] || build_preset "$native" "${targets[@]}"
  for target in "${targets[@]}"; do
    has_target "$windows" "$target" || { [ -n "$native" ] && has_target "$native" "$target"; } ||
      fail "no such target: $target"
  done
}

clean() {
  case "${1:-}" in
    '') rm -rf build/windows build/windows-debug build/windows-hardened build/native build/fuzz build/tidy \
      build/package build/reproduce ;;
    --all) rm -rf build ;;
    *) refuse clean "$1" ;;
  esac
  [ $# -le 1 ] || refuse clean "$2"
}
