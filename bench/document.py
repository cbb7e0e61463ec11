"""The performance page and its pictures, made of the figures that there are."""
import datetime
import os
import platform
import subprocess

import pictures

GROWTH = (  # loop, what the table says, what the picture says, items at 1 percent
    ("list", "items of a job list", "items of a job list", 100),
    ("images", "rows of recent images", "rows of recent images", 1000),
    ("messages", "texts of the message catalogue", "texts of the catalogue", 50),
    ("clients", "client-log folders, without the disk", "client-log folders, without the disk", 80),
    ("sorting", "of that, sorting their names", "of that, sorting", 80),
    ("files.clients", "client-log folders, under Wine", "client-log folders, under Wine", 80),
    ("files.staging", "files in the staging folder, under Wine", "files in staging, under Wine", 200),
)

ARCHIVER_BARS = (  # measured, base, label, colour
    ("create.gcab", "create.gcab", "creating: gcab", pictures.OTHERS),
    ("create.gzip", "create.gcab", "creating: tar, gzip -6", pictures.OTHERS),
    ("create.cabarc1", "create.gcab", "creating: cabarc, one core", pictures.OURS),
    ("create.cabarc", "create.gcab", "creating: cabarc", pictures.OURS),
    ("cold.cp", "cold.cp", "extracting, not in the cache: cp -r", pictures.OTHERS),
    ("cold.gcab", "cold.cp", "extracting, not in the cache: gcab", pictures.OTHERS),
    ("cold.cabextract", "cold.cp", "extracting, not in the cache: cabextract", pictures.OTHERS),
    ("cold.cabarc", "cold.cp", "extracting, not in the cache: cabarc", pictures.OURS),
    ("warm.cabarc", "warm.cp", "extracting, in the cache: cabarc", pictures.OURS),
)

PHASES = (
    ("program", "program"), ("gather", "gather (xcopy)"), ("pack", "pack (cabarc)"), ("delete", "delete"),
    ("copy", "copy (xcopy)"),
)


def write(folder, samples, spans, facts):
    """Writes performance.md and images/ below `folder`. `facts` says what was measured: percent, files, bytes, images,
    work (the folder on the disk) and workstation_on.
    """
    images = folder / "images"
    images.mkdir(parents=True, exist_ok=True)
    rows = [(label, samples.ratio(name, base), colour) for name, base, label, colour in ARCHIVER_BARS
            if samples.measured(name, base)]
    pictures.bars(images / "performance-archiver.svg",
                  "Time beside gcab (creating) and cp -r (extracting); shorter is faster", rows, 1)
    rows = [(label, _growth(samples, loop), pictures.OURS) for loop, _, label, _ in GROWTH if _grown(samples, loop)]
    pictures.bars(images / "performance-growth.svg", "Time per item, at all items against at a tenth of them", rows, 1.2)
    pictures.timeline(images / "performance-backup.svg", "One backup: what runs when", PHASES, spans)
    page = _Page(samples, facts)
    (folder / "performance.md").write_text(page.text(), encoding="utf-8")


def _grown(samples, loop):
    return samples.measured(f"growth.{loop}.tenth", f"growth.{loop}.all")


def _growth(samples, loop):
    return samples.median(f"growth.{loop}.all") / samples.median(f"growth.{loop}.tenth")


def _machine(folder):
    with open("/proc/meminfo", encoding="ascii") as file:
        memory = int(next(line for line in file if line.startswith("MemTotal")).split()[1]) / 2**20
    system = platform.freedesktop_os_release()["PRETTY_NAME"]
    disk = subprocess.run(["df", "--output=fstype", folder], check=True, capture_output=True, text=True).stdout.split()[1]
    wine = subprocess.run(["wine", "--version"], check=True, capture_output=True, text=True).stdout
    return (f"{os.cpu_count()} cores ({platform.machine()}), {memory:.0f} GB of memory, {system}, "
            f"Linux {platform.release().split('-')[0]}, {disk}, Wine {wine.split()[0].removeprefix('wine-')}")


