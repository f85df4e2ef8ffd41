#!/usr/bin/env python3
"""Compares a scan by the real program with one by Debian's qstat, on emulated networks.

usage: bench/run versus [--fleets N,N...] [--at-once N,N...] [--rounds N] [--quick]

In each round both programs ask the same servers, one program after the other, with the same number of servers
asked at once; the ratio is of that round. Printed are medians of all rounds. A row is falsely dead when its
server is honest and the program shows no answer. The error of a ping is its distance from the delay with which
the network answers. CPU time is the program's own, of all its threads. The longest gap is the longest that a
message to Quarn's window waited, in a scan of its own. qstat keeps its own settings for everything else.
"""
import argparse
import os
import statistics
import subprocess
import tempfile
import time
from dataclasses import dataclass

from scan import TIMEOUT, game_network, listing_program, scan

QSTAT = "quakestat"


@dataclass(frozen=True)
class Fleet:
    servers: int
    latency: str
    silent: int = 0  # percent
    lost: int = 0  # percent of the requests

    def __str__(self):
        text = f"{self.servers} servers at {self.latency} ms"
        if self.silent:
            text += f", {self.silent} % silent"
        if self.lost:
            text += f", {self.lost} % of the requests lost"
        return text

    def options(self):
        return ["--latency", self.latency, "--silent", self.silent, "--loss", self.lost]


FLEETS = (
    Fleet(300, "40"),
    Fleet(300, "120"),
    Fleet(300, "40", silent=20),
    Fleet(2000, "20-200", silent=30, lost=1),
)
QUICK_FLEET = Fleet(40, "20", silent=10)
# One after the other the last fleet takes ten minutes, and qstat longer still.
MOST_SILENT_ONE_BY_ONE = 100


@dataclass(frozen=True)
class Result:
    seconds: float
    cpu: float
    dead: int  # honest servers shown without an answer
    errors: list  # of the pings, in milliseconds


def judge(network, pings):
    """The number of honest servers without a ping, and the errors of the others' pings. `pings` are by address;
    one that is None or missing is no answer."""
    honest = [server for server in network.servers if server.kind == "honest"]
    answered = [server for server in honest if pings.get(server.address) is not None]
    errors = [abs(pings[server.address] - server.latency) for server in answered]
    return len(honest) - len(answered), errors


def least_seconds(network, at_once):
    waits = [server.latency / 1000 if server.kind == "honest" else TIMEOUT for server in network.servers]
    return sum(waits) / at_once


def scan_with_quarn(network, quarn, process, at_once):
    quarn.do("timeout", 60 + 2 * len(network.servers))
    seconds, cpu = scan(quarn, network, process, least_seconds(network, at_once))
    time.sleep(TIMEOUT)  # until no reply can come any more
    pings = {
        row.address: int(row.ping) for row in quarn.rows() if row.name and row.ping != str(1000 * TIMEOUT)
    }
    return Result(seconds, cpu, *judge(network, pings))


def longest_gap(quarn, network, at_once):
    """The milliseconds that the window's slowest answer takes during a scan."""
    quarn.start_scan(network, min(at_once + 1, len(network.servers)))
    return list(quarn.measure_scan())[1]


def scan_with_qstat(network, at_once):
    with tempfile.NamedTemporaryFile("w") as hosts, tempfile.TemporaryFile(
        "w+", encoding="latin-1"
    ) as output:
        hosts.write("".join(f"{server.address}\n" for server in network.servers))
        hosts.flush()
        command = [
            QSTAT,
            "-nocfg",
            "-default",
            "q3s",
            "-P",
            "-R",
            "-raw",
            "\t",
            "-maxsim",
            str(at_once),
            "-f",
            hosts.name,
        ]
        start = time.perf_counter()
        started = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=output, text=True)
        _, status, usage = os.wait4(started.pid, 0)
        seconds = time.perf_counter() - start
        started.returncode = os.waitstatus_to_exitcode(status)
        if started.returncode != 0:
            raise RuntimeError(f"{QSTAT} ended with {started.returncode}")
        output.seek(0)
        pings = pings_of_qstat(output.read())
    return Result(seconds, usage.ru_utime + usage.ru_stime, *judge(network, pings))


def pings_of_qstat(text):
    """From the lines "Q3S, address, name, map, most players, players, ping, ..." of servers that answered."""
    fields = [line.split("\t") for line in text.splitlines() if line.startswith("Q3S\t")]
    return {line[1]: int(line[6]) for line in fields if len(line) > 6}


def print_result(name, results, note):
    median = statistics.median
    errors = sorted(error for result in results for error in result.errors) or [0]
    print(
        f"  {name:18} {median(r.seconds for r in results):8.2f} s, "
        f"{max(r.dead for r in results):4} falsely dead, "
        f"pings off by {median(errors):4.1f} ms, 95 % by {errors[len(errors) * 95 // 100]:4} ms at most, "
        f"{median(r.cpu for r in results):6.2f} s of CPU, {note}",
        flush=True,
    )


def compare(network, at_once, rounds, with_qstat):
    with listing_program(network, Extras__Simultaneous=at_once) as (quarn, process):
        results = []
        for _ in range(rounds):
            ours = scan_with_quarn(network, quarn, process, at_once)
            results.append((ours, scan_with_qstat(network, at_once) if with_qstat else None))
        gap = longest_gap(quarn, network, at_once)
    print_result(f"Quarn, {at_once} at once", [ours for ours, _ in results], f"longest gap {gap} ms")
    if with_qstat:
        ratio = statistics.median(ours.seconds / theirs.seconds for ours, theirs in results)
        print_result(
            f"qstat, {at_once} at once",
            [theirs for _, theirs in results],
            f"Quarn takes {ratio:.2f} times as long",
        )


def measure(fleet, numbers, rounds):
    with game_network(fleet.servers, *fleet.options()) as network:
        honest = sum(server.kind == "honest" for server in network.servers)
        print(f"{fleet}: {honest} honest, load {os.getloadavg()[0]:.1f}", flush=True)
        few_silent = len(network.servers) - honest <= MOST_SILENT_ONE_BY_ONE
        for at_once in numbers:
            one_by_one = at_once == 1 and not few_silent
            compare(network, at_once, 1 if at_once == 1 else rounds, with_qstat=not one_by_one)


def numbers(text):
    return [int(word) for word in text.split(",")]


def main():
    arguments = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    arguments.add_argument("--fleets", type=numbers, default=[1, 2, 3, 4], help="their numbers, from 1 to 4")
    arguments.add_argument("--at-once", type=numbers, default=[1, 8, 32, 64])
    arguments.add_argument("--rounds", type=int, default=3, help="one where servers are asked one by one")
    arguments.add_argument("--quick", action="store_true", help="one small round, to see that it works")
    given = arguments.parse_args()
    if given.quick:
        return measure(QUICK_FLEET, [1, 8], 1)
    for number in given.fleets:
        measure(FLEETS[number - 1], given.at_once, given.rounds)


if __name__ == "__main__":
    main()
