"""Masters and servers that are silent, missing, broken or lying: the program goes on."""

import pytest

from harness.places import wait_until
from harness.quarn import set_master, write_settings


def test_a_silent_master_leaves_its_status_text(browse):
    quarn, _ = browse("d3", "--master-lie", "silent")
    quarn.renew()
    quarn.wait_for_status("Getting new serverlist from master...")
    quarn.click_tree("Filters", "Ping", "<= 50")
    quarn.do.wait("*", "tree", quarn.control("trvGames"))
    assert quarn.row_count() == 0
    assert quarn.close() == 0


def with_master(folder, network, address):
    program_folder = folder(network)
    set_master(program_folder, MasterAddress=address)
    write_settings(program_folder, games=1)
    return program_folder


UNKNOWN_MASTERS = {
    "unknown": "no-such-host.invalid",
    "no address": "999.999.999.999",
    "empty": "",
    "longest": "a" * 254,
    "blank inside": "ho st",
    "no letters": "\xff\xfe",
}


@pytest.mark.parametrize("address", UNKNOWN_MASTERS.values(), ids=UNKNOWN_MASTERS.keys())
def test_an_unknown_master_leaves_the_window_usable(gamenet, folder, start, address):
    quarn = start(with_master(folder, gamenet("--games", "d3"), address))
    quarn.wait_until_usable()
    quarn.renew()
    quarn.wait_for_status("Getting new serverlist from master...")
    quarn.click_tree("Games")
    quarn.do.wait("Games", "selected-node", quarn.control("trvGames"))
    quarn.leave()


def test_nobody_listens_at_the_masters_port(browse):
    quarn, network = browse("d3")
    network.__exit__()
    quarn.renew()
    quarn.wait_for_status("Getting new serverlist from master...")
    quarn.click_tree("Games")
    quarn.do.wait("Games", "selected-node", quarn.control("trvGames"))
    assert quarn.close() == 0


@pytest.mark.parametrize("lie", ["truncated", "random", "wrong-header", "oversized", "duplicated"])
@pytest.mark.parametrize("game", ["oa", "d3", "hl"])
def test_a_lying_master_does_not_stop_the_program(browse, game, lie):
    quarn, network = browse(game, "--master-lie", lie)
    quarn.renew()
    # A reply of any kind brings the count up to date; a dropped one leaves it at nought.
    quarn.wait_for_status("* servers", panel=3)
    quarn.click_tree("Games")
    quarn.do.wait("Games", "selected-node", quarn.control("trvGames"))
    quarn.leave()
    assert network.statistics()["master_requests"] == 1


def is_right(row, server):
    shown = (row.name, row.map, row.players)
    return shown == (server.name, server.map, f"{server.players} / {server.slots}")


@pytest.mark.parametrize("at_once", [1, 32])
@pytest.mark.parametrize("game", ["oa", "d3", "hl"])
def test_liars_do_not_spoil_the_rows_of_the_honest(browse, game, at_once):
    options = ["--servers", 24, "--latency", "1-5", "--end-mark", "none"]
    options += ["--liars", 50, "--liar-kinds", "all", "--late-by", 400]
    settings = {"Scanning__PingTimeout": 200, "Extras__Simultaneous": at_once}
    quarn, network = browse(game, *options, **settings)
    servers = network.servers_of(game) * (2 if game == "hl" else 1)
    assert len({server.kind for server in servers}) == 9
    quarn.renew()
    quarn.wait_for_rows(len(servers))
    quarn.do("timeout", 60)
    quarn.press_toolbar("refreshall")
    quarn.wait_for_scan()
    assert [row.address for row in quarn.rows()] == [server.address for server in servers]

    def wrong_rows():
        honest = [(row, server) for row, server in zip(quarn.rows(), servers) if server.kind == "honest"]
        return [row for row, server in honest if row.ping == "200" or not is_right(row, server)]

    # An answer may arrive when its server's turn is over.
    wait_until(lambda: not wrong_rows(), "the rows of all honest servers are right")
    quarn.leave()
