"""QXSetCheck beside the archiver that checks cabinets, and beside reading the files."""
import shutil

from samples import repeat_within, run

DESCRIPTOR = """[Info]\r
AppVersion=3.00\r
Date=11/21/2026 12:17:12 PM\r
AppType=Tarsus\r
CABFile=PatientData.cab;\r
\r
[VersionInfo]\r
PatientData=V2.1\r
\r
"""


class SetCheck:
    def __init__(self, samples, work, release, rounds):
        """`release` holds the programs; the set is made of the cabinet that the archiver has packed in `work`."""
        self._samples = samples
        self._checker = release / "QXSetCheck"
        self._set = work / "checked"
        self._archive = self._set / "PatientData.cab"
        self._output = work / "memory.txt"
        self._rounds = rounds
        self._set.mkdir()
        shutil.copy(work / "cabinets/ours.cab", self._archive)
        (self._set / "BackupInfo.ini").write_text(DESCRIPTOR, encoding="ascii", newline="")

    def checking(self):
        repeat_within(60, 2 * self._rounds + 1, self._round)
        run("/usr/bin/time", "-f", "%M", "-o", self._output, self._checker, self._set)
        self._samples.note("check.memory", int(self._output.read_text(encoding="ascii")) / 1024)
        shutil.rmtree(self._set)

    # In the cache first; then from the disk, as a set on a shelf is.
    def _round(self):
        run("cat", self._archive)
        if shutil.which("cabextract"):
            with self._samples.timed("check.cabextract"):
                run("cabextract", "-q", "-t", self._archive)
        with self._samples.timed("check.warm"):
            run(self._checker, self._set)
        for name, command in (("check.read", ("cat", self._archive)), ("check.cold", (self._checker, self._set))):
            run("vmtouch", "-q", "-e", self._archive)
            with self._samples.timed(name):
                run(*command)
