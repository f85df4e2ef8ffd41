"""What a control shows on the display, as bytes to compare."""

import subprocess

from harness.places import wait_until


def picture(quarn, control):
    """The pixels of a control of the main window, three bytes each, row by row, with its size in front."""
    left, top, width, height = map(int, quarn.do.text("rectangle", quarn.control(control)).split())
    part = ["-crop", f"{width}x{height}+{left}+{top}", "+repage"]
    return subprocess.run(
        ["import", "-silent", "-window", "root", *part, "ppm:-"], stdout=subprocess.PIPE, check=True
    ).stdout


def painted(quarn, control):
    """The picture once the control has stopped to paint."""
    pictures = [b""]

    def is_still():
        pictures.append(picture(quarn, control))
        return pictures[-1] == pictures[-2]

    wait_until(is_still, "the control has painted")
    return pictures[-1]


def repainted(quarn, control):
    """The picture after everything was painted again."""
    quarn.do("repaint", quarn.control(control))
    return painted(quarn, control)
