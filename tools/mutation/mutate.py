#!/usr/bin/env python3
"""Breaks the rules of the program one statement at a time and sees whether the tests notice.

Takes random statements of one area and changes each in one of five ways: a check is dropped or turned round, a result
is ignored, a step such as a clean-up is left out, two steps are swapped. Each mutant is built in a copy of the sources
(build/mutation/AREA) and tested until the first failure; one that does not compile does not count. Prints every
survivor; the last line is the score. The same area, count and seed give the same mutants of the same sources.

areas:
  portable  src/ without src/windows, by qx_unit_tests
  windows   src/windows, by contract_win32_tests and windows_tests under Wine, in a prefix of its own without a screen
  cabinet   src/cabinet, by the cases of qx_unit_tests that are about it and by cabarc_tests
  cabarc    reference-host/cabarc, by cabarc_tests

Needs what scripts/setup.sh installs. Ends with 1 when something else than the mutants fails.
"""
import argparse
import collections
import filecmp
import os
import pathlib
import random
import re
import resource
import shutil
import signal
import subprocess
import sys
import time

sys.dont_write_bytecode = True
import changes  # pylint: disable=wrong-import-position

ROOT = pathlib.Path(__file__).resolve().parents[2]
SWEEPS = "*SingleFault*:*DamagedDescriptor*:*CrashInBackup*"  # they take longest, so they come last

# `tests`: programs and which of their cases to run, in this order.
Area = collections.namedtuple("Area", "folder without tests is_windows")
AREAS = {
    "portable": Area("src", "src/windows", [("qx_unit_tests", "-" + SWEEPS), ("qx_unit_tests", SWEEPS)], False),
    "windows": Area("src/windows", "nothing", [("contract_win32_tests", "*"), ("windows_tests", "*")], True),
    "cabinet": Area("src/cabinet", "nothing", [("qx_unit_tests", "Cabinet*"), ("cabarc_tests", "*")], False),
    "cabarc": Area("reference-host/cabarc", "nothing", [("cabarc_tests", "*")], False),
}


def synchronise(source, target, leave=()):
    """Makes the folder `target` the same as `source`, but for the names in `leave`. What is the same stays untouched:
    a newer date would have it built again."""
    target.mkdir(parents=True, exist_ok=True)
    names = {path.name for path in source.iterdir() if not path.name.startswith((".", "__"))}.difference(leave)
    for stale in [path for path in target.iterdir() if path.name not in names.union(leave)]:
        shutil.rmtree(stale) if stale.is_dir() else stale.unlink()
    for path in map(source.joinpath, names):
        copy = target / path.name
        if path.is_dir():
            synchronise(path, copy)
        elif not copy.exists() or not filecmp.cmp(path, copy, shallow=False):
            shutil.copy(path, copy)


