"""Tells what a package holds of others: a text with their notices, and a bill of materials in CycloneDX's form.

    contents.py BUILD DATE NAME VERSION OUTPUT PROGRAM...

BUILD is the folder of a Windows build, DATE its date in seconds since 1970, NAME and VERSION the package's. Writes
OUTPUT-notices.txt and OUTPUT.cdx.json for the executables and libraries PROGRAM... What is in them is read from the
linker's maps, so that nothing can be forgotten: where the origin or the licence of a part is not known here, the
script fails and names it.
"""
import datetime
import functools
import hashlib
import json
import os
import pathlib
import re
import subprocess
import sys
import uuid
from urllib.parse import quote

SOURCES = pathlib.Path(__file__).parent.parent / "build"
LICENCES = pathlib.Path("/usr/share/common-licenses")

# Libraries that are built from fetched sources: what names them in a linker's map, then in their sources the file and
# the line with the version, and the file with the licence.
FETCHED = {
    "libdeflate": (r"liblibdeflate\.a$", "libdeflate.h", r'VERSION_STRING\s+"([\d.]+)"', "COPYING"),
    "zlib": (r"libzlib_inflate\.a$", "zlib.h", r'ZLIB_VERSION "([\d.]+)"', "LICENSE"),
    "sqlite3": (r"libsqlite\.a$", "sqlite3.h", r'SQLITE_VERSION\s+"([\d.]+)"', "LICENSE.md"),
    "sqliteodbc": (r"/build/sqliteodbc/.*\.obj$", "VERSION", r"([\d.]+)", "license.terms"),
}
# Our own archives, and objects of sources that are not below build/, as fetched ones are.
OURS = re.compile(r"lib(qx_\w+|reference_\w+|archiver|set_check)\.a$|^(?!.*/build/).*\.obj$")

# The licence that a scanner is to read, by source package. The notices have every word of it.
LICENCE_OF = {
    "libdeflate": "MIT",
    "zlib": "Zlib",
    "sqlite3": "blessing",
    "sqliteodbc": "TCL",
    "gcc-mingw-w64": "GPL-3.0-or-later WITH GCC-exception-3.1",
    "mingw-w64": "ZPL-2.1 AND MIT",
    "nsis": "Zlib",
}


class Part:
    """A library of others, by the name and version under which it was got.

    source is the name of its source package, notice the file with its notice, and changed names what was changed in it.
    """

    def __init__(self, name, version, source, purl, notice, changed=()):
        self.name, self.version, self.purl, self.changed = name, version, purl, changed
        if source not in LICENCE_OF:
            sys.exit(f"{name}: packaging/contents.py does not know the licence of {source}")
        self.licence = LICENCE_OF[source]
        self.notice = notice.read_text(encoding="utf-8", errors="replace").strip()
        self.users = []


def fetched_part(name, build):
    _, header, version, licence = FETCHED[name]
    version = re.search(version, (SOURCES / name / header).read_text(encoding="utf-8"))[1]
    changed = sorted(file.name for file in (build / name).glob("*.[ch]"))  # CMake's copies of what it has changed
    return Part(name, version, name, f"pkg:generic/{name}@{version}", SOURCES / name / licence, changed)


def debian_part(package, _):
    values = ask_dpkg("-W", "-f", "${Version}\t${source:Package}\t${Architecture}", package)
    version, source, architecture = values.split("\t")
    purl = f"pkg:deb/debian/{quote(package)}@{quote(version)}?arch={architecture}"
    return Part(package, version, source, purl, pathlib.Path(f"/usr/share/doc/{package}/copyright"))


@functools.cache
def ask_dpkg(*arguments):
    return subprocess.run(["dpkg-query", *arguments], check=True, capture_output=True, text=True).stdout


def inputs_of(map_file):
    """The archives of which a member was linked, and the objects."""
    text = map_file.read_text(encoding="utf-8", errors="replace")
    members = text.partition("Archive member included")[2].partition("\n\n\n")[0].partition("Discarded input")[0]
    archives = re.findall(r"^(\S.*?\.a)\(", members, re.MULTILINE)
    objects = re.findall(r"^LOAD (.*\.(?:o|obj))$", text, re.MULTILINE)
    return {os.path.realpath(path) if path.startswith("/") else path for path in archives + objects}


