#!/usr/bin/env python3
"""Times a scan of the real program over an emulated network, compared with a minimal program.

usage: bench/run scan [--servers N] [--latency MS,MS...] [--rounds N] [--quick]

The floor is a loop of socket, question, wait and close over the same servers, under Wine as the program is
and natively. In each round all three run one after the other; ratios are of that round, and the median of all
rounds is printed. CPU time is the program's own, of all its threads. At the end a scan of servers that never
answer tells what waiting costs.
"""
import argparse
import contextlib
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "e2e"))

from harness.gamenet import Gamenet  # noqa: E402
from harness.places import wait_until  # noqa: E402
from harness.process import Process  # noqa: E402
from harness.quarn import Quarn, fresh_folder, write_settings  # noqa: E402

BARE_NATIVE = [ROOT / "build" / "native" / "bench" / "floor" / "bare_scan"]
BARE_WINE = ["wine", ROOT / "build" / "win64" / "bench" / "floor" / "bare_scan.exe"]


TIMEOUT = 1  # second that the program waits for a reply


def bare_scan(command, addresses):
    """Wall and CPU seconds of the bare loop."""
    told = subprocess.run(
        command + addresses, check=True, stdout=subprocess.PIPE, stdin=subprocess.DEVNULL, text=True
    )
    wall, cpu, replies = map(int, told.stdout.split())
    if replies != len(addresses):
        raise RuntimeError(f"the bare loop got {replies} replies of {len(addresses)}")
    return wall / 1e6, cpu / 1e6


@contextlib.contextmanager
def game_network(servers, *options):
    """A network of one game."""
    with tempfile.TemporaryDirectory(prefix="quarn-scan-") as folder:
        fixed = ["--games", "q3a", "--servers", servers, "--jitter", 0, "--locked", 0, "--end-mark", "none"]
        with Gamenet(pathlib.Path(folder), *fixed, *options) as network:
            yield network


@contextlib.contextmanager
def listing_program(network, **settings):
    """The program with these settings, and its process, when it has listed the network's servers."""
    with tempfile.TemporaryDirectory(prefix="quarn-scan-") as folder:
        program = fresh_folder(pathlib.Path(folder) / "Quarn", network.games_ini)
        write_settings(program, games=1, **settings)
        with Quarn(program) as quarn:
            quarn.wait_until_usable()
            quarn.renew()
            quarn.wait_for_rows(len(network.servers))
            yield quarn, Process(program / "Quarn.exe")
            quarn.leave()


@contextlib.contextmanager
def listed_network(servers, *options):
    """A network of one game, and the program that lists its servers."""
    with game_network(servers, *options) as network, listing_program(network) as (quarn, process):
        yield network, quarn, process


def scan(quarn, network, process, least):
    """Wall and CPU seconds from the button's press to "Ready.", as seen from outside. Each look costs the
    program time, so it is left alone for the seconds that the scan takes at the least, and until every server is
    asked: before that it may still show the "Ready." of the scan before."""
    asked_all = network.asked() + len(network.servers)
    cpu, pressed = process.cpu_seconds(), time.perf_counter()
    quarn.press_toolbar("refreshall")
    time.sleep(max(0, pressed + least - time.perf_counter()))
    wait_until(lambda: network.asked() >= asked_all, "every server is asked")
    quarn.wait_for_scan()
    return time.perf_counter() - pressed, process.cpu_seconds() - cpu


def measure(servers, latency, rounds):
    with listed_network(servers, "--latency", latency, "--silent", 0) as (network, quarn, process):
        addresses = [server.address for server in network.servers]
        quarn.do("timeout", 60 + servers * latency // 500)
        times = []
        for _ in range(rounds):
            times.append(
                scan(quarn, network, process, servers * latency / 1000)
                + bare_scan(BARE_WINE, addresses)
                + bare_scan(BARE_NATIVE, addresses)
            )
        packets = network.statistics()
    print_figures(servers, latency, times, packets)


def print_figures(servers, latency, times, packets):
    median = statistics.median
    passes = 3 * len(times) * servers
    cpu, bare_cpu, native_cpu = (1000 * median(t[i] for t in times) / servers for i in (1, 3, 5))
    requests, replies = (packets[f"server_{name}"] / passes for name in ("requests", "replies"))
    print(
        f"{servers} servers at {latency} ms:",
        f"  scan           {median(t[0] for t in times):8.3f} s, {cpu:6.2f} ms of CPU a server, "
        f"{100 * median(t[1] / t[0] for t in times):5.1f} % of a core",
        f"  bare loop      {median(t[2] for t in times):8.3f} s, {bare_cpu:6.2f} ms; "
        f"the scan takes {median(t[0] / t[2] for t in times):.3f} times as long, "
        f"{1000 * median(t[0] - t[2] for t in times) / servers:.2f} ms more a server",
        f"  bare, natively {median(t[4] for t in times):8.3f} s, {native_cpu:6.2f} ms; "
        f"the scan takes {median(t[0] / t[4] for t in times):.3f} times as long",
        f"  a server and pass: {requests:.2f} requests, {replies:.2f} replies",
        sep="\n",
        flush=True,
    )


def measure_waiting(servers):
    with listed_network(servers, "--silent", 100) as (network, quarn, process):
        wall, cpu = scan(quarn, network, process, servers * TIMEOUT)
    print(
        f"waiting for {servers} silent servers: {wall:.2f} s, {100 * cpu / wall:.2f} % of a core", flush=True
    )


def main():
    arguments = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    arguments.add_argument("--servers", type=int, default=300)
    arguments.add_argument("--latency", default="0,5,20,50")
    arguments.add_argument("--rounds", type=int, default=3)
    arguments.add_argument("--quick", action="store_true", help="one small round, to see that it works")
    given = arguments.parse_args()
    if given.quick:
        given.servers, given.latency, given.rounds = 40, "5", 1
    for latency in given.latency.split(","):
        measure(given.servers, int(latency), given.rounds)
    measure_waiting(2 if given.quick else 10)


if __name__ == "__main__":
    main()
