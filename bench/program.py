"""The program on a workstation under Wine, against the same commands in a batch file; and how its loops grow."""
import os
import pathlib
import shutil
import subprocess

from samples import run
from tree import join_images

# For each file Wine's server and a program wake each other. On one processor that takes the same time whenever it is
# measured; on two, an idle one has to be woken first, and single figures differ by half.
ONE_CORE = ("taskset", "-c", "0")
WINE = (*ONE_CORE, "wine")


def keep_wine_on_one_processor():
    for command in (("wineserver", "-k"), ("wineserver", "-w"), (*ONE_CORE, "wineserver", "-p60")):
        subprocess.run(command, check=False, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


class Program:
    def __init__(self, samples, work, release, windows):
        """Runs in the prefix that WINEPREFIX names, on the workstation that is installed there."""
        self._samples = samples
        self._work = work
        self._release = release
        self._windows = windows
        self._drive = pathlib.Path(os.environ["WINEPREFIX"]) / "drive_c"
        self._images = self._drive / "Tarsus/Data/Image.ddo"

    def take_images(self, tree):
        """The patient data are the tree's images, small ones."""
        shutil.rmtree(self._images)
        shutil.copytree(tree / "workstation/Data/Image.ddo", self._images)

    def measure(self, rounds):
        """Returns the stretches of one backup: (phase, from, to) in seconds."""
        output = self._bench_program(rounds + 1, 150)
        lines = output.splitlines()
        self._samples.note_lines(output)
        join_images(self._images)
        large = self._bench_program(rounds, 60).splitlines()
        self._samples.note_lines("\n".join(line for line in large if line.startswith(("backup", "restore"))), "large.")
        spans = [line.split() for line in lines if line.startswith("span ")]
        return [(phase, float(start), float(end)) for _, phase, start, end in spans]

    def growth(self, percent):
        """The program's own work natively; with real files under Wine."""
        self._samples.note_lines(self._output(self._release / "bench_growth", percent))
        for _ in range(5):
            self._grow_on_files("staging", "tenth", 20 * percent)
            self._grow_on_files("staging", "all", 200 * percent)
            self._grow_on_files("clients", "tenth", 8 * percent)
            self._grow_on_files("clients", "all", 80 * percent)

    def xcopy(self, percent):
        """How the time of the external copying command grows with the files of one folder, and of ten."""
        source, copy = self._drive / "xcopy", self._drive / "xcopy.copy"
        for _ in range(2):
            for name, files, folders in (
                ("start", 1, 1), ("few", 4 * percent, 1), ("many", 40 * percent, 1), ("spread", 4 * percent, 10),
            ):
                shutil.rmtree(source, ignore_errors=True)
                shutil.rmtree(copy, ignore_errors=True)
                for folder in range(folders):
                    _touch(source / str(folder), map(str, range(1, files + 1)))
                with self._samples.timed(f"xcopy.{name}"):
                    run(*WINE, "cmd", "/c", r"xcopy C:\xcopy C:\xcopy.copy\ /S /Y >nul")
        shutil.rmtree(source)
        shutil.rmtree(copy)

    def _bench_program(self, rounds, seconds):
        output = self._output(*WINE, self._windows / "bench_program.exe", rounds, seconds)
        for line in output.splitlines():
            if line.startswith("#"):
                print(line, flush=True)
        return output

    def _grow_on_files(self, loop, name, count):
        folder = self._drive / "growth"
        if loop == "staging":
            _touch(folder, map(str, range(1, count + 1)))
        else:
            for number in range(count):
                (folder / f"Maintenance_PC{number // 25:03d}_12031509{number % 25:04d}").mkdir(parents=True)
        run("sync", "-f", folder)
        self._samples.note(f"growth.files.{loop}.{name}", self._output(*WINE, self._windows / "bench_files.exe", loop,
                                                                       "C:\\growth\\"))
        shutil.rmtree(folder)

    def _output(self, *command):
        """What a program prints: through a file, because a pipe stays open as long as Wine's server lives."""
        path = self._work / "output.txt"
        with open(path, "wb") as file:
            done = subprocess.run([str(part) for part in command], check=False, stdin=subprocess.DEVNULL, stdout=file,
                                  stderr=subprocess.STDOUT)
        text = path.read_text(encoding="utf-8", errors="replace").replace("\r", "")
        if done.returncode:
            raise SystemExit(f"{command[-3:]} failed with {done.returncode}:\n{text[-2000:]}")
        return text


def _touch(folder, names):
    folder.mkdir(parents=True)
    for name in names:
        (folder / name).touch()
