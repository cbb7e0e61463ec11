"""The figures of a measuring run: taking times, and reading them again.

Every figure has a name; a repeated measurement has several of one name, in the order of its rounds.
"""
import collections
import contextlib
import os
import statistics
import subprocess
import time


class Samples:
    def __init__(self, folder):
        """Measurements work below `folder`; what they write reaches its disk before the next one begins."""
        self._values = collections.defaultdict(list)
        self._folder = folder

    def note(self, name, value):
        self._values[name].append(float(value))

    def note_lines(self, text, prefix=""):
        """Takes the lines "NAME NUMBER" of a program's output."""
        for line in text.splitlines():
            words = line.split()
            if len(words) == 2 and words[0] != "#":
                self.note(prefix + words[0], words[1])

    @contextlib.contextmanager
    def timed(self, name):
        """Notes the seconds that the block takes. Earlier steps' data reach the disk first."""
        subprocess.run(["sync", "-f", self._folder], check=True)
        start = time.monotonic()
        yield
        self.note(name, time.monotonic() - start)

    def measured(self, *names):
        """Whether there are figures of all these names: a tool that is not installed leaves none."""
        return all(name in self._values for name in names)

    def median(self, name):
        return statistics.median(self._values[name])

    def most(self, name):
        return max(self._values[name])

    def sum(self, name):
        return sum(self._values.get(name, []))

    def quotients(self, name, base):
        """Of measurements that were taken in the same round, sorted."""
        return sorted(a / b for a, b in zip(self._values[name], self._values[base]))

    def ratio(self, name, base):
        return statistics.median(self.quotients(name, base))


def repeat_within(seconds, rounds, action):
    """Calls `action` `rounds` times, but begins no more rounds after `seconds`."""
    end = time.monotonic() + seconds
    for done in range(rounds):
        if done and time.monotonic() >= end:
            break
        action()


def run(*command, cwd=None, **options):
    """Runs a command without its output; Wine's programs keep a pipe open, so there is none."""
    subprocess.run(
        [os.fspath(part) for part in command],
        cwd=cwd, check=True, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, **options,
    )
