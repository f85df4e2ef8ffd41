#!/usr/bin/env python3
"""Times a scan of the real program over an emulated network, beside the sum of the servers' latencies.

usage: bench/scan [--servers N] [--latency MS] [--rounds N]

Wall time runs from the button's press to "Ready.", both read from outside, so that it holds the
driver's own way as well. CPU time is the program's, of all its threads, as the system counts it.
"""
import argparse
import contextlib
import os
import pathlib
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "e2e"))

from harness.gamenet import Gamenet  # noqa: E402
from harness.quarn import Quarn, fresh_folder, write_settings  # noqa: E402


def process_of(folder):
    """The program that runs in this folder."""
    for process in pathlib.Path("/proc").iterdir():
        with contextlib.suppress(OSError):
            arguments = (process / "cmdline").read_bytes().decode("latin-1") if process.name.isdigit() else ""
            if arguments.rstrip("\0").endswith("Quarn.exe") and folder.name in arguments:
                return process
    raise RuntimeError("the program is not running")


def cpu_seconds(process):
    fields = (process / "stat").read_text().rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def measure(servers, latency, rounds):
    with contextlib.ExitStack() as stack:
        folder = pathlib.Path(stack.enter_context(tempfile.TemporaryDirectory(prefix="quarn-scan-")))
        network = stack.enter_context(
            Gamenet(folder, "--games", "q3a", "--servers", servers, "--latency", latency, "--jitter", 0, "--silent", 0,
                    "--locked", 0))
        program = fresh_folder(folder / "Quarn", network.games_ini)
        write_settings(program, games=1)
        quarn = stack.enter_context(Quarn(program))
        quarn.wait_until_usable()
        process = process_of(folder)
        quarn.renew()
        quarn.wait_for_rows(servers)
        floor = servers * latency / 1000
        for _ in range(rounds):
            cpu, start = cpu_seconds(process), time.perf_counter()
            quarn.press_toolbar("refreshall")
            quarn.wait_for_status("Retrieving*")
            quarn.wait_for_scan()
            wall, cpu = time.perf_counter() - start, cpu_seconds(process) - cpu
            ratio = f"{wall / floor:.3f}" if floor else "-"
            print(f"{servers} servers at {latency} ms: {wall:.3f} s, {ratio} times the sum of the latencies, "
                  f"{1000 * cpu / servers:.2f} ms of CPU a server, {100 * cpu / wall:.1f} % of a core", flush=True)
        quarn.leave()


def main():
    arguments = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    arguments.add_argument("--servers", type=int, default=60)
    arguments.add_argument("--latency", type=int, default=20)
    arguments.add_argument("--rounds", type=int, default=3)
    given = arguments.parse_args()
    measure(given.servers, given.latency, given.rounds)


if __name__ == "__main__":
    main()
