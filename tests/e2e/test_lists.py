"""Fetching a list from the master, querying its servers, and what is kept of it."""

import re
from dataclasses import replace
from datetime import datetime

import pytest

from conftest import LONG_TIMEOUT
from harness.places import wait_until
from harness.replies import VARIABLES_OF

CONFIRMATION = (
    "This will delete your current server list. All servers and scanning data in it will be lost.\r\n"
    "Are you sure you want to proceed?"
)
# One game of each engine family. Without an end mark a Quake III list counts no server too many.
GAMES = [("oa", ["--end-mark", "none"]), ("d3", []), ("hl", ["--servers", 5])]
each_family = pytest.mark.parametrize("game, options", GAMES, ids=[game for game, _ in GAMES])
# The time that a date of zero stands for, as the system writes it.
NEVER = "12:00:00 AM"
DATE_FORMAT = "%m/%d/%Y %I:%M:%S %p"


def listed(network, game):
    """The servers in the order of their rows: a Half-Life list is read twice."""
    servers = network.servers_of(game)
    return servers * 2 if game == "hl" else servers


def fetch(quarn, network, game):
    quarn.renew()
    quarn.wait_for_status("Getting new serverlist from master...")
    quarn.wait_for_rows(len(listed(network, game)))


def scan(quarn):
    quarn.press_toolbar("refreshall")
    quarn.wait_for_scan()


def fetch_and_scan(quarn, network, game):
    """One scan. Of a Half-Life server's three datagrams two may arrive when the next server has been asked, and
    those of the last server when the scan has ended."""
    fetch(quarn, network, game)
    scan(quarn)
    players = [f"{server.players} / {server.slots}" for server in listed(network, game)]
    wait_until(lambda: [row.players for row in quarn.rows()] == players, "all rows have their players")


@each_family
def test_renew_lists_what_the_master_knows(browse, game, options):
    quarn, network = browse(game, *options)
    fetch(quarn, network, game)
    assert quarn.status(1) == "Getting new serverlist from master..."
    servers = listed(network, game)
    assert quarn.status(3) == f"{len(servers)} servers"
    assert [(row.address, row.location, row.name) for row in quarn.rows()] == [
        (server.address, server.country, "") for server in servers
    ]
    assert quarn.close() == 0


@each_family
def test_refresh_all_shows_what_the_servers_say(browse, game, options):
    quarn, network = browse(game, *options)
    fetch_and_scan(quarn, network, game)
    rows = quarn.rows()
    servers = listed(network, game)
    assert [
        (row.address, row.location, row.name, row.players, row.game, row.map, row.last_visit) for row in rows
    ] == [
        (
            server.address,
            server.country,
            server.name,
            f"{server.players} / {server.slots}",
            server.mod,
            server.map,
            NEVER,
        )
        for server in servers
    ]
    for row, server in zip(rows, servers):
        assert server.latency <= int(row.ping) < LONG_TIMEOUT, row
    quarn.wait_for_status(f"{len(servers)} servers", 3)
    assert quarn.do.text("progress", quarn.control("pbScanning")).startswith("1/")
    assert quarn.close() == 0


def test_a_lock_marks_the_servers_with_a_password(browse):
    quarn, network = browse("oa", "--end-mark", "none", "--locked", 50)
    fetch(quarn, network, "oa")
    scan(quarn)
    locks = [int(lock) >= 0 for lock, _ in quarn.do.table("images", quarn.control("lvwServers"))]
    assert locks == [server.locked for server in network.servers_of("oa")]
    assert locks.count(True) == 4
    assert quarn.close() == 0


def test_no_keeps_the_list_and_asks_no_master(browse):
    quarn, network = browse("d3")
    fetch(quarn, network, "d3")
    scan(quarn)
    before = quarn.rows()
    quarn.choose("mnuServerListGet")
    assert quarn.message("Clear server list") == CONFIRMATION
    quarn.answer("Clear server list", "No")
    assert quarn.rows() == before
    assert quarn.status(1) == "Ready."
    assert quarn.close() == 0
    assert network.statistics()["master_requests"] == 1


def test_an_end_mark_counts_as_a_server_and_is_logged(browse):
    quarn, _ = browse("oa", "--end-mark", "last")
    quarn.renew()
    quarn.wait_for_rows(8)
    quarn.wait_for_status("9 servers", 3)
    assert re.search(
        r"^modMasterQuery;ParseQ3EngineServers;[^;]*;9;Subscript out of range\r$", quarn.log(), re.M
    )
    scan(quarn)
    assert quarn.close() == 0


def test_a_silent_server_gets_the_timeout_as_its_ping(browse):
    # The timer is not restarted for each server: quick answers, so that all honest ones come between two ticks.
    quarn, network = browse("d3", "--silent", 50, "--latency", 5, "--jitter", 0, Scanning__PingTimeout=500)
    fetch(quarn, network, "d3")
    scan(quarn)
    silent = [server.kind == "silent" for server in network.servers_of("d3")]
    assert silent.count(True) == 5
    rows = quarn.rows()
    assert [(row.name == "", row.ping == "500" and row.players == "0 / 0") for row in rows] == [
        (is_silent, is_silent) for is_silent in silent
    ]
    assert quarn.close() == 0


