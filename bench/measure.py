"""Measures on a workstation that is set up, and writes the performance page; bench/run.sh prepares everything.

    measure.py [--quick] WORK DOCS NATIVE WINDOWS WORKSTATION_ON

WORK is the folder to work in, DOCS where the page goes, NATIVE and WINDOWS hold the programs, and WORKSTATION_ON says
where the prefix lies that WINEPREFIX names.
"""
import argparse
import pathlib
import time
import types

import document
from archiver import Archiver
from program import Program, keep_wine_on_one_processor
from samples import Samples
from set_check import SetCheck
from tree import make_tree, small_files


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--quick", action="store_true", help="everything small and measured once")
    for folder in ("work", "docs", "native", "windows"):
        parser.add_argument(folder, type=pathlib.Path)
    parser.add_argument("workstation_on")
    options = parser.parse_args()
    percent, rounds = (4, 1) if options.quick else (100, 3)
    work, start = options.work, time.monotonic()
    tree, small = work / "tree", work / "small"

    say("Making the files")
    small_files(small, 200 * percent)
    make_tree(options.native / "demo-data", tree, small, percent)
    files = [path for path in tree.rglob("*") if path.is_file()]
    facts = types.SimpleNamespace(
        percent=percent, work=work, workstation_on=options.workstation_on, files=len(files),
        bytes=sum(path.stat().st_size for path in files),
        images=sum(path.is_file() for path in (tree / "workstation/Data/Image.ddo").rglob("*")),
    )
    samples = Samples(work)
    archiver = Archiver(samples, work, options.native, options.windows, rounds)
    program = Program(samples, work, options.native, options.windows)
    say("Archiver: creating")
    archiver.creating()
    say("Archiver: extracting")
    archiver.extracting()
    say("Checking a set")
    SetCheck(samples, work, options.native, rounds).checking()
    say("Archiver: a large file; cutting into pieces")
    archiver.large_file(percent)
    archiver.pieces()
    say("Program: backup and restore against a batch file")
    program.take_images(tree)
    keep_wine_on_one_processor()
    spans = program.measure(rounds)
    say("Growth")
    program.growth(percent)
    program.xcopy(percent)
    document.write(options.docs, samples, spans, facts)
    minutes, seconds = divmod(round(time.monotonic() - start), 60)
    say(f"Written: {options.docs / 'performance.md'} ({minutes} min {seconds} s)")


def say(text):
    print(f"== {text}", flush=True)


if __name__ == "__main__":
    main()
