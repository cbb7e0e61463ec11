"""Holds a Windows build and its packages to what is said of them: nothing in them tells where or when they were built,
and each bill of materials names what is there.

    check.py BUILD

BUILD is the folder of a Windows build in which packaging/build.sh has made the packages.
"""
import hashlib
import json
import pathlib
import struct
import sys


def link_time(executable):
    """The time in an executable's header, which the linker leaves at zero."""
    header = struct.unpack_from("<I", executable, 0x3C)[0]
    return struct.unpack_from("<I", executable, header + 8)[0]


def traces(file, clone):
    """What in an executable would be different had it been built elsewhere or at another time."""
    content = file.read_bytes()
    if file.parent.name == "bin" and link_time(content) != 0:
        yield f"{file}: bears the time when it was linked"
    for encoding in "utf-8", "utf-16-le":
        if str(clone).encode(encoding) in content:
            yield f"{file}: names {clone}"


def errors_in_bill(file, programs):
    bill = json.loads(file.read_text(encoding="utf-8"))
    parts = {part["bom-ref"]: part for part in bill["components"]}
    listed = {part["name"]: part["hashes"][0]["content"] for part in parts.values() if "hashes" in part}
    for name, digest in listed.items():
        if hashlib.sha256((programs / name).read_bytes()).hexdigest() != digest:
            yield f"{file}: has another {name}"
    for use in bill["dependencies"]:
        if not use["dependsOn"]:
            yield f"{file}: {use['ref']} is made of nothing"
        yield from (f"{file}: does not describe {ref}" for ref in use["dependsOn"] if ref not in parts)
    if not {"QXBackupUtility.exe", "QX32.dll"} & listed.keys():
        yield f"{file}: lists neither the program nor the host's library"


def main(build):
    build = pathlib.Path(build).resolve()
    executables = [file for file in build.glob("bin/*") if file.suffix in (".exe", ".dll")]
    setups, bills = list(build.glob("packages/*.exe")), list(build.glob("packages/*.cdx.json"))
    errors = [error for file in executables + setups for error in traces(file, build.parent.parent)]
    errors += [error for file in bills for error in errors_in_bill(file, build / "bin")]
    if not executables or len(setups) != 2 or len(bills) != 2:
        errors.append(f"{build}: executables, two packages or their two bills of materials are missing")
    print(f"{len(executables)} executables, {len(setups)} packages, {len(bills)} bills of materials")
    sys.exit("\n".join(errors) or 0)


if __name__ == "__main__":
    main(*sys.argv[1:])
