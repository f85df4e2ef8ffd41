"""The server list sorted by each of its headers, both ways."""

from datetime import datetime

import pytest

from harness.places import wait_until
from harness.quarn import write_settings

# Order of the fields: address, port, country, name, ping, players, slots, game, map, lock, password,
# variables, seconds of the last visit.
SERVERS = [
    "10.0.0.2;27960;US;Zulu;120;3;16;osp;q3dm6;0;;;3400000000",
    "10.0.0.10;27961;--;bravo;5;16;16;CPMA;q3dm17;1;;;3155673600",
    "9.9.9.9;27960;DE;Alpha;40;0;8;baseq3;Q3DM6;1;;;2840140800",
    "10.0.0.2;27959;DE;\xe4hnlich;1000;3;8;cpma;aerowalk;0;;;3400000001",
    "192.168.7.1;1;AT;alpha;40;12;12;;q3dm6;1;;;3399999999",
]


def visited(row):
    return datetime.strptime(row.last_visit, "%m/%d/%Y %I:%M:%S %p" if " " in row.last_visit else "%m/%d/%Y")


# What the rows are ordered by. The players' cells are no numbers, so these rows keep their order.
KEYS = [
    ("", lambda row: row.lock_shown),
    ("IP Address", lambda row: row.address),
    ("Location", lambda row: row.location),
    ("Name", lambda row: row.name.lower().replace("\xe4", "a")),
    ("Players", lambda row: 0),
    ("Ping", lambda row: int(row.ping)),
    ("Game", lambda row: row.game.lower()),
    ("Map", lambda row: row.map.lower()),
    ("Last Visit", visited),
]


class Listed:
    """A row with the lock that is shown before it."""

    def __init__(self, row, lock):
        self.__dict__.update(vars(row))
        self.lock_shown = int(lock) >= 0

    def __eq__(self, other):
        return vars(self) == vars(other)

    def __repr__(self):
        return f"{self.address} {self.name}"


@pytest.fixture
def quarn(folder, start):
    place = folder()
    lines = [f" {len(SERVERS)}"] + SERVERS
    (place / "servers-q3.dat").write_bytes("".join(f"{line}\r\n" for line in lines).encode("latin-1"))
    write_settings(place, 1)
    quarn = start(place)
    quarn.wait_until_usable()
    quarn.wait_for_rows(len(SERVERS))
    return quarn


def listed(quarn):
    locks = quarn.do.table("images", quarn.control("lvwServers"))
    return [Listed(row, lock) for row, (lock, _) in zip(quarn.rows(), locks)]


def sort_marks(quarn):
    """The columns that have a mark, and whether the mark says ascending. While it moves there may be two."""
    columns = quarn.do.table("columns", quarn.control("lvwServers"))
    return [(number, mark == "image 1") for number, (_, mark) in enumerate(columns) if mark]


def test_each_header_sorts_both_ways(quarn):
    [(_, ascending)] = sort_marks(quarn)
    rows = listed(quarn)
    for column, (caption, key) in enumerate(KEYS):
        for _ in range(2):
            ascending = not ascending
            quarn.do("click-header", quarn.control("lvwServers"), column)
            wait_until(lambda: sort_marks(quarn) == [(column, ascending)], "the list is sorted")
            rows = sorted(rows, key=key, reverse=not ascending)
            assert listed(quarn) == rows, caption
    assert quarn.close() == 0
