#!/usr/bin/env python3
"""Gives the unwind sections of a static library the symbols that lld needs: name_unwind_sections.py FROM TO

The unwind data of a function that several objects may contain is a section of its own (.pdata$FUNCTION). The linker
keeps it only if a symbol describes it. Debian strips these symbols from its libraries: GNU's linker does not need them.
lld would leave the sections out, without a word, and an exception that passes such a function would end the process.
"""
import pathlib
import struct
import subprocess
import sys
import tempfile

# The format of object files: https://learn.microsoft.com/windows/win32/debug/pe-format
HEADER = struct.Struct("<HHIIIHH")  # machine, sections, time, symbol table, symbols, optional header, flags
SECTION = struct.Struct("<8s8xI12xH2xI")  # name, size, relocations, flags
SYMBOL = struct.Struct("<8sIhHBB")  # name, value, section, type, class, records that follow
DEFINITION = struct.Struct("<IHHIHB3x")  # size, relocations, lines, checksum, number, selection

X86_64 = 0x8664
MAY_BE_REPEATED = 0x1000  # of a section: COMDAT
STATIC = 3  # class of a symbol
TAKE_ANY = 2  # selection


def described_sections(symbols):
    """The numbers of the sections that a symbol describes."""
    result, position = set(), 0
    while position < len(symbols):
        _, value, section, _, symbol_class, following = SYMBOL.unpack_from(symbols, position)
        if symbol_class == STATIC and value == 0 and following:
            result.add(section)
        position += SYMBOL.size * (1 + following)
    return result


def symbol_name(section_name):
    """A section's name as a symbol has it: up to eight bytes, or zero and the place in the table of long names."""
    if section_name[:1] != b"/":
        return section_name
    return struct.pack("<II", 0, int(section_name[1:].rstrip(b"\0")))


def with_symbols(member):
    """The object file with a symbol for each repeatable section that has none."""
    machine, section_count, time, table, symbol_count, optional_size, flags = HEADER.unpack_from(member)
    if machine != X86_64:
        raise ValueError("not an object file for x86-64")
    table_end = table + SYMBOL.size * symbol_count
    symbols = member[table:table_end]
    described = described_sections(symbols)
    for number in range(1, section_count + 1):
        place = HEADER.size + optional_size + SECTION.size * (number - 1)
        name, size, relocations, section_flags = SECTION.unpack_from(member, place)
        if section_flags & MAY_BE_REPEATED and number not in described:
            symbols += SYMBOL.pack(symbol_name(name), 0, number, 0, STATIC, 1)
            symbols += DEFINITION.pack(size, relocations, 0, 0, 0, TAKE_ANY)
    header = HEADER.pack(machine, section_count, time, table, len(symbols) // SYMBOL.size, optional_size, flags)
    return header + member[HEADER.size:table] + symbols + member[table_end:]


def main():
    source, target = (pathlib.Path(name).absolute() for name in sys.argv[1:])
    archiver = "x86_64-w64-mingw32-ar"
    names = subprocess.check_output([archiver, "t", source], text=True).split()
    if len(names) != len(set(names)):
        sys.exit(f"{source}: two members have the same name")
    with tempfile.TemporaryDirectory() as folder:
        subprocess.check_call([archiver, "x", source], cwd=folder)
        for name in names:
            file = pathlib.Path(folder, name)
            try:
                file.write_bytes(with_symbols(file.read_bytes()))
            except (ValueError, struct.error) as error:
                sys.exit(f"{source}: {name}: {error}")
        target.unlink(missing_ok=True)
        subprocess.check_call([archiver, "rcs", target, *names], cwd=folder)


main()
