# Sourced by ./dev: builds the commit twice, in other folders and at other times, and compares the bytes.

help_reproduce() {
  cat <<'TEXT'
usage: ./dev reproduce [--copy-dependencies] [TARGET ...]

Builds the last commit twice, in two folders below build/reproduce whose names are of other lengths, the second with a
clock that is a day ahead and in another time zone, and compares every DLL, program and other file of build/windows/bin
and build/windows/tests, and the package. Names each file that differs. Takes twice the time of a first build.

  --copy-dependencies   takes the dependencies from build/deps instead of building them in both folders
  TARGET                builds and compares only these, such as solidworks_add_in
TEXT
}

reproduce_folders=(build/reproduce/a build/reproduce/second/folder/with/a/longer/name)

# The differences that the format of a file forces, as they are told: none. A package of Windows Installer has a time
# and an id for each build, but both are made from the commit.
forced_differences=()

# At another time the clock and the time zone are others. What programs wait for is not.
another_time=(env TZ=Asia/Tokyo DONT_FAKE_MONOTONIC=1 FAKE_UTIME=1 faketime -f +1d)

# build_copy FOLDER [TARGET ...]: clones the commit into the folder and builds it there.
build_copy() {
  local folder="$1" when=()
  shift
  [ "$folder" = "${reproduce_folders[0]}" ] || when=("${another_time[@]}")
  rm -rf "$folder"
  git clone --quiet --shared . "$folder"
  if $copy_dependencies; then
    mkdir -p "$folder/build"
    cp -r build/deps "$folder/build/"
  fi
  say "building in $folder"
  (cd "$folder" && "${when[@]}" ./dev build --windows "$@")
  [ $# -eq 0 ] || return 0
  # The times of files are true while the package is made: it has those that it sets itself.
  (cd "$folder" && "${when[@]}" env FAKE_UTIME=0 NO_FAKE_STAT=1 ./dev package)
}

# files_of FOLDER: what was built there and is shipped or tested, relative to build/.
files_of() {
  (cd "$1/build" && {
    sed 's|^|windows/|' windows/tests/programs.txt | xargs ls -d 2>/dev/null || true
    find windows/bin windows/tests/data $([ ! -d package ] || echo package) -type f
  } | LC_ALL=C sort -u)
}

# parts_of PACKAGE FOLDER: lays the parts of a Windows Installer package out as files: its tables, streams and summary.
parts_of() {
  local name
  mkdir -p "$2"
  msiinfo suminfo "$1" >"$2/summary"
  msiinfo tables "$1" | while read -r name; do msiinfo export "$1" "$name" >"$2/table $name"; done
  msiinfo streams "$1" | while read -r name; do msiinfo extract "$1" "$name" >"$2/stream $name"; done
}

# package_differences A B NAME: names the parts of a package that differ. Where they do not, the bytes around them do.
package_differences() {
  local parts found
  parts="$(mktemp -d)"
  parts_of "$1" "$parts/a"
  parts_of "$2" "$parts/b"
  found="$(diff -rq "$parts/a" "$parts/b" | sed "s|$parts/||g" || true)"
  echo "differs: $3: ${found:-only in the container around tables and streams}"
  rm -rf "$parts"
}

# differences A B: names the files that only one copy has, and those that have other bytes.
differences() {
  local file
  diff <(files_of "$1") <(files_of "$2") | sed -n 's/^[<>] /only in one: /p' || true
  files_of "$1" | while read -r file; do
    [ -e "$2/build/$file" ] || continue
    cmp -s "$1/build/$file" "$2/build/$file" && continue
    case "$file" in
      *.msi) package_differences "$1/build/$file" "$2/build/$file" "$file" ;;
      *) echo "differs: $file: $(cmp "$1/build/$file" "$2/build/$file" | sed 's/.* differ: //')" ;;
    esac
  done
}

reproduce() {
  local copy_dependencies=false targets=() argument folder found
  for argument in "$@"; do
    case "$argument" in
      --copy-dependencies) copy_dependencies=true ;;
      -*) refuse reproduce "$argument" ;;
      *) targets+=("$argument") ;;
    esac
  done
  install_packages "${reproduce_packages[@]}"
  [ -z "$(git status --porcelain)" ] || say "what is not committed is left out"
  for folder in "${reproduce_folders[@]}"; do build_copy "$folder" "${targets[@]}"; done
  found="$(differences "${reproduce_folders[@]}" | grep -vxF -f <(printf '%s\n' "${forced_differences[@]}") || true)"
  [ -z "$found" ] || { echo "$found"; fail "the two builds differ"; }
  echo "$(files_of "${reproduce_folders[0]}" | wc -l) files, each the same in both builds"
}