class Workshop:
    """A copy of the sources, its build, and a place for the tests where broken code finds nothing to damage."""

    def __init__(self, name):
        folder = ROOT / "build/mutation" / name
        self.area = AREAS[name]
        self.programs = sorted({program for program, _ in self.area.tests})
        self.tree, self.build, self.log = folder / "tree", folder / "build", folder / "log"
        self.home, self.prefix, self.pristine = folder / "home", folder / "prefix", folder / "pristine-prefix"
        self.target = "i686" if shutil.which("i686-w64-mingw32-g++-posix") else "x86_64"  # of the Windows programs
        self.timeout = 1800  # seconds, until it is known how long the tests take

    def run(self, *command, timeout=None, **options):
        """The exit code; -1 after more than `timeout` seconds. The output goes to the log: a pipe would stay open as
        long as Wine's server lives."""
        with open(self.log, "wb") as log:
            process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=log, stderr=log,
                                       process_group=0, **options)
            try:
                return process.wait(timeout)
            except subprocess.TimeoutExpired:
                os.killpg(process.pid, signal.SIGKILL)
                process.wait()
                return -1

    def run_apart(self, *command, prefix=None, **options):
        """The same in a home of its own: a Wine prefix has links to the user's, where broken code may delete."""
        apart = {"HOME": str(self.home), "TMPDIR": str(self.home), "WINEPREFIX": str(prefix or self.prefix),
                 "LC_ALL": "C.UTF-8", "WINEDEBUG": "-all", "WINEDLLOVERRIDES": "mscoree,mshtml,winemenubuilder.exe="}
        if self.target == "i686":
            apart["WINEARCH"] = "win32"
        drive = self.prefix / "drive_z"
        return self.run(*command, env=os.environ | apart, cwd=drive if drive.exists() else self.home, **options)

    def set_up(self):
        synchronise(ROOT, self.tree, leave=["build"])
        (self.tree / "build").mkdir(exist_ok=True)
        for fetched in ("libdeflate", "zlib"):
            (self.tree / "build" / fetched).unlink(missing_ok=True)
            (self.tree / "build" / fetched).symlink_to(ROOT / "build" / fetched)
        self.clean()
        options = ["-DCMAKE_CXX_FLAGS=-O1 -Wno-error=parentheses"]
        if self.area.is_windows:
            options.append(f"-DCMAKE_TOOLCHAIN_FILE={self.tree}/cmake/mingw-{self.target}.cmake")
            self.make_prefix()
        if self.run("cmake", "-S", self.tree, "-B", self.build, "-G", "Ninja", *options) != 0:
            sys.exit(f"CMake fails; see {self.log}")

    def make_prefix(self):
        if (self.pristine / "made").exists():
            return
        shutil.rmtree(self.pristine, ignore_errors=True)
        drivers = r"HKCU\Software\Wine\Drivers"
        for command in (("wineboot", "-i"), ("wine", "reg", "add", drivers, "/v", "Graphics", "/d", "null", "/f")):
            if self.run_apart(*command, prefix=self.pristine) != 0:
                sys.exit(f"Wine could not make a prefix; see {self.log}")
        self.run_apart("wineserver", "-w", prefix=self.pristine)
        (self.pristine / "made").touch()

    def lay_out_prefix(self):
        """A prefix with copies of all that the tests need and no way to anything else: one of them deletes a folder
        without a name, and only the program's own check keeps that from emptying the current drive."""
        subprocess.run(["cp", "-a", self.pristine, self.prefix], check=True)
        (self.prefix / "dosdevices/z:").unlink()  # the whole machine
        (self.prefix / "dosdevices/z:").symlink_to("../drive_z")
        folders = {self.path_of(program).parent for program in self.programs}
        for folder in folders | {self.tree}:
            shutil.copytree(folder, self.prefix / "drive_z" / folder.relative_to("/"), dirs_exist_ok=True,
                            ignore=shutil.ignore_patterns("build"))

    def path_of(self, program):
        return next(self.build.rglob(program + (".exe" if self.area.is_windows else "")))

    def run_tests(self, program, cases):
        path = self.path_of(program)
        start = ["wine", "Z:" + str(path).replace("/", "\\")] if self.area.is_windows else [path]
        return self.run_apart(*start, "--gtest_fail_fast", f"--gtest_filter={cases}", timeout=self.timeout)

    def clean(self):
        """Ends and removes what the last tests have left, so that no mutant dies of another one's doings."""
        self.home.mkdir(exist_ok=True)
        if self.prefix.exists():
            self.run_apart("wineserver", "-k")
            self.run_apart("wineserver", "-w", timeout=60)
            shutil.rmtree(self.prefix)
        shutil.rmtree(self.home)
        self.home.mkdir()

    def sources(self):
        """The area's sources of which the tests are built, relative to the tree."""
        if self.run("ninja", "-C", self.build, "-t", "inputs", *self.programs) != 0:
            sys.exit(f"the build knows no such test programs; see {self.log}")
        below, inputs = f"{self.tree}/", self.log.read_text().splitlines()
        found = {line.removeprefix(below) for line in inputs if line.startswith(below) and line.endswith(".cpp")}
        return sorted(path for path in found if path.startswith(self.area.folder + "/") and
                      not path.startswith(self.area.without + "/"))

    def builds(self):
        return self.run("ninja", "-j2", "-C", self.build, *self.programs) == 0

    def killer(self):
        """What notices the fault: the name of a test, or how a program ended. Empty when every test passes; None when
        the mutant cannot be built."""
        if not self.builds():
            return None
        self.clean()
        if self.area.is_windows:
            self.lay_out_prefix()
        for program, cases in self.area.tests:
            if (code := self.run_tests(program, cases)) != 0:
                test = re.search(r"\[  FAILED  \] ([\w/.]+)", self.log.read_text(errors="replace"))
                end = "does not end" if code == -1 else f"ends with {code}"
                return test[1] if test else f"{program} {end}"
        return ""

    def try_mutant(self, path, at, end, new):
        file = self.tree / path
        original = file.read_text()
        lines = original.splitlines()
        lines[at:end] = [new]
        file.write_text("\n".join(lines) + "\n")
        try:
            return self.killer()
        finally:
            file.write_text(original)


def described(path, at, new):
    return f"{path}:{at + 1}: " + " / ".join(line.strip() for line in new.splitlines())


def read_arguments():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("area", choices=AREAS)
    parser.add_argument("count", nargs="?", type=int, default=60, help="mutants that compile (default: %(default)s)")
    parser.add_argument("seed", nargs="?", type=int, default=1, help="which ones (default: %(default)s)")
    parser.add_argument("--verbose", action="store_true", help="also print what noticed each of the others")
    parser.add_argument("--list", action="store_true", help="only print the candidates, in their order")
    return parser.parse_args()


def limit_resources():
    """Others work on this machine, and a loop without end must not take all of its memory or disk."""
    os.nice(15)
    for what in (resource.RLIMIT_AS, resource.RLIMIT_FSIZE):
        resource.setrlimit(what, (8 << 30, resource.getrlimit(what)[1]))


def main():
    arguments = read_arguments()
    limit_resources()
    workshop = Workshop(arguments.area)
    workshop.set_up()
    candidates = [(path, *mutant) for path in workshop.sources()
                  for mutant in changes.mutants((ROOT / path).read_text().splitlines())]
    random.seed(arguments.seed)
    random.shuffle(candidates)
    if arguments.list:
        for path, at, _, new in candidates:
            print(described(path, at, new))
        return
    if not workshop.builds():
        sys.exit(f"the build fails; see {workshop.log}")
    began = time.monotonic()
    if (killer := workshop.killer()) != "":
        sys.exit(f"the tests must pass before anything is broken: {killer}; see {workshop.log}")
    workshop.timeout = 30 + 4 * (time.monotonic() - began)
    died, survived = 0, 0
    for path, at, end, new in candidates:
        if died + survived == arguments.count:
            break
        killer = workshop.try_mutant(path, at, end, new)
        died += bool(killer)
        survived += killer == ""
        if killer == "" or (killer and arguments.verbose):
            print(f"{killer or 'survived'}: {described(path, at, new)}", flush=True)
    if (killer := workshop.killer()) != "":
        sys.exit(f"the score is worth nothing: sound code fails at the end as well: {killer}")
    workshop.clean()
    print(f"{died} of {died + survived} mutants died")


if __name__ == "__main__":
    main()
