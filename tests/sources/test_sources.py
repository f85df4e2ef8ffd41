"""What holds for the sources as a whole and no compiler sees."""

import re
from pathlib import Path

import pytest

ROOT = Path(__file__).resolve().parents[2]
MODULE_ROOMS = ("core", "query", "views", "launch", "support")
ROOMS = MODULE_ROOMS + ("controls", "desktop", "win32")

SEVERAL_THREADS = re.compile(
    r"#include <(?:atomic|barrier|condition_variable|future|latch|(?:shared_)?mutex|semaphore|thread)>"
    r"|\b(?:thread_local|std::(?:async|atomic|jthread|mutex|thread))\b"
    r"|\b(?:_?beginthread(?:ex)?|Create(?:Remote)?Thread(?:pool\w*)?|QueueUserWorkItem"
    r"|EnterCriticalSection|AcquireSRWLock\w*|Interlocked\w+)\b"
)

# A name under which errors are logged.
MODULE = re.compile(r'"((?:mod|frm|cls)[A-Z]\w*)"')


def sources(*rooms):
    files = [file for room in rooms for file in sorted((ROOT / room).rglob("*"))]
    return [file for file in files if file.suffix in (".h", ".cpp")]


@pytest.mark.parametrize("room", ROOMS)
def test_nothing_runs_beside_the_window(room):
    files = sources(room)
    assert files
    assert {file: found[0] for file in files if (found := SEVERAL_THREADS.search(file.read_text()))} == {}


def test_a_name_in_the_log_leads_to_a_source_beside_the_one_that_logs():
    named = [(file, name) for file in sources(*MODULE_ROOMS) for name in MODULE.findall(file.read_text())]
    assert len(named) > 20
    for file, name in named:
        assert file.with_name(f"{name}.h").exists(), f"{file} logs as {name}"
