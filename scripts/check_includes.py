#!/usr/bin/env python3
"""Checks the includes between the platform libraries, which share one folder of headers.

The compiler keeps the folders of the root apart: a target sees the headers of the libraries that it names and no
others. Between the platform libraries it cannot, for the C*.h lie in one folder. So this holds them to what their
CMakeLists.txt name: a file of a library may include a header of that library, or of one that the library names,
directly or through others.
"""
import pathlib
import re
import sys

root = pathlib.Path(__file__).resolve().parent.parent
platform = root / "platform"


def libraries():
    """Library name -> (folder, names of the libraries that it links)."""
    found = {}
    for listfile in sorted(platform.glob("*/CMakeLists.txt")):
        text = re.sub(r"#.*", "", listfile.read_text())
        for call in re.findall(r"tavo_library\(([^)]*)\)", text):
            name, *words = call.split()
            found[name] = (listfile.parent.name, {w for w in words if w.startswith("platform_")})
    return found


def reachable(folder, known):
    """The folders whose headers files of `folder` may include."""
    folders, queue = {folder}, [n for n, (f, _) in known.items() if f == folder]
    seen = set(queue)
    while queue:
        for name in known[queue.pop()][1] & known.keys() - seen:
            seen.add(name)
            queue.append(name)
            folders.add(known[name][0])
    return folders


def owner(header, folders):
    """The folder of the library that implements a header of platform/include; None for one that needs none."""
    stem = header.stem
    owners = [f for f in folders if list((platform / f).glob(stem + ".cpp"))]
    return owners[0] if owners else None


def main():
    known = libraries()
    folders = {folder for folder, _ in known.values()}
    owners = {}
    for header in platform.rglob("*.h"):
        parts = header.relative_to(platform).parts
        owners[header] = parts[0] if parts[0] != "include" else owner(header, folders)

    faults = []
    for file in sorted(platform.rglob("*")):
        if file.suffix not in (".h", ".cpp"):
            continue
        mine = file.relative_to(platform).parts[0]
        mine = owners.get(file) if mine == "include" else mine
        for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
            match = re.match(r'#include "([^"]+)"', line)
            if not match:
                continue
            places = [file.parent / match[1], platform / "include" / match[1]]
            places += [platform / f / "include" / match[1] for f in folders]
            target = next((owners[p] for p in places if p in owners), None)
            if mine and target and target not in reachable(mine, known):
                faults.append(f"{file.relative_to(root)}:{number}: platform/{mine} may not include "
                              f'"{match[1]}" of platform/{target}: its CMakeLists.txt does not name that library')

    for file in sorted(root.glob("*/**/*")):
        if file.suffix in (".h", ".cpp") and "build" not in file.relative_to(root).parts[0]:
            for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
                if re.match(r'#include "[^"]*\.\./', line):
                    faults.append(f"{file.relative_to(root)}:{number}: an include that goes round the targets")

    print("\n".join(faults), file=sys.stderr, end="\n" if faults else "")
    return 1 if faults else 0


sys.exit(main())
