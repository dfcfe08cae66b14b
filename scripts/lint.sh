# Sourced by ./dev: the format, the includes and the static analysis of all of the project's own code.

help_format() {
  cat <<'TEXT'
usage: ./dev format

Puts every source file into the project's format.
TEXT
}

help_lint() {
  cat <<'TEXT'
usage: ./dev lint [--changed [COMMIT]]

Checks format and includes and runs the static analysis, over everything.

  --changed [COMMIT]   analyses only what differs from COMMIT (HEAD if not given): changed sources, and the
                       sources that include a changed header
TEXT
}

source_files() { git ls-files --cached --others --exclude-standard -- '*.cpp' '*.h'; }

format() {
  no_arguments format "$@"
  install_packages clang-format
  source_files | xargs clang-format -i
}

# mingw_flags: what makes clang read the code as the cross compiler does.
mingw_flags() {
  local folder
  # Reserved slots are overloads of one name on purpose (host/slots.h).
  printf -- '--extra-arg=%s\n' --target=x86_64-w64-windows-gnu -fms-extensions -nostdinc++ -Wno-overloaded-virtual
  x86_64-w64-mingw32-g++-posix -xc++ -E -v /dev/null 2>&1 >/dev/null |
    sed -n '/^#include </,/^End of search/s/^ //p' | grep -v '/lib/gcc/.*/include\(-fixed\)\?$' |
    while read -r folder; do printf -- '--extra-arg=-isystem%s\n' "$(realpath "$folder")"; done
}

# changed_sources COMMIT: the sources that differ, and those that include a header that does.
changed_sources() {
  local file
  { git diff --name-only --diff-filter=d "$1"; git ls-files --others --exclude-standard; } |
    grep -E '\.(cpp|h)$' | sort -u | while read -r file; do
    case "$file" in
      *.cpp) echo "$file" ;;
      *.h) git grep -l --untracked "#include \"\(.*/\)\?$(basename "$file")\"" -- '*.cpp' || true ;;
    esac
  done | sort -u
}

# report_left_out: says how many sources the analysis leaves out, and which if they are few.
report_left_out() {
  local count most=20
  count="$(wc -l <build/tidy/left-out)"
  say "sources to analyse: $(wc -l <build/tidy/analysed); left out, because build/windows does not compile them: $count"
  if [ "$count" -le "$most" ]; then
    sed 's/^/     /' build/tidy/left-out >&2
  else
    say "build/tidy/left-out has their names"
  fi
}

lint() {
  local sources
  case "${1:-}" in
    '') sources="$(source_files | grep '\.cpp$')" ;;
    --changed)
      git rev-parse --quiet --verify "${2:-HEAD}^{commit}" >/dev/null || fail "no such commit: $2"
      [ $# -le 2 ] || refuse lint "$3"
      sources="$(changed_sources "${2:-HEAD}")"
      ;;
    *) refuse lint "$1" ;;
  esac
  setup_lint
  configure windows
  say "checking the format"
  source_files | xargs clang-format --dry-run -Werror || fail "run ./dev format"
  say "checking the includes"
  python3 scripts/check_includes.py
  # The generated headers that the analysis needs. Sources are read as for the windows preset, but each with
  # the headers that it includes itself.
  cmake --build --preset windows --target add_in_interfaces -- --quiet
  mkdir -p build/tidy
  sed -E 's/ -include [^ ]*cmake_pch\.hxx//; s/ -Winvalid-pch//g;
    s/ -(Wno-restrict|Wno-stringop-[a-z]+|fno-var-tracking-assignments)//g' \
    build/windows/compile_commands.json >build/tidy/compile_commands.json
  say "running the static analysis"
  local extra
  mapfile -t extra < <(mingw_flags)
  # What the windows preset does not compile is not analysed: other systems' files, and the host of the other ABI.
  sed '/^$/d' <<<"$sources" | while read -r file; do
    if grep -qF "\"file\": \"$root/$file\"" build/tidy/compile_commands.json; then
      echo "$file"
    else
      echo "$file" >&3
    fi
  done >build/tidy/analysed 3>build/tidy/left-out
  report_left_out
  xargs -r -P "$(nproc)" -n 4 <build/tidy/analysed \
    clang-tidy-16 -p build/tidy --quiet "${extra[@]}" >build/tidy/findings.log 2>/dev/null || {
      grep -E 'error:' build/tidy/findings.log | sort -u >&2
      fail "the static analysis found something: see build/tidy/findings.log"
    }
}
