"""Asking several servers at once: what the user does meanwhile, and what a scan leaves."""

import re

import pytest

from harness.places import wait_until

AT_ONCE = 32
SERVERS = 200
TIMEOUT = 2000  # milliseconds


def listing(browse, *options, **settings):
    """The program that asks 32 servers at once, with a list of which no server was asked yet."""
    options = ["--servers", SERVERS, "--latency", "150-250", "--end-mark", "none", *options]
    settings = {"Extras__Simultaneous": AT_ONCE, "Scanning__PingTimeout": TIMEOUT, **settings}
    quarn, network = browse("oa", *options, **settings)
    quarn.renew()
    quarn.wait_for_rows(SERVERS)
    return quarn, network


def begin(quarn):
    """A scan, up to the moment at which some servers have answered."""
    quarn.press_toolbar("refreshall")
    wait_until(lambda: re.fullmatch(rf"[1-9]\d*/{SERVERS}", quarn.status(3)), "some servers have answered")


def expect_rows(quarn, servers, counts):
    """Each row is as its server says, or as it was listed; as many rows of the first kind as `counts` allows."""
    rows = quarn.rows()
    asked = [row.name != "" for row in rows]
    assert asked.count(True) in counts
    for row, server, was_asked in zip(rows, servers, asked):
        said = (server.name, server.map, f"{server.players} / {server.slots}")
        assert (row.name, row.map, row.players) == (said if was_asked else ("", "", "0 / 0"))
        assert (int(row.ping) >= server.latency) == was_asked


def test_every_server_is_asked_once_in_the_order_of_the_rows(browse):
    quarn, network = listing(browse)
    quarn.press_toolbar("refreshall")
    quarn.wait_for_scan()
    expect_rows(quarn, network.servers, [SERVERS])
    assert quarn.status(3) == f"{SERVERS} servers"
    assert quarn.close() == 0
    asked = [address for kind, _, address, _ in network.requests() if kind == "server"]
    assert asked == [server.address for server in network.servers]


def test_stop_ends_at_once_and_later_answers_change_nothing(browse):
    quarn, network = listing(browse)
    begin(quarn)
    quarn.press_toolbar("stop")
    quarn.wait_for_status("Scanning aborted by user.")
    expect_rows(quarn, network.servers, range(1, SERVERS))
    quarn.press_toolbar("refreshall")  # the answers to the first scan are all there when this one ends
    quarn.wait_for_scan()
    expect_rows(quarn, network.servers, [SERVERS])
    assert quarn.close() == 0


def test_another_list_ends_the_scan(browse):
    quarn, network = listing(browse)
    begin(quarn)
    quarn.click_tree("Games")
    quarn.wait_for_rows(0)
    quarn.click_tree("Games", network.games[0].name)
    quarn.wait_for_rows(SERVERS)
    expect_saved(quarn, network.servers)
    assert quarn.close() == 0


def expect_saved(quarn, servers):
    """The list that the scan was ended in was saved, with what had been answered until then."""
    named = [(row.name, server.name) for row, server in zip(quarn.rows(), servers) if row.name]
    assert 0 < len(named) < SERVERS
    assert all(shown == said for shown, said in named)


def test_clearing_the_list_ends_the_scan(browse):
    quarn, network = listing(browse)
    begin(quarn)
    quarn.choose("mnuServerListClear")
    quarn.answer("Clear server list", "Yes")
    quarn.wait_for_rows(0)
    quarn.wait_for_status("0 servers", panel=3)
    quarn.renew()
    quarn.wait_for_rows(SERVERS)
    quarn.press_toolbar("refreshall")
    quarn.wait_for_scan()
    expect_rows(quarn, network.servers, [SERVERS])
    assert quarn.close() == 0


def test_deleting_rows_ends_the_scan(browse):
    quarn, network = listing(browse)
    begin(quarn)
    quarn.do("select-rows", quarn.control("lvwServers"), SERVERS - 1, SERVERS)
    quarn.choose("mnuServDelete")
    quarn.wait_for_rows(SERVERS - 2)
    quarn.wait_for_status("Scanning aborted by user.")
    expect_rows(quarn, network.servers[:-2], range(1, SERVERS - 1))
    assert quarn.close() == 0


def test_answers_find_their_rows_when_the_list_is_sorted(browse):
    quarn, network = listing(browse)
    begin(quarn)
    quarn.do("click-header", quarn.control("lvwServers"), 1)
    quarn.wait_for_scan()
    servers = {server.address: server for server in network.servers}
    rows = quarn.rows()
    assert [row.address for row in rows] != list(servers)
    expect_rows(quarn, [servers[row.address] for row in rows], [SERVERS])
    assert quarn.close() == 0


def test_closing_ends_it_at_once(browse):
    quarn, network = listing(browse, "--silent", 50, Scanning__PingTimeout=20000)
    begin(quarn)
    quarn.do("timeout", 5)
    assert quarn.close() == 0
    assert quarn.log().endswith(";0;Application terminated normally\r\n")
    assert quarn.log().count("\n") == 1


@pytest.mark.parametrize("at_once", [1, AT_ONCE])
def test_half_life_rows_are_complete_when_players_and_rules_come_later(browse, at_once):
    options = ["--servers", 12, "--latency", "5-25", "--spread", 0, "--details-after", 30, "--fill", "20-90"]
    quarn, network = browse("hl", *options, Extras__Simultaneous=at_once, Extras__ListOnce=1)
    quarn.renew()
    quarn.wait_for_rows(12)
    quarn.press_toolbar("refreshall")
    quarn.wait_for_scan()
    players = [f"{server.players} / {server.slots}" for server in network.servers]
    wait_until(lambda: [row.players for row in quarn.rows()] == players, "all rows have their players")
    for number, server in enumerate(network.servers, 1):
        quarn.click_row(number)
        told = server.player_names
        wait_until(lambda: [name for name, _, _ in quarn.players()] == told, "its players are shown")
        wait_until(quarn.variables, "its rules are shown")
    assert all(server.latency <= int(row.ping) for row, server in zip(quarn.rows(), network.servers))
    assert quarn.close() == 0
    assert network.statistics()["server_requests"] == 3 * 12
