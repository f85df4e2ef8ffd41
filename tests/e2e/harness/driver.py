"""Talks to uidrive.exe: one process for a whole test, one line a command."""

import re
import select
import subprocess
import time

from .places import DRIVER, wait_until, windows_path

# Beyond the driver's own waits; only a driver that hangs takes this long.
REPLY_SECONDS = 60


class DriverError(Exception):
    """The driver could not do what it was asked to; the text says why."""


def unescape(text):
    """The text behind the driver's escapes; each character stands for one byte."""
    named = {"r": "\r", "n": "\n", "t": "\t", "\\": "\\"}

    def character(match):
        code = match.group(1)
        return named[code] if code in named else chr(int(code[1:], 16))

    return re.sub(r"\\(x[0-9a-fA-F]{2}|[rnt\\])", character, text)


def escape(text):
    """The text as the driver writes it."""
    named = {"\r": "\\r", "\n": "\\n", "\t": "\\t", "\\": "\\\\"}
    return "".join(named.get(c) or (c if " " <= c <= "~" else f"\\x{ord(c):02x}") for c in str(text))


def active_window():
    """The number of the X window that the window manager has in front."""
    shown = subprocess.run(
        ["xprop", "-root", "_NET_ACTIVE_WINDOW"], stdout=subprocess.PIPE, text=True, check=True
    ).stdout
    return int(shown.rpartition("# ")[2].split(",")[0], 16)


def quoted(word):
    text = str(word).replace("\\", "\\\\").replace('"', '\\"')
    return f'"{text}"'.encode("latin-1")


class Driver:
    """A driver and the program it works on. Leaving the `with` block ends both. `set_up` runs in the driver's
    process first, and what it sets holds for the program as well."""

    def __init__(self, set_up=None):
        self._process = subprocess.Popen(
            ["wine", str(DRIVER), "script"],
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            stderr=subprocess.DEVNULL,
            bufsize=0,
            preexec_fn=set_up,
            restore_signals=set_up is None,
        )
        self._program = None
        self.sent_at = 0.0  # when the last command was sent, in seconds of time.monotonic
        self._received = b""
        self._reply_seconds = REPLY_SECONDS

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._process.stdin.close()
        try:
            self._process.wait(REPLY_SECONDS)
        finally:
            self._process.kill()
            self._process.stdout.close()
            if self._program:
                self._program.kill()
                self._program.wait()

    def __call__(self, *words):
        """Runs a command and returns the lines of its output, still escaped."""
        if words[0] == "timeout":
            self._reply_seconds = REPLY_SECONDS + int(words[1])
        if words[0] in ("keyboard", "hold-key", "type", "move"):
            self._wait_for_the_window_manager()
        self.sent_at = time.monotonic()
        self._process.stdin.write(b" ".join(map(quoted, words)) + b"\n")
        lines = []
        while True:
            line = self._next_line(words)
            if line == "ok":
                return lines
            if line.startswith("failed: "):
                raise DriverError(unescape(line.removeprefix("failed: ")))
            lines.append(line[1:])

    def _wait_for_the_window_manager(self):
        """The window manager places a new window and gives it the keyboard later than Windows knows. Behind a
        dialog that closes, it also takes the keyboard away for a moment before: an open menu then closes."""
        window = int(self.text("x-window"))
        wait_until(lambda: active_window() == window, "the window manager has given the window the keyboard")

    def text(self, *words):
        """The one line that a command prints, as it reads on the screen."""
        return unescape("\n".join(self(*words)))

    def table(self, *words):
        """The lines that a command prints, each split into its cells."""
        return [[unescape(cell) for cell in line.split("\t")] for line in self(*words)]

    def wait(self, pattern, *words):
        """Repeats a command until its output matches the pattern, in which * stands for any text."""
        return self("wait", escape(pattern), *words)

    def start(self, path, arguments=""):
        """Starts a program; the arguments go to it as they stand."""
        if str(path).isascii():
            self("start", windows_path(path), arguments)
            return
        # The driver cannot name a program outside its code page.
        self._program = subprocess.Popen(
            ["wine", path.name], cwd=path.parent, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL
        )
        self.wait("*", "attach", path.name)

    def exit_code(self):
        return int(self.text("exit-code"))

    def _next_line(self, words):
        while b"\n" not in self._received:
            ready, _, _ = select.select([self._process.stdout], [], [], self._reply_seconds)
            piece = self._process.stdout.read(65536) if ready else b""
            if not piece:
                end = (
                    "hangs" if self._process.poll() is None else f"has ended with {self._process.returncode}"
                )
                raise DriverError(f"no answer to {words}: the driver {end}")
            self._received += piece
        line, _, self._received = self._received.partition(b"\n")
        return line.decode("ascii")
