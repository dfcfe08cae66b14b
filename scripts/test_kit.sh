# Sourced by ./dev: the test kit, a zip with which the tests run on Windows itself.

# copy_kit FOLDER: fills an empty folder with what the kit contains: every program and DLL of build/windows, and what
# they read. Windows cannot read the debug information of tests and simulators, which is nine tenths of them; what is
# installed has none, and keeps its bytes.
copy_kit() {
  local build=build/windows programs program
  mapfile -t programs <"$build/tests/programs.txt"
  (cd "$build" && cp --parents "${programs[@]}" "$1")
  for program in "${programs[@]}"; do
    [ -e "$build/$program.debug" ] || SOURCE_DATE_EPOCH=0 x86_64-w64-mingw32-strip -s "$1/$program"
  done
  (cd "$build" && cp -r --parents bin/config tests/data tests/*.txt tests/*.properties run-tests.cmd "$1")
  sed 's/$/\r/' docs/test-kit.md >"$1/README.txt"
  write_kit_licences "$1/licences.spdx.json"
}

# make_kit ZIP: builds everything and makes the zip, with the same bytes for the same commit.
make_kit() {
  local folder="$root/build/package/test-kit"
  build_preset windows
  say "making $1"
  rm -rf "$folder" "$1"
  mkdir -p "$folder"
  copy_kit "$folder"
  find "$folder" -exec touch --date="@$(git log -1 --format=%ct)" {} +
  (cd "$folder" && find . -type f | LC_ALL=C sort | TZ=UTC zip -q -X "$1" -@)
  rm -rf "$folder"
}

# try_kit ZIP FOLDER: runs the kit in a new Wine prefix, unpacked into the folder, which is on drive C. There is no
# other drive: what lies outside the kit is out of reach.
try_kit() {
  export WINEPREFIX="$root/build/package/wine"
  case "$2" in [Cc]:\\*) ;; *) fail "not a folder on drive C: $2" ;; esac
  local folder="$WINEPREFIX/drive_c/${2:3}" result=0
  folder="${folder//\\//}"
  rm -rf "$WINEPREFIX" "$WINEPREFIX.lock"
  start_wine
  rm "$WINEPREFIX/dosdevices/z:"
  mkdir -p "$folder"
  unzip -q "$1" -d "$folder"
  say "running the kit in $2"
  (cd "$folder" && "$root/scripts/wine" cmd /c "$2\\run-tests.cmd") || result=$?
  stop_wine
  return "$result"
}

# package_test_kit [--try [FOLDER]]: makes build/package/tavo_solidworks_integration-VERSION-test-kit.zip, and runs it.
package_test_kit() {
  local version zip
  case "${1:-}" in ''|--try) ;; *) refuse "package --test-kit" "$1" ;; esac
  [ $# -le 2 ] || refuse "package --test-kit" "$3"
  install_packages "${test_kit_packages[@]}"
  setup_tests
  configure windows
  version="$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' build/windows/CMakeCache.txt)"
  zip="$root/build/package/tavo_solidworks_integration-$version-test-kit.zip"
  make_kit "$zip"
  [ $# -eq 0 ] || try_kit "$zip" "${2:-C:\\kit}"
}
