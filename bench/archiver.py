"""cabarc beside the peers that are installed, natively and under Wine."""
import filecmp
import pathlib
import shutil
import subprocess

from samples import repeat_within, run

ONE_CORE = ("taskset", "-c", "0")


class Archiver:
    def __init__(self, samples, work, release, windows, rounds):
        """`release` holds the native programs, `windows` those for Wine; the files lie in `work`/tree and /small."""
        self._samples = samples
        self._work = work
        self._cabarc = release / "cabarc"
        self._windows_cabarc = windows / "cabarc.exe"
        self._pieces = release / "bench_pieces"
        self._walk = release / "bench_walk"
        self._rounds = rounds
        self._cabinets = work / "cabinets"
        self._outputs = 0

    def creating(self):
        repeat_within(60, self._rounds, self._creating_round)
        with self._samples.timed("create.gzip"):
            command = 'tar -cf - -C "$1" . | gzip -6 >"$2"'
            run("sh", "-c", command, "sh", self._work / "tree", self._cabinets / "gzip")
        self._note_size("size.cabarc", "ours.cab")
        if shutil.which("gcab"):
            self._note_size("size.gcab", "gcab.cab")

    def extracting(self):
        for state in ("cold", "warm"):
            repeat_within(30, self._rounds, lambda: self._extracting_round(state))
            self._compare()
        repeat_within(40, self._rounds, self._wine_round)
        self._compare()

    def large_file(self, percent):
        """One file of nearly 2 GB: images here and there, nothing in between."""
        folder = self._work / "large"
        (folder / "in").mkdir(parents=True)
        (folder / "out").mkdir()
        study = folder / "in/study.raw"
        size = 19_000_000 * percent
        images = (self._cabinets / "ours.cab").read_bytes()
        with open(study, "wb") as file:
            for part in range(4):
                file.seek(part * size // 4)
                file.write(images[: size // 4])
            file.truncate(size)
        self._note_memory("large.create", ["-r", "-p", "n", folder / "large.cab", "study.raw"], folder / "in")
        self._note_memory("large.extract", ["-r", "-p", "X", folder / "large.cab", f"{folder}/out/"], folder)
        if not filecmp.cmp(study, folder / "out/study.raw", shallow=False):
            raise SystemExit("the large file that was extracted is not the one that was packed")
        self._walking(folder / "large.cab")
        shutil.rmtree(folder)

    def pieces(self):
        """The program's own cutter of floppy sets against split."""
        folder = self._work / "pieces"
        folder.mkdir()
        whole = folder / "FDDivide.cab"
        shutil.copy(self._cabinets / "ours.cab", whole)
        for _ in range(2 * self._rounds + 1):
            for old in [*folder.glob("FDDivide[0-9]*"), *folder.glob("split*")]:
                old.unlink()
            with self._samples.timed("pieces.split"):
                run("split", "-b", "1400000", "-a", "4", "-d", whole, folder / "split")
            with self._samples.timed("pieces.program"):
                run(self._pieces, folder)
        joined = b"".join(piece.read_bytes() for piece in sorted(folder.glob("FDDivide[0-9]*")))
        if joined != whole.read_bytes():
            raise SystemExit("the pieces are not the archive")
        shutil.rmtree(folder)

    # The steps of a round are taken in turn, so that a slow moment of the machine falls on all of them.
    def _creating_round(self):
        tree, small, to = self._work / "tree", self._work / "small", self._cabinets
        shutil.rmtree(to, ignore_errors=True)
        to.mkdir()
        if shutil.which("gcab"):
            with self._samples.timed("create.gcab"):
                _gcab_create(tree, to / "gcab.cab")
        with self._samples.timed("create.cabarc"):
            self._create(tree, to / "ours.cab")
        with self._samples.timed("create.cabarc1"):
            self._create(tree, to / "one.cab", *ONE_CORE)
        if not filecmp.cmp(to / "ours.cab", to / "one.cab", shallow=False):
            raise SystemExit("the cabinet depends on the number of threads")
        if shutil.which("gcab"):
            with self._samples.timed("small.gcab"):
                _gcab_create(small, to / "small-gcab.cab")
        with self._samples.timed("small.cabarc"):
            self._create(small, to / "small.cab")

    def _walking(self, cabinet):
        """Checking a cabinet against reading its bytes, as the program does it before a restore."""
        output = self._work / "walk.txt"
        with open(output, "wb") as file:
            subprocess.run([self._walk, cabinet, str(5 * self._rounds)], check=True, stdout=file)
        self._samples.note_lines(output.read_text(encoding="ascii"))
        self._samples.note("walk.size", cabinet.stat().st_size)

    def _create(self, tree, cabinet, *runner):
        run(*runner, self._cabarc, "-r", "-p", "n", cabinet, "*.*", cwd=tree)

    def _extracting_round(self, state):
        cabinet = self._cabinets / "ours.cab"
        extract = (self._cabarc, "-r", "-p", "X", cabinet)
        self._extracted(f"{state}.cp", lambda out: run("cp", "-r", self._work / "tree", out))
        self._extracted(f"{state}.cabarc", lambda out: run(*extract, f"{out}/"))
        if shutil.which("gcab"):
            self._extracted(f"{state}.gcab", lambda out: run("gcab", "-x", cabinet, cwd=out))
        if shutil.which("cabextract"):
            self._extracted(f"{state}.cabextract", lambda out: run("cabextract", "-q", "-d", out, cabinet))
        self._extracted(f"{state}.cabarc1", lambda out: run(*ONE_CORE, *extract, f"{out}/"))

    # Wine's own archivers extract by the system's cabinet library.
    def _wine_round(self):
        cabinet = dos(self._cabinets / "ours.cab")

        def by_cabarc(program):
            return lambda out: run("wine", program, "-r", "-p", "X", cabinet, dos(out) + "\\")

        self._extracted("wine.own", by_cabarc(r"C:\windows\system32\cabarc.exe"))
        extrac32 = r"C:\windows\system32\extrac32.exe"
        self._extracted("wine.extrac32", lambda out: run("wine", extrac32, "/Y", "/E", "/L", dos(out), cabinet))
        self._extracted("wine.cabarc", by_cabarc(self._windows_cabarc))

    def _extracted(self, name, extract):
        """Times what puts the tree into a new folder. What is there stays until all rounds are over: some disks are slow
        for a while after files have been deleted.
        """
        self._outputs += 1
        out = self._work / "extracted" / str(self._outputs)
        out.mkdir(parents=True)
        if name.startswith("cold."):
            run("sync", "-f", out)
            run("vmtouch", "-q", "-e", self._work / "tree", self._cabinets / "ours.cab")
        with self._samples.timed(name):
            extract(out)

    def _compare(self):
        run("diff", "-r", self._work / "tree", self._work / "extracted" / str(self._outputs))

    def _note_size(self, name, cabinet):
        self._samples.note(name, (self._cabinets / cabinet).stat().st_size)

    def _note_memory(self, name, arguments, folder):
        """The most memory that one run of cabarc takes, in MiB. By a small program: a process is charged with what its
        parent had when it was started.
        """
        result = self._work / "memory.txt"
        run("/usr/bin/time", "-f", "%M", "-o", result, self._cabarc, *arguments, cwd=folder)
        self._samples.note(name, int(result.read_text(encoding="ascii")) / 1024)


def _gcab_create(tree, cabinet):
    command = "find . -type f -printf '%P\\n' | sort | tr '\\n' '\\0' | xargs -0 -x -s 2000000 gcab -cz \"$1\""
    run("sh", "-c", command, "sh", cabinet, cwd=tree)


def dos(path):
    """A path of this system as Wine's programs name it."""
    return "Z:" + str(pathlib.Path(path).absolute()).replace("/", "\\")
