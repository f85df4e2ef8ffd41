"""Scan after scan of a network in which most servers lie, are silent, answer twice or late.

With --long 1,000 servers of each family are scanned ten times, else a few of them twice."""

import pytest

from harness.places import wait_until
from harness.process import Process
from test_hostile_network import is_right

TICK = 200
# Of a hundred servers: 20 never answer, 30 lie, 10 answer twice, 5 answer after the tick that ended their turn.
LIARS = (
    ["truncated", "empty", "unterminated", "oversized", "random", "wrong-family"] * 5
    + ["duplicated"] * 10
    + ["late"] * 5
)
OPTIONS = ["--latency", "1-5", "--end-mark", "none", "--silent", 20, "--liars", len(LIARS)]
OPTIONS += ["--liar-kinds", ",".join(LIARS), "--late-by", TICK + 50]


@pytest.mark.parametrize("at_once", [1, 32])
@pytest.mark.parametrize("game", ["oa", "d3", "hl"])
def test_honest_rows_are_right_in_a_hostile_network(browse, game, at_once, report, is_long):
    count, scans = (1000, 10) if is_long else (60, 2)
    settings = {"Scanning__PingTimeout": TICK, "Extras__Simultaneous": at_once}
    quarn, network = browse(game, *OPTIONS, "--servers", count, **settings)
    quarn.do("timeout", 600)
    truth = {server.address: server for server in network.servers_of(game)}
    listed = len(truth) * (2 if game == "hl" else 1)  # a Half-Life list is read twice
    quarn.renew()
    quarn.wait_for_rows(listed)
    process = Process(quarn.folder / "Quarn.exe")
    memory, gaps = [], []
    for number in range(1, scans + 1):
        cpu = process.cpu_seconds()
        quarn.start_scan(network, (at_once + 1) * (3 if game == "hl" else 1))
        total, gap = quarn.measure_scan()
        memory.append(process.memory_megabytes())
        gaps.append(gap)
        report(
            f"{game}, {at_once} at once, scan {number}: {listed} servers, {total / 1000:.1f} s, "
            f"longest gap {gap} ms, "
            f"{process.cpu_seconds() - cpu:.1f} s CPU, {memory[-1]:.1f} MB"
        )

        def wrong_rows():
            honest = [row for row in quarn.rows() if truth[row.address].kind == "honest"]
            return [row for row in honest if row.ping == str(TICK) or not is_right(row, truth[row.address])]

        # An answer may arrive when its server's turn is over.
        wait_until(lambda: not wrong_rows(), "the rows of all honest servers are right")
    # Half-Life rules are put behind those that a server has, up to a length, which the largest liars soon have.
    settled = memory[len(memory) // 2] if game == "hl" else memory[0]
    assert memory[-1] < settled * 1.1 + 1
    assert max(gaps) < 2000
    quarn.leave()
