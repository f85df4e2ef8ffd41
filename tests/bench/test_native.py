"""The native benchmarks run to their end and print what they are for. No test can require a speed on a machine
that runs other programs, too."""

import re

from benches import output_of


def test_each_benchmark_is_compared_with_its_floor():
    lines = output_of("native.py", "--quick").splitlines()
    timed = [line for line in lines if re.match(r"\w+(/\d+)? +[\d.]+ ", line)]
    assert len(timed) > 25
    for line in timed:
        assert re.search(r" [\d.]+$", line), line
