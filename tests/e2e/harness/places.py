"""Where the parts lie, and how long to wait for them."""

import time
from pathlib import Path

ROOT = Path(__file__).resolve().parents[3]
BUILD = ROOT / "build"
PROGRAM_FOLDER = BUILD / "win64" / "Quarn"
DRIVER = BUILD / "win64" / "tests" / "e2e" / "driver" / "uidrive.exe"
STAND_IN = BUILD / "win64" / "tests" / "e2e" / "standin" / "standin.exe"
RECORDER = BUILD / "win64" / "tests" / "e2e" / "recorder" / "recorder.exe"
GAMENET = BUILD / "native" / "tools" / "gamenet" / "gamenet"
IDS = ROOT / "win32" / "resources" / "ids.h"

PATIENCE_SECONDS = 15


def windows_path(path):
    """The name under which programs in Wine know a file."""
    return "Z:" + str(Path(path).resolve()).replace("/", "\\")


def wait_until(condition, what, seconds=PATIENCE_SECONDS):
    """Polls until the condition holds, and returns what it returned; fails with the sentence `what`."""
    end = time.monotonic() + seconds
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > end:
            raise TimeoutError(f"waited in vain until {what}")
        time.sleep(0.01)
