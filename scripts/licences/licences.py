#!/usr/bin/env python3
"""Writes what is linked into programs. Fails if the table has no entry for something that is linked in."""
import argparse
import collections
import datetime
import fnmatch
import functools
import json
import os
import pathlib
import re
import subprocess
import sys

import linked

ROOT = pathlib.Path(__file__).resolve().parents[2]
PROJECT = "TAVO SolidWorks Integration"


def output(*command):
    return subprocess.run(command, cwd=ROOT, check=True, capture_output=True, text=True).stdout.strip()


def relative(path):
    """A file of the checkout from its root on; another one as it is."""
    return path[len(str(ROOT)) + 1:] if path.startswith(f"{ROOT}/") else path


class Component:
    """An entry of components.json, with what this machine has of it once it is used."""

    def __init__(self, entry):
        self.name = entry["name"]
        self.licence = entry["licence"]
        self.archives = entry.get("archives", [])
        self.headers = entry.get("headers", [])
        self.texts = entry.get("texts", [])
        self.files = entry.get("files", "*")  # of the package, as its copyright file names them
        self.id = "SPDXRef-" + re.sub("[^A-Za-z0-9.]+", "-", self.name)
        # Either a source package of Debian, built by ./dev setup, or one that is installed.
        self.folder = ROOT / "build/deps" / f"{entry['source']}-source" if "source" in entry else None
        self.package = entry.get("source") or entry["package"]
        self.copyright_file = (self.folder / "debian/copyright" if self.folder else
                               pathlib.Path("/usr/share/doc", self.package, "copyright"))

    @functools.cached_property
    def version(self):
        if self.folder:
            return re.match(r"\S+ \((.+?)\)", self.read("debian/changelog"))[1]
        return output("dpkg-query", "-W", "-f=${Version}", self.package)

    def purl(self):
        return f"pkg:deb/debian/{self.package}@{self.version}" + ("?arch=source" if self.folder else "")

    def read(self, name):
        """A text: of the source package, or at a full path."""
        return (self.folder / name if self.folder else pathlib.Path(name)).read_text(encoding="utf-8")

    def copyright(self):
        """Who holds the copyright: of the files in a text in Debian's format, else the first sentence that says so."""
        text = self.copyright_file.read_text(encoding="utf-8")
        if text.startswith("Format:"):
            files = re.escape(self.files)
            found = re.search(rf"^Files:\s+{files}\s(?:.*\n)*?Copyright:((?:.*\n)(?:[ \t].*\n)*)", text, re.M)
        else:
            found = re.search(r"(Copyright \(C\)(?:.*\n)*?)\n", text)
        if not found:
            sys.exit(f"{self.copyright_file}: no copyright")
        return " ".join(found[1].split())

    def licence_text(self):
        files = [self.copyright_file.read_text(encoding="utf-8")] + [self.read(name) for name in self.texts]
        return "\n\n".join(text.strip() for text in files)


class Catalogue:
    def __init__(self, table):
        self.table = table
        self.components = [Component(entry) for entry in json.loads(table.read_text(encoding="utf-8"))]

    def find(self, kind, name):
        """The first component with a pattern for an archive or header; None if there is none."""
        for component in self.components:
            if any(fnmatch.fnmatchcase(name, pattern) for pattern in getattr(component, kind)):
                return component
        return None


def contents(programs, catalogue):
    """Program -> the components in it. Ends with what no entry covers."""
    result, unknown = {}, collections.defaultdict(set)
    for program, parts in sorted(programs.items()):
        found = set()
        for kind, names in (("archives", map(relative, parts.archives)), ("headers", parts.headers)):
            for name in names:
                component = catalogue.find(kind, name)
                if component:
                    found.add(component)
                else:
                    unknown[name].add(program)
        result[program] = found
    for name, programs in sorted(unknown.items()):
        print(f"{catalogue.table}: no entry for {name}, which is in {', '.join(sorted(programs))}", file=sys.stderr)
    if unknown:
        sys.exit(1)
    return result


def package(identifier, name, version, licence, copyright_text):
    return {"SPDXID": identifier, "name": name, "versionInfo": version, "downloadLocation": "NOASSERTION",
            "filesAnalyzed": False, "licenseConcluded": licence, "licenseDeclared": licence,
            "copyrightText": copyright_text}


def program_id(program):
    return "SPDXRef-" + re.sub("[^A-Za-z0-9.]+", "-", program)


def document(programs, version, time):
    used = {component for components in programs.values() for component in components}
    packages, relations = [], []
    for program, components in programs.items():
        identifier = program_id(program)
        packages.append(package(identifier, program, version, "NOASSERTION", "NOASSERTION"))
        relations.append(("SPDXRef-DOCUMENT", "DESCRIBES", identifier))
        relations += sorted((identifier, "CONTAINS", component.id) for component in components)
    for component in sorted(used, key=lambda each: each.id):
        entry = package(component.id, component.name, component.version, component.licence, component.copyright())
        entry["externalRefs"] = [{"referenceCategory": "PACKAGE-MANAGER", "referenceType": "purl",
                                  "referenceLocator": component.purl()}]
        packages.append(entry)
    commit = output("git", "rev-parse", "HEAD")
    return {
        "spdxVersion": "SPDX-2.3", "dataLicense": "CC0-1.0", "SPDXID": "SPDXRef-DOCUMENT",
        "name": f"{PROJECT} {version}", "documentNamespace": f"urn:tavo:solidworks-integration:{version}:{commit}",
        "creationInfo": {"created": time.strftime("%Y-%m-%dT%H:%M:%SZ"), "creators": ["Tool: licences.py"]},
        "packages": packages,
        "relationships": [{"spdxElementId": one, "relationshipType": how, "relatedSpdxElement": other}
                          for one, how, other in relations],
    }


def texts(programs):
    used = {component for components in programs.values() for component in components}
    parts = [f"{PROJECT}: licences of what is linked into it\n"]
    for component in sorted(used, key=lambda each: each.id):
        title = f"{component.name} {component.version}"
        line = "=" * 78
        parts.append(f"{line}\n{title}\n{component.licence}\n{line}\n\n{component.licence_text()}\n")
    return "\n\n".join(parts)


def commit_time():
    seconds = os.environ.get("SOURCE_DATE_EPOCH") or output("git", "log", "-1", "--format=%ct")
    return datetime.datetime.fromtimestamp(int(seconds), datetime.timezone.utc)


def read_arguments():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--build", type=pathlib.Path, default=ROOT / "build/windows", help="the build folder")
    parser.add_argument("--table", type=pathlib.Path, default=pathlib.Path(__file__).with_name("components.json"),
                        help="the table of components")
    parser.add_argument("list", type=pathlib.Path,
                        help="gets a list in the form of SPDX 2.3; licences.txt beside it the texts of the licences")
    parser.add_argument("programs", nargs="*", help="what the list is about; all programs if there is none")
    return parser.parse_args()


def main():
    arguments = read_arguments()
    shipped = contents(linked.programs(ROOT, arguments.build, arguments.programs), Catalogue(arguments.table))
    version = re.search(r"project\(\S+ VERSION ([0-9.]+)", (ROOT / "CMakeLists.txt").read_text(encoding="utf-8"))[1]
    text = json.dumps(document(shipped, version, commit_time()), indent=2, ensure_ascii=False)
    arguments.list.write_text(text + "\n", encoding="utf-8")
    arguments.list.with_name("licences.txt").write_text(texts(shipped), encoding="utf-8")


main()