def test_stop_ends_a_scan_after_the_server_in_hand(browse):
    quarn, network = browse("d3", "--latency", 400)
    fetch(quarn, network, "d3")
    quarn.press_toolbar("refreshall")
    quarn.wait_for_status("Retrieving server stats, please wait.")
    # A slow display leaves out some of the counts: it follows once a second only.
    counts = [f"{number}/10" for number in range(3, 9)]
    wait_until(lambda: quarn.status(3) in counts, "the third server or one after it is in hand")
    quarn.press_toolbar("stop")
    quarn.wait_for_status("Scanning aborted by user.")
    assert quarn.status(3) == "10 servers"
    asked = [row.name != "" for row in quarn.rows()]
    # That one or, were the button slow, one after it was in hand; the last were never asked.
    assert asked == sorted(asked, reverse=True)
    assert 3 <= asked.count(True) < 10

    scan(quarn)
    assert all(row.name for row in quarn.rows())
    assert quarn.close() == 0


def test_refresh_asks_the_selected_servers_only(browse):
    quarn, network = browse("d3")
    fetch(quarn, network, "d3")
    quarn.do("select-rows", quarn.control("lvwServers"), 3, 7)
    quarn.press_toolbar("refresh")
    quarn.wait_for_scan()
    assert [number for number, row in enumerate(quarn.rows(), 1) if row.name] == [3, 7]
    assert quarn.close() == 0
    assert network.statistics()["server_requests"] == 2


def wait_for_names(quarn, server):
    wait_until(
        lambda: [name for name, _, _ in quarn.players()] == server.player_names,
        "the players are the server's",
    )


@each_family
def test_a_click_shows_the_players_of_the_row(browse, game, options):
    quarn, network = browse(game, *options, "--fill", "20-90")
    fetch_and_scan(quarn, network, game)
    for number, server in enumerate(network.servers_of(game), 1):
        quarn.click_row(number)
        quarn.do.wait(server.players, "row-count", quarn.control("lvwPlayers"))
        wait_for_names(quarn, server)
        wait_until(quarn.variables, "the server's variables are shown")
    assert quarn.close() == 0


def test_the_details_follow_the_arrow_keys(browse):
    quarn, network = browse("d3")
    fetch(quarn, network, "d3")
    scan(quarn)
    first, second = network.servers_of("d3")[:2]
    quarn.click_row(1)
    quarn.wait_for_players(first.players)
    quarn.do("key", quarn.control("lvwServers"), "down")
    quarn.wait_for_players(second.players)
    wait_for_names(quarn, second)
    assert quarn.close() == 0


def test_closing_during_a_scan_ends_the_program_at_once(browse):
    quarn, network = browse("d3", "--silent", 100, Scanning__PingTimeout=10000)
    fetch(quarn, network, "d3")
    quarn.press_toolbar("refreshall")
    quarn.wait_for_status("1/10", panel=3)
    quarn.do("timeout", 5)
    assert quarn.close() == 0
    assert quarn.log().endswith(";0;Application terminated normally\r\n")
    assert quarn.log().count("\n") == 1


def saved_line(server, row, engine, password):
    players, _, slots = row.players.partition(" / ")
    fields = server.address.split(":") + [server.country, server.name, row.ping, players, slots, server.mod]
    fields += [server.map, str(int(server.locked)), ""]
    visit = ""
    if row.last_visit != NEVER:
        visited = datetime.strptime(row.last_visit, DATE_FORMAT)
        visit = str(int((visited - datetime(1900, 1, 1)).total_seconds()))
    return ";".join(fields + [password + VARIABLES_OF[engine](server.address), visit])


EMPTY_ENTRY = ";0;;;0;0;0;;;0;;;"


def empty_entries(network, game):
    """A Half-Life list has six bytes a server and one between two, but room is made for one of six: what is left
    over stays in the list, and is not shown."""
    servers = len(network.servers_of(game))
    return round((servers * 7 - 1) / 6) - servers if game == "hl" else 0


def visit_with_password(quarn, number, password):
    """Tries to join a server; no game is set up, so only the time of the visit is kept."""
    quarn.click_row(number)
    quarn.do.wait(number, "selected-rows", quarn.control("lvwServers"))
    quarn.choose("mnuServSetPass")
    quarn.do.wait("*", "use", "Server Password")
    quarn.do("set-text", quarn.control("txtPass"), password)
    quarn.answer("Server Password", "OK")
    quarn.choose("mnuServConnectPlay")
    quarn.answer("Quarn - Error", "OK")
    quarn.answer("Game Setup", "Cancel")


@each_family
def test_a_list_is_saved_byte_for_byte_when_it_is_left(browse, game, options):
    quarn, network = browse(game, *options)
    fetch_and_scan(quarn, network, game)
    visit_with_password(quarn, 2, "open sesame")
    rows = quarn.rows()
    saved = quarn.folder / f"servers-{game}.dat"
    assert not saved.exists()
    quarn.click_tree("Games")
    quarn.wait_for_rows(0)
    engine = network.games[0].engine
    passwords = ["", "open sesame"] + [""] * len(rows)
    lines = map(saved_line, listed(network, game), rows, [engine] * len(rows), passwords)
    entries = [*lines, *[EMPTY_ENTRY] * empty_entries(network, game)]
    content = "".join(f"{line}\r\n" for line in [f" {len(entries)}", *entries])
    assert saved.read_bytes() == content.encode("latin-1")

    quarn.click_tree("Games", network.games[0].name)
    quarn.wait_for_rows(len(rows))
    # A zero date is not shown in a list that was read.
    read = [replace(row, last_visit="" if row.last_visit == NEVER else row.last_visit) for row in rows]
    assert quarn.rows() == read
    assert quarn.close() == 0


def test_the_list_shown_at_the_end_is_not_saved(browse):
    quarn, network = browse("d3")
    fetch(quarn, network, "d3")
    assert quarn.close() == 0
    assert not (quarn.folder / "servers-d3.dat").exists()
