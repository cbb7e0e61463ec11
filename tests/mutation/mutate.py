#!/usr/bin/env python3
"""Breaks the rules of the program one line at a time and sees whether the native tests notice.

    tests/mutation/mutate.py [COUNT [SEED]]

Takes COUNT (default 60) random lines of the portable code, each changed in one of four ways: a check is
dropped or turned round, a result code is ignored, a step such as a clean-up is left out, two steps are
swapped. Each mutant is built in a copy of the sources (build/mutation) and tested until the first
failure; one that does not compile does not count. Prints every survivor; the last line is the score.
"""
import filecmp
import pathlib
import random
import re
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
COPY = ROOT / "build/mutation"
ROOMS = ("app", "access", "media", "backup", "restore", "maintenance")
TESTS = COPY / "build/bin/qx_unit_tests"
STEP = re.compile(r"^ +(?!return|throw|break|continue|const |static |auto |using |[\w:]+&? \w+[ ({=])[\w:.\->]+(\(| = ).*;$")
EFFECT = re.compile(r"Write|Line|Copy|Move|Remove|Delete|Record|Run|Reg[SG]et|MakeFolder|Ask|Fail|[sS]taging")
SWEEPS = "*SingleFault*:*DamagedDescriptor*"


def drop_check(line):
    """A check whose whole answer stands on its line."""
    return re.fullmatch(r" +if \(.*\) (return|break|continue)\b.*;", line) and "// " + line.strip()


def turn_check(line):
    for old, new in (("!=", "=="), ("==", "!="), (" < ", " <= "), (" > ", " >= "), ("&&", "||"), ("||", "&&")):
        if old in line and re.search(r"\b(if|while|return)\b", line):
            return line.replace(old, new, 1)
    return None


def ignore_code(line):
    return "!= app::kDone" in line and line.replace("!= app::kDone", "== app::ResultCode(77)", 1)


def leave_out(line):
    return STEP.match(line) and "// " + line.strip()


def mutants():
    """All mutants: file, number of its first line, what stands there, and what is to stand there."""
    found = []
    for path in sorted(p for room in ROOMS for p in (ROOT / "src" / room).glob("*.cpp")):
        lines = path.read_text().splitlines()
        for i, line in enumerate(lines):
            if "Yield()" in line:
                continue  # no test sees when the screen is served
            for change in (drop_check, turn_check, ignore_code, leave_out):
                if new := change(line):
                    found.append((path, i, [line], [new]))
            following = lines[i + 1] if i + 1 < len(lines) else ""
            # Captions or members set in another order are no fault.
            if all(STEP.match(text) and EFFECT.search(text) for text in (line, following)):
                found.append((path, i, [line, following], [following, line]))
    return found


def run(*command, **options):
    return subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False, **options).returncode


def dies():
    """Whether a test fails, or does not end. None when the mutant cannot be built."""
    if run("ninja", "-C", COPY / "build", "qx_unit_tests") != 0:
        return None
    for tests in ("-" + SWEEPS, SWEEPS):
        try:
            if run(TESTS, "--gtest_fail_fast", "--gtest_filter=" + tests, timeout=300) != 0:
                return True
        except subprocess.TimeoutExpired:
            return True
    return False


def refresh(source, copy):
    """Leaves what is the same as it is: an older date would keep the build from noticing that the last mutant is gone."""
    if not pathlib.Path(copy).exists() or not filecmp.cmp(source, copy, shallow=False):
        shutil.copy(source, copy)


def main():
    count = int(sys.argv[1]) if len(sys.argv) > 1 else 60
    random.seed(int(sys.argv[2]) if len(sys.argv) > 2 else 1)
    for folder in ("src", "tests", "cmake", "reference-host", "bench", "build/libdeflate", "build/zlib"):
        shutil.copytree(ROOT / folder, COPY / folder, copy_function=refresh, dirs_exist_ok=True)
    refresh(ROOT / "CMakeLists.txt", COPY / "CMakeLists.txt")
    run("cmake", "-S", COPY, "-B", COPY / "build", "-G", "Ninja", "-DCMAKE_CXX_FLAGS=-O1")
    if dies() is not False:
        sys.exit("the tests must pass before anything is broken")
    died, survived = 0, 0
    candidates = mutants()
    random.shuffle(candidates)
    for path, at, old, new in candidates:
        if died + survived == count:
            break
        copy = COPY / path.relative_to(ROOT)
        original = copy.read_text()
        lines = original.splitlines()
        lines[at : at + len(old)] = new
        copy.write_text("\n".join(lines) + "\n")
        verdict = dies()
        copy.write_text(original)
        died += verdict is True
        survived += verdict is False
        if verdict is False:
            change = " / ".join(line.strip() for line in new)
            print(f"survived: {path.relative_to(ROOT)}:{at + 1}: {change}", flush=True)
    print(f"{died} of {died + survived} mutants died")


if __name__ == "__main__":
    main()
