"""The benchmarks of the real program run to their end and print what they are for. No test can require a speed
on a machine that runs other programs, too."""

import re

from benches import output_of


def test_the_scan_is_compared_with_the_bare_loops():
    printed = output_of("scan.py", "--quick")
    assert len(re.findall(r"the scan takes [\d.]+ times as long", printed)) == 2
    assert "1.00 requests, 1.00 replies" in printed
    assert re.search(r"silent servers: [\d.]+ s, [\d.]+ % of a core", printed)


def test_the_start_is_compared_with_that_of_an_empty_window():
    printed = output_of("startup.py", "--quick")
    assert re.search(r"start: [\d.]+ s, an empty window [\d.]+ s, [\d.]+ times as long", printed)
    assert len(re.findall(r"[\d.]+ MB in memory, [\d.]+ s of CPU", printed)) == 2


def test_the_work_on_a_list_is_timed_step_by_step():
    printed = output_of("lists.py", "--quick")
    assert len(re.findall(r"\d+ ms, longest gap +\d+ ms", printed)) == 6


def test_the_scan_is_compared_with_that_of_qstat():
    printed = output_of("versus.py", "--quick")
    for program in "Quarn", "qstat":
        for at_once in 1, 8:
            assert re.search(
                rf"^  {program}, {at_once} at once +[\d.]+ s, +0 falsely dead", printed, re.MULTILINE
            )
    assert len(re.findall(r"Quarn takes [\d.]+ times as long", printed)) == 2