def origin_of(path):
    """The fetched library or Debian package that a linker's input comes from; nothing where it is our own."""
    for name, (pattern, *_) in FETCHED.items():
        if re.search(pattern, path):
            return fetched_part, name
    if path.startswith("/usr/"):
        return debian_part, ask_dpkg("-S", path).split(":")[0]
    if OURS.search(path):
        return None
    sys.exit(f"packaging/contents.py does not know where {path} comes from")


def find_parts(build, programs):
    """Every part with the programs that it is in; the setup program, made of NSIS, counts as one of them."""
    users = {(debian_part, "nsis-common"): ["the setup program"]}
    for program in programs:
        inputs = inputs_of(build / "maps" / f"{program.stem}.map")
        for origin in {origin_of(path) for path in inputs} - {None}:
            users.setdefault(origin, []).append(program.name)
    parts = []
    for (make, name), names in sorted(users.items(), key=lambda item: item[0][1]):
        parts.append(make(name, build))
        parts[-1].users = sorted(names)
    return parts


def notices(title, parts):
    rule = "=" * 100
    texts = {}  # of a text that several packages have, once
    for part in parts:
        texts.setdefault(part.notice, []).append(f"{part.name} {part.version}")
    for name in sorted(set(re.findall(rf"{LICENCES}/([\w.-]*\w)", "\n".join(texts)))):
        text = (LICENCES / name).read_text(encoding="utf-8").strip()
        texts.setdefault(text, []).append(f"{LICENCES / name}, as named above")
    lines = [f"What {title} holds of others", "", "It is linked with these libraries. Their notices follow.", ""]
    lines += [f"  {part.name} {part.version}\n      in {', '.join(part.users)}" for part in parts]
    for text, names in texts.items():
        lines += ["", rule, *names, rule, "", text]
    return "\n".join(lines) + "\n"


def bill(name, version, date, parts, programs):
    package = f"{name}@{version}"
    hashes = {program.name: hashlib.sha256(program.read_bytes()).hexdigest() for program in programs}
    components = [
        {
            "type": "application" if file.endswith(".exe") else "library",
            "bom-ref": file,
            "name": file,
            "version": version,
            "hashes": [{"alg": "SHA-256", "content": digest}],
        }
        for file, digest in hashes.items()
    ] + [
        {
            "type": "library",
            "bom-ref": part.purl,
            "name": part.name,
            "version": part.version,
            "licenses": [{"expression": part.licence}],
            "purl": part.purl,
            **({"pedigree": {"notes": f"changed: {', '.join(part.changed)}"}} if part.changed else {}),
        }
        for part in parts
    ]
    uses = {user: [] for user in hashes}
    in_package = list(hashes)
    for part in parts:
        for user in part.users:
            uses.get(user, in_package).append(part.purl)
    return {
        "$schema": "http://cyclonedx.org/schema/bom-1.5.schema.json",
        "bomFormat": "CycloneDX",
        "specVersion": "1.5",
        "serialNumber": uuid.uuid5(uuid.NAMESPACE_OID, f"{package} {sorted(hashes.items())}").urn,
        "version": 1,
        "metadata": {
            "timestamp": datetime.datetime.fromtimestamp(date, datetime.timezone.utc).isoformat(),
            "component": {"type": "application", "bom-ref": package, "name": name, "version": version},
        },
        "components": components,
        "dependencies": [
            {"ref": ref, "dependsOn": found} for ref, found in {package: in_package, **uses}.items()
        ],
    }


def main(build, date, name, version, output, *programs):
    programs = sorted(map(pathlib.Path, programs), key=lambda program: program.name)
    parts = find_parts(pathlib.Path(build), programs)
    text = notices(f"{name} {version}", parts)
    pathlib.Path(f"{output}-notices.txt").write_text(text, encoding="utf-8-sig", newline="\r\n")
    contents = json.dumps(bill(name, version, int(date), parts, programs), indent=2, ensure_ascii=False)
    pathlib.Path(f"{output}.cdx.json").write_text(contents + "\n", encoding="utf-8")


if __name__ == "__main__":
    main(*sys.argv[1:])
