#!/usr/bin/env python3
"""Runs the native benchmarks and prints each with its floor.

usage: bench/run native [--quick] [--filter REGEX]

A benchmark "X/n" is divided by "X_floor/n", which ran in the same process. Times are medians of CPU time.
"""
import argparse
import json
import pathlib
import subprocess

ROOT = pathlib.Path(__file__).resolve().parent.parent
PROGRAM = ROOT / "build" / "native" / "bench" / "quarn_bench"

EVERYTHING = ".*"
LARGE = "/100000$"


def measure(quick, pattern):
    if quick and pattern == EVERYTHING:
        pattern = f"-{LARGE}"
    command = [PROGRAM, "--benchmark_format=json", f"--benchmark_filter={pattern}"]
    if quick:
        command.append("--benchmark_min_time=0.01")
    else:
        command += ["--benchmark_repetitions=5", "--benchmark_report_aggregates_only=true"]
    report = json.loads(subprocess.run(command, check=True, stdout=subprocess.PIPE).stdout)
    times, growth = {}, {}
    for row in report["benchmarks"]:
        name = row["run_name"]
        if row.get("aggregate_name") == "BigO":
            growth[name] = row["big_o"]
        elif row.get("aggregate_name", "median") == "median":
            times[name] = (row["cpu_time"], row["time_unit"])
    return times, growth


def print_ratios(times, growth):
    print(f"{'benchmark':34} {'time':>12} {'floor':>12} {'ratio':>8}")
    for name, (time, unit) in times.items():
        kind, _, size = name.partition("/")
        if kind.endswith("_floor"):
            continue
        floor = times.get(f"{kind}_floor" + (f"/{size}" if size else ""))
        beside = f"{floor[0]:9.2f} {unit} {time / floor[0]:8.2f}" if floor else ""
        print(f"{name:34} {time:9.2f} {unit} {beside}")
    for name, order in growth.items():
        print(f"{name}: grows as {order}")


def main():
    arguments = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    arguments.add_argument(
        "--quick", action="store_true", help="one short run of each but the large ones, to see that they work"
    )
    arguments.add_argument("--filter", default=EVERYTHING, help="only benchmarks whose name matches")
    given = arguments.parse_args()
    print_ratios(*measure(given.quick, given.filter))


if __name__ == "__main__":
    main()