class _Page:
    def __init__(self, samples, facts):
        self._samples = samples
        self._facts = facts

    def text(self):
        parts = [self._opening(), self._archiver(), self._memory(), self._walking(), self._checking(), self._program(), self._answers(), self._growth()]
        return "\n".join(parts)

    def _row(self, *cells):
        return "| " + " | ".join(cells) + " |"

    def _compared(self, what, name, base, label, goal=None):
        """A table's line: medians of two measurements in seconds and their ratio; none where one was not taken."""
        samples = self._samples
        if not samples.measured(name, base):
            return []
        return [self._with_ratio(what, f"{samples.median(name):.2f} s", f"{label} {samples.median(base):.2f} s",
                                 samples.ratio(name, base), goal)]

    def _with_ratio(self, what, value, base, ratio, goal):
        verdict = "-" if goal is None else f"at most {goal}: {'yes' if round(ratio, 3) <= goal else 'no'}"
        return self._row(what, value, base, f"{ratio:.3f}", verdict)

    def _limited(self, what, name, unit, goal):
        """One figure with a limit of its own; the largest that was measured."""
        if not self._samples.measured(name):
            return []
        value = self._samples.most(name)
        return [self._row(what, f"{value:.0f} {unit}", f"at most {goal} {unit}: {'yes' if value <= goal else 'no'}")]

    def _opening(self):
        facts = self._facts
        return f"""# Performance

How fast the program and the archiver of the reference host are, beside other tools on the same machine in the same
run. This page and its pictures are written by

    bench/run.sh

which installs and builds what it needs and makes its files itself. Times are medians; ratios are medians over rounds
in which the tools took turns. Machines differ: compare ratios, not seconds.

Measured on {datetime.date.today()}: {_machine(facts.work)}.

Packed, copied and extracted are {facts.files} files, {facts.bytes / 1e6:.0f} MB: a workstation's images,
databases, logs, small files, and data that cannot be packed any more.

## The archiver

![Times of the archiver and its peers](images/performance-archiver.svg)
"""

    def _archiver(self):
        samples = self._samples
        lines = ["| what | cabarc | beside | ratio | goal |", "|---|---|---|---|---|"]
        lines += self._compared("creating, all cores", "create.cabarc", "create.gcab", "gcab", 0.25)
        lines += self._compared("creating, one core", "create.cabarc1", "create.gcab", "gcab", 0.45)
        lines += self._compared("creating, all cores", "create.cabarc", "create.gzip", "`tar`, `gzip -6`")
        if samples.measured("size.gcab"):
            lines.append(self._with_ratio(
                "size of the cabinet", f"{samples.median('size.cabarc') / 1e6:.1f} MB",
                f"gcab {samples.median('size.gcab') / 1e6:.1f} MB", samples.ratio("size.cabarc", "size.gcab"), 1))
        small = f"creating, {200 * self._facts.percent} small files"
        lines += self._compared(small, "small.cabarc", "small.gcab", "gcab", 1)
        for state, words in (("cold", "set and tree not in the cache"), ("warm", "both in the cache")):
            what, ours = f"extracting, {words}", f"{state}.cabarc"
            lines += self._compared(what, ours, f"{state}.cp", "`cp -r` of the tree", 1.2)
            lines += self._compared(f"{what}, one core", f"{ours}1", f"{state}.cp", "`cp -r` of the tree")
            lines += self._compared(what, ours, f"{state}.gcab", "`gcab -x`", 1)
            lines += self._compared(what, ours, f"{state}.cabextract", "cabextract", 1)
        lines += self._compared("extracting under Wine", "wine.cabarc", "wine.own", "Wine's own `cabarc`", 1)
        lines += self._compared("extracting under Wine", "wine.cabarc", "wine.extrac32", "Wine's `extrac32`", 1)
        return "\n".join(lines) + """

A cabinet made on one core and one made on all hold the same bytes; the run stops when they do not, and when an
extracted tree is not the one that was packed.

A set is restored from a disk that has not been read before, which is the first of the two states. In the second one
`cp -r` only moves bytes within memory; on two cores inflating them alone can take longer than that.
"""

    def _memory(self):
        megabytes = 19 * self._facts.percent
        lines = ["| memory | | goal |", "|---|---|---|"]
        lines += self._limited(f"creating a cabinet of one file of {megabytes} MB", "large.create", "MiB", 64)
        lines += self._limited("extracting it", "large.extract", "MiB", 64)
        return "\n".join(lines) + "\n"

    def _walking(self):
        samples = self._samples
        speed, goal = samples.ratio("walk.read", "walk"), 0.8
        row = self._row(f"walking a cabinet of {samples.median('walk.size') / 1e6:.0f} MB by its checksums",
                        f"{samples.median('walk'):.2f} s", f"reading it {samples.median('walk.read'):.2f} s",
                        f"{speed:.3f}", f"at least {goal}: {'yes' if round(speed, 3) >= goal else 'no'}")
        return f"""A restore walks all its archives before it replaces anything, and a backup each that was made. Both are in the cache
here, so that no disk hides what the checksums take:

| what | | beside | speed | goal |
|---|---|---|---|---|
{row}
"""

    def _checking(self):
        lines = ["| what | QXSetCheck | beside | ratio | goal |", "|---|---|---|---|---|"]
        lines += self._compared("checking a set in the cache", "check.warm", "check.cabextract", "`cabextract -t`", 0.5)
        lines += self._compared("checking one that is not", "check.cold", "check.read", "reading it with `cat`")
        memory = ["| memory | | goal |", "|---|---|---|"] + self._limited("checking it", "check.memory", "MiB", 64)
        table = "\n".join(lines + [""] + memory)
        return f"""The checker of sets unpacks every archive in memory, on all cores:

{table}
"""

    def _program(self):
        images = self._facts.images
        lines = ["| what | program | beside | ratio | goal |", "|---|---|---|---|---|"]
        jobs = (("backup with its comparison", "backup"), ("restore", "restore"))
        for what, job in jobs:
            lines += self._compared(f"{what}, images of 8 MB", f"large.{job}", f"large.{job}.batch", "batch file", 1.05)
        for what, job in jobs:
            lines += self._compared(f"{what}, {images} small images", job, f"{job}.batch", "batch file", 1.05)
        lines += self._compared("cutting the archive into floppies", "pieces.program", "pieces.split",
                                "`split -b 1400000`", 1)
        more = 1e6 * (self._samples.median("restore") - self._samples.median("restore.batch")) / images
        table = "\n".join(lines)
        return f"""## The program around it

A backup and a restore of the workstation's images through the program's windows, against a batch file with the
same external commands in the same order. After a backup the program reads the set back and compares it with what was
gathered; so does the batch file, by a small program in place of `fc /b`, which under Wine compares nothing. The two run one directly after the other, take turns in going first, and each
begins after three seconds of rest. The batch file deletes nothing, while the program also empties its staging folder.
The same bytes are measured as images of 8 MB, which is what a radiograph has, and as thousands of small ones.
The workstation, a Wine prefix, lies {self._facts.workstation_on}, and all of Wine runs on one processor.

{table}

In single rounds the ratio lay between {self._range('large.backup')} for the backup and between
{self._range('large.restore')} for the restore of large images; of small ones, between
{self._range('backup')} and between {self._range('restore')}.

What the program does beyond the commands it does for each file: it holds each copy against its source, counts what goes
into an archive and what comes out of it, and deletes what was gathered or unpacked, before it tells the result. So the restore of small images took
{more:.0f} us a file longer than the batch file.

| the program itself, over backups and restores | |
|---|---|
| processor | {self._samples.median('processor'):.1f} % of a core |
| memory | {self._samples.most('memory'):.0f} MiB at most |
"""

    def _range(self, job):
        quotients = self._samples.quotients(job, f"{job}.batch")
        return f"{quotients[0]:.3f} and {quotients[-1]:.3f}"

    def _answers(self):
        lines = ["| longest time without an answer | | goal |", "|---|---|---|"]
        lines += self._limited("during a backup", "answer.backup", "ms", 50)
        lines += self._limited("during a restore", "answer.restore", "ms", 50)
        lines.append(self._row("an idle window meanwhile", f"{self._samples.most('answer.idle'):.0f} ms", "-"))
        whole = sum(self._samples.sum(f"profile.{phase}") for phase, _ in PHASES)
        shares = self._row(*(
            f"{100 * self._samples.sum('profile.' + phase) / whole:.0f} %"
            for phase in ("gather", "pack", "delete", "copy", "program")
        ))
        table = "\n".join(lines)
        return f"""While it works, another process keeps sending a message to its window and waits for the answer. A window of that
process that does nothing else shows what the machine itself adds at the same time.

{table}

Where the time of one backup goes, as seen from outside, by which program runs and what is in the staging folder:

![One backup in time](images/performance-backup.svg)

| gather (`xcopy`) | pack (`cabarc`) | delete | copy (`xcopy`) | program |
|---|---|---|---|---|
{shares}
"""

    def _growth(self):
        percent, samples = self._facts.percent, self._samples
        lines = ["| loop | items | at a tenth | at all | ratio |", "|---|---|---|---|---|"]
        for loop, what, _, items in GROWTH:
            if _grown(samples, loop):
                tenth, all_items = samples.median(f"growth.{loop}.tenth"), samples.median(f"growth.{loop}.all")
                lines.append(self._row(what, str(items * percent), f"{tenth:.3g}", f"{all_items:.3g}",
                                       f"{_growth(samples, loop):.2f}"))
        few, many = 4 * percent, 40 * percent
        table = "\n".join(lines)
        return f"""## Growth

Microseconds an item, at a tenth of the items and at all of them. Near 1, an item of a large site costs what one of a
small site does.

![Time per item, at all against at a tenth](images/performance-growth.svg)

{table}

The names of client-log folders are put in order by a Shell sort, as the rules have it, which compares each name more
often the more names there are. A file costs the external `xcopy` under Wine {self._xcopy('few', few)} us in a folder of
{few}, {self._xcopy('many', many)} us in a folder of {many}, and {self._xcopy('spread', many)} us where as many are spread
over ten folders.
"""

    def _xcopy(self, name, files):
        """Microseconds a file, without the program's start."""
        seconds = self._samples.median(f"xcopy.{name}") - self._samples.median("xcopy.start")
        return f"{1e6 * seconds / files:.0f}"
