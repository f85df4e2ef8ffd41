#!/usr/bin/env python3
"""Times the work on a long server list through the window of the real program.

usage: bench/run lists [--servers N] [--rounds N] [--quick]

Of each command two times are printed: until its result shows and the window answers at once again, and the
longest that a message to the window waited meanwhile. Both are read from outside and hold the driver's own way.
"""
import argparse
import pathlib
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "e2e"))

from harness.lists import make_servers, put_lists  # noqa: E402
from harness.quarn import Quarn, fresh_folder, write_settings  # noqa: E402

PING_COLUMN, NAME_COLUMN = 5, 3
LIMIT = 50  # of the ping filter


class Session:
    """The program with the list of one game, which is not in memory yet."""

    def __init__(self, folder, servers):
        put_lists(folder, servers)
        write_settings(folder, games=1, Selection__LastGame=1)
        self.quarn = Quarn(folder)
        self.quarn.wait_until_usable()
        self.quarn.do("move", 20, 20, 1160, 720)

    def measure(self, name, action, pattern, *reading):
        action()
        total, longest = map(int, self.quarn.do.text("measure", pattern, *reading).split())
        print(f"{name:34} {total:6} ms, longest gap {longest:5} ms", flush=True)

    def measure_rows(self, name, action, rows):
        self.measure(name, action, rows, "row-count", self.quarn.control("lvwServers"))

    def measure_sort(self, caption, column):
        """By another column than the last sort, whose header then gets the mark."""
        servers = self.quarn.control("lvwServers")
        self.measure(
            f"sort by {caption}",
            lambda: self.quarn.do("click-header", servers, column),
            f"*{caption}\timage*",
            "columns",
            servers,
        )

    def run(self, servers):
        quarn = self.quarn
        within = sum(server.ping <= LIMIT for server in servers)
        count = len(servers)
        self.measure_rows("load and list", lambda: quarn.click_tree("Games", "Arena"), count)
        self.measure_sort("Ping", PING_COLUMN)
        self.measure_sort("Name", NAME_COLUMN)
        self.measure_rows(
            "filter by ping", lambda: quarn.click_tree("Filters", "Ping", f"<= {LIMIT}"), within
        )
        self.measure_rows("all again", lambda: quarn.click_tree("Filters", "Ping", f"<= {LIMIT}"), count)
        self.measure_rows("save and leave", lambda: quarn.click_tree("Games"), 0)


def main():
    arguments = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    arguments.add_argument("--servers", type=int, default=10000)
    arguments.add_argument("--rounds", type=int, default=3)
    arguments.add_argument("--quick", action="store_true", help="200 servers, one round")
    given = arguments.parse_args()
    if given.quick:
        given.servers, given.rounds = 200, 1
    servers = make_servers(given.servers)
    with tempfile.TemporaryDirectory(prefix="quarn-lists-") as temporary:
        session = Session(fresh_folder(pathlib.Path(temporary) / "Quarn"), servers)
        with session.quarn:
            for _ in range(given.rounds):
                session.run(servers)
            session.quarn.leave()


if __name__ == "__main__":
    main()
