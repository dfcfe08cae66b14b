"""What is linked into the programs of a build folder: from the commands that link them and its dependencies."""
import collections
import pathlib
import re
import shlex
import subprocess
import sys

Parts = collections.namedtuple("Parts", "archives headers")


def ninja(build, *arguments):
    return subprocess.run(["ninja", "-C", build, "-t", *arguments], check=True, capture_output=True, text=True).stdout


def dependency_headers(root, build):
    """Object -> the headers of dependencies that it includes: each folder or file of their include folder."""
    include = f"{root}/build/deps/windows/include/"
    result, headers = collections.defaultdict(set), set()
    for line in ninja(build, "deps").splitlines():
        if line.startswith("    "):
            path = line.strip()
            if include in path:
                headers.add(path.split(include)[1].split("/")[0])
        elif ": #deps" in line:
            headers = result[line.split(": #deps")[0]]
    return result


def linker_arguments(build, command):
    """The arguments that the compiler hands to the linker, with all libraries that it adds itself."""
    link = next(part for part in command.split("&&") if " -o " in part)
    done = subprocess.run(shlex.split(link) + ["-###"], cwd=build, check=True, capture_output=True, text=True)
    return shlex.split(next(line for line in done.stderr.splitlines() if "/collect2 " in line))


def archives(build, arguments):
    """The archives and objects that are not of the build folder, as full paths."""
    folders = [pathlib.Path(build, word[2:]).resolve() for word in arguments if word.startswith("-L")]
    found = set()
    for word in arguments:
        if word.startswith("-l"):
            names = (f"lib{word[2:]}.a", f"lib{word[2:]}.dll.a")
            files = (folder / name for folder in folders for name in names)
            found.add(str(next((file for file in files if file.exists()), word)))
        elif re.search(r"\.(a|o)$", word) and pathlib.Path(word).is_absolute():
            found.add(str(pathlib.Path(word).resolve()))
    return found


def objects(arguments):
    """The objects of the build folder that are linked: each by itself, or as members of an archive."""
    for word in arguments:
        if word.endswith(".obj"):
            yield word
        elif word.endswith(".a") and not pathlib.Path(word).is_absolute():
            archive = pathlib.PurePosixPath(word)
            yield f"{archive.parent}/CMakeFiles/{archive.name[3:-2]}.dir/"


def paths_of(build, wanted):
    """The paths below the build folder of the wanted programs, or of all. Ends with what is missing."""
    paths = (build / "tests/programs.txt").read_text(encoding="utf-8").split()
    names = {pathlib.PurePosixPath(path).name: path for path in paths}
    missing = [name for name in wanted if name not in names]
    if missing:
        sys.exit(f"{build} has no program {missing[0]}")
    return {name: names[name] for name in wanted or names}


def programs(root, build, wanted):
    """Program -> its parts that are not the project's own, for the wanted programs or for all."""
    headers_of = dependency_headers(root, build)
    result = {}
    for program, path in paths_of(build, wanted).items():
        command = ninja(build, "commands", path).strip().splitlines()[-1]
        if "lld-link" in command:  # only of objects of its own, for the other ABI
            result[program] = Parts(set(), set())
            continue
        arguments = linker_arguments(build, command)
        own = tuple(objects(arguments))
        headers = {header for name, names in headers_of.items() if name.startswith(own) for header in names}
        result[program] = Parts(archives(build, arguments), headers)
    return result
