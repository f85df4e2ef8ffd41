"""Every benchmark runs to its end and prints what it is for. How fast it is, is nothing that a test can hold on a
machine that others work on, too."""

import re
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


def test_each_native_benchmark_stands_beside_its_floor():
    lines = output_of("native.py", "--quick").splitlines()
    timed = [line for line in lines if re.match(r"\w+(/\d+)? +[\d.]+ ", line)]
    assert len(timed) > 25
    for line in timed:
        assert re.search(r" [\d.]+$", line), line


def test_the_scan_stands_beside_the_bare_loops():
    printed = output_of("scan.py", "--quick")
    assert len(re.findall(r"the scan takes [\d.]+ times as long", printed)) == 2
    assert "1.00 requests, 1.00 replies" in printed
    assert re.search(r"silent servers: [\d.]+ s, [\d.]+ % of a core", printed)


def test_the_start_stands_beside_that_of_an_empty_window():
    printed = output_of("startup.py", "--quick")
    assert re.search(r"start: [\d.]+ s, an empty window [\d.]+ s, [\d.]+ times as long", printed)
    assert len(re.findall(r"[\d.]+ MB in memory, [\d.]+ s of CPU", printed)) == 2


def test_the_work_on_a_list_is_timed_step_by_step():
    printed = output_of("lists.py", "--quick")
    assert len(re.findall(r"\d+ ms, longest gap +\d+ ms", printed)) == 6
