"""What a control shows on the display, as bytes to compare."""

import subprocess
import time

from harness.places import wait_until


REST = 0.8
# Of a list, in pixels. Wine's header may keep a line of a column's edge when the window shrinks.
HEADER = 28


def picture(quarn, control):
    """The pixels of a control of the main window, three bytes each, row by row, with its size in front; of a list
    those below its header."""
    left, top, width, height = map(int, quarn.do.text("rectangle", quarn.control(control)).split())
    header = HEADER if control.startswith("lvw") else 0
    part = ["-crop", f"{width}x{height - header}+{left}+{top + header}", "+repage"]
    return subprocess.run(
        ["import", "-silent", "-window", "root", *part, "ppm:-"], stdout=subprocess.PIPE, check=True
    ).stdout


def painted(quarn, control):
    """The picture once the control has not painted for REST seconds: a new layout is painted in parts."""
    shown, since = picture(quarn, control), time.monotonic()

    def is_still():
        nonlocal shown, since
        now = picture(quarn, control)
        if now != shown:
            shown, since = now, time.monotonic()
        return time.monotonic() - since > REST

    wait_until(is_still, "the control has painted")
    return shown


def repainted(quarn, control):
    """The picture after everything was painted again."""
    quarn.do("repaint", quarn.control(control))
    return painted(quarn, control)
