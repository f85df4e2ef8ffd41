#!/usr/bin/env python3
"""Times the start of the real program compared with an empty window, and its cost at rest.

usage: bench/run startup [--rounds N] [--idle SECONDS] [--quick]

A start lasts from the request for the process until its window shows, both read from outside. The
two programs start in turn; the ratio of the medians is printed. Then the CPU time of the resting program, and
its pages in memory: after the start, and with 10,000 servers listed.
"""
import argparse
import pathlib
import statistics
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "e2e"))

from harness.driver import Driver  # noqa: E402
from harness.lists import make_servers, put_lists  # noqa: E402
from harness.places import BUILD  # noqa: E402
from harness.process import Process  # noqa: E402
from harness.quarn import Quarn, fresh_folder, write_settings  # noqa: E402

EMPTY_WINDOW = BUILD / "win64" / "bench" / "floor" / "empty_window.exe"


def time_start(path):
    with Driver() as driver:
        start = time.perf_counter()
        driver.start(path)
        driver.wait("normal", "state")
        passed = time.perf_counter() - start
        driver("close")
        driver.exit_code()
    return passed


def folder_with_list(path, servers):
    program = fresh_folder(path)
    put_lists(program, make_servers(servers))
    write_settings(program, games=1)
    return program


def measure_starts(folder, rounds):
    program = folder_with_list(folder / "start", 0)
    times = [(time_start(program / "Quarn.exe"), time_start(EMPTY_WINDOW)) for _ in range(rounds)]
    quarn, empty = (statistics.median(column) for column in zip(*times))
    print(
        f"start: {quarn:.3f} s, an empty window {empty:.3f} s, {quarn / empty:.2f} times as long", flush=True
    )


def measure_rest(folder, seconds):
    for servers in (0, 10000):
        program = folder_with_list(folder / f"rest-{servers}", servers)
        with Quarn(program) as quarn:
            quarn.wait_until_usable()
            quarn.wait_for_rows(servers)
            process = Process(program / "Quarn.exe")
            cpu = process.cpu_seconds()
            time.sleep(seconds)
            cpu = process.cpu_seconds() - cpu
            print(
                f"{servers} servers: {process.memory_megabytes():.1f} MB in memory, "
                f"{cpu:.2f} s of CPU in {seconds} s at rest",
                flush=True,
            )
            quarn.leave()


def main():
    arguments = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    arguments.add_argument("--rounds", type=int, default=7)
    arguments.add_argument("--idle", type=int, default=60)
    arguments.add_argument("--quick", action="store_true", help="one short round, to see that it works")
    given = arguments.parse_args()
    if given.quick:
        given.rounds, given.idle = 1, 1
    with tempfile.TemporaryDirectory(prefix="quarn-startup-") as temporary:
        measure_starts(pathlib.Path(temporary), given.rounds)
        measure_rest(pathlib.Path(temporary), given.idle)


if __name__ == "__main__":
    main()
