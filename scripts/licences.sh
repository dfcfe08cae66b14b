# Sourced by ./dev: the list of what is linked into what is shipped, and the texts of its licences.

# write_licences LIST: writes the list for what is installed, in the form of SPDX, and licences.txt with the texts
# beside it. Both must be built. Fails if something is linked in that scripts/licences/components.json does not know.
write_licences() {
  install_packages "${licence_packages[@]}"
  python3 -B scripts/licences/licences.py "$1" solidworks_add_in.dll tavo_doctor.exe
}

# write_kit_licences LIST: the same for all programs of build/windows, which must be built.
write_kit_licences() {
  install_packages "${licence_packages[@]}"
  python3 -B scripts/licences/licences.py "$1"
}
