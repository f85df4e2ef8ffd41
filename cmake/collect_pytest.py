"""Writes a CMake script that registers the cases of Python test files: see PythonTests.cmake.

usage: collect_pytest.py GROUP SCRIPT PATH...
"""
import sys
from pathlib import Path

import pytest


class Cases:
    """Keeps what pytest has collected."""

    ids = ()

    def pytest_collection_finish(self, session):
        self.ids = [item.nodeid for item in session.items]


def registration(group, case):
    """`tests/e2e/test_tree.py::test_x[a]` is the test `e2e.test_tree.test_x[a]`."""
    path, _, function = case.partition("::")
    return f"quarn_add_pytest([==[{group}.{Path(path).stem}.{function}]==] [==[{case}]==])\n"


def main():
    group, script, *paths = sys.argv[1:]
    cases = Cases()
    status = pytest.main(["--collect-only", "--quiet", *paths], plugins=[cases])
    if status == pytest.ExitCode.OK:
        Path(script).write_text("".join(registration(group, case) for case in cases.ids))
    return status


if __name__ == "__main__":
    sys.exit(main())
