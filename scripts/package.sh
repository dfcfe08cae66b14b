# Sourced by ./dev: the package that administrators install.

help_package() {
  cat <<'TEXT'
usage: ./dev package [--sign CERTIFICATE KEY]
       ./dev package --test-kit [--try [FOLDER]]

Builds the add-in and makes build/package/tavo_solidworks_integration-VERSION.msi: the add-in, its default
configuration, the diagnosis program, the documents, and the list of what is linked in.

  --sign      signs the programs and the package: two PEM files, the certificate with those that lead to its root,
              and its key, which has no pass phrase
  --test-kit  instead makes a zip with the tests for a computer with Windows (docs/test-kit.md); with --try also runs
              it, unpacked into FOLDER (C:\kit) of a new Wine prefix, which takes a quarter of an hour
TEXT
}

# project_version: as it stands in CMakeLists.txt.
project_version() { sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' build/windows/CMakeCache.txt; }

package() {
  local arguments=() folder=build/package version output
  case "${1:-}" in
    '') ;;
    --test-kit) shift; package_test_kit "$@"; return ;;
    --sign)
      [ $# -eq 3 ] || fail "--sign takes a certificate and a key; see ./dev package --help"
      local file
      for file in "$2" "$3"; do [ -r "$file" ] || fail "cannot read $file"; done
      arguments=(--sign "$2" "$3")
      ;;
    *) refuse package "$1" ;;
  esac
  setup_package
  build_preset windows solidworks_add_in tavo_doctor installer_registry
  version="$(project_version)"
  output="$folder/tavo_solidworks_integration-$version.msi"
  mkdir -p "$folder"
  rm -f "$output"  # not to be taken for the new one if that fails
  write_licences "$folder/licences.spdx.json"
  say "making $output"
  installer/make_package --bin build/windows/bin --registry build/windows/installer/registry.wxi \
    --version "$version" --output "$output" --licences "$folder/licences.spdx.json" "${arguments[@]}"
}
