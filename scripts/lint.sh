# Sourced by ./dev: the format and the static analysis of all of the project's own code.

source_files() { git ls-files -- '*.cpp' '*.h'; }

format() {
  install_packages
  source_files | xargs clang-format -i
}

# mingw_flags: what makes clang read the code as the cross compiler does.
mingw_flags() {
  local folder
  printf -- '--extra-arg=%s\n' --target=x86_64-w64-windows-gnu -fms-extensions -nostdinc++
  x86_64-w64-mingw32-g++-posix -xc++ -E -v /dev/null 2>&1 >/dev/null |
    sed -n '/^#include </,/^End of search/s/^ //p' | grep -v '/lib/gcc/.*/include\(-fixed\)\?$' |
    while read -r folder; do printf -- '--extra-arg=-isystem%s\n' "$(realpath "$folder")"; done
}

lint() {
  setup
  configure
  say "checking the format"
  source_files | xargs clang-format --dry-run -Werror || fail "run ./dev format"
  # The generated headers that the analysis needs; the sources are read as for the windows preset.
  cmake --build --preset windows --target add_in_interfaces -- --quiet
  say "running the static analysis"
  local extra
  mapfile -t extra < <(mingw_flags)
  git ls-files -- '*.cpp' | grep -v Posix | xargs -P "$(nproc)" -n 4 \
    clang-tidy-16 -p build/windows --quiet "${extra[@]}" >build/clang-tidy.log 2>/dev/null || {
      grep -E 'error:' build/clang-tidy.log | sort -u >&2
      fail "the static analysis found something: see build/clang-tidy.log"
    }
}
