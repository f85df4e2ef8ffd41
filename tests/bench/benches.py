"""Runs a benchmark."""

import subprocess
import sys
from pathlib import Path

BENCH = Path(__file__).resolve().parents[2] / "bench"


def output_of(program, *arguments):
    ended = subprocess.run(
        [sys.executable, "-B", BENCH / program, *arguments], stdout=subprocess.PIPE, text=True, timeout=300
    )
    assert ended.returncode == 0, ended.stdout
    return ended.stdout
