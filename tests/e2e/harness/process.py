"""What the system counts of a running program."""

import contextlib
import os
import pathlib
import signal

from .places import windows_path


class Process:
    """The program that was started from this file."""

    def __init__(self, executable):
        self._folder = next(_processes_of(windows_path(executable)), None)
        if self._folder is None:
            raise RuntimeError(f"{executable} is not running")

    def cpu_seconds(self):
        """Of all its threads, in user and in system mode."""
        fields = (self._folder / "stat").read_text().rpartition(")")[2].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    def memory_megabytes(self):
        """What it holds in memory now."""
        return self._status_megabytes("VmRSS")

    def most_memory_megabytes(self):
        """The most that it has held in memory so far."""
        return self._status_megabytes("VmHWM")

    def has_loaded(self, library):
        """Whether the library of this file name is in its memory."""
        return f"/{library}\n" in (self._folder / "maps").read_text()

    def kill(self):
        """Ends it at once, in the middle of whatever it does."""
        os.kill(int(self._folder.name), signal.SIGKILL)

    def _status_megabytes(self, field):
        for line in (self._folder / "status").read_text().splitlines():
            if line.startswith(f"{field}:"):
                return int(line.split()[1]) / 1024
        raise RuntimeError("the program has ended")


def _processes_of(name):
    for folder in pathlib.Path("/proc").iterdir():
        with contextlib.suppress(OSError):
            if folder.name.isdigit() and name.encode() in (folder / "cmdline").read_bytes().split(b"\0")[0]:
                yield folder
