"""Which datagrams leave the program, and in which order, where no extra is switched on."""

import pytest

from test_lists import fetch, listed, scan

REQUESTS = {
    "oa": [b"\xff\xff\xff\xffgetstatus"],
    "d3": [b"\xff\xffgetinfo\0\0\0\0"],
    "hl": [b"\xff\xff\xff\xffinfo", b"\xff\xff\xff\xffplayers", b"\xff\xff\xff\xffrules"],
}
MASTER_WORDS = {
    "oa": b"\xff\xff\xff\xffgetservers ",
    "d3": b"\xff\xffgetServers\0",
    "hl": b"1\xff0.0.0.0:0\0",
}


@pytest.mark.parametrize("game", REQUESTS)
def test_each_server_is_asked_once_after_the_one_before(browse, game):
    options = ["--servers", 10, "--silent", 20, "--latency", "1-30", "--end-mark", "none"]
    quarn, network = browse(game, *options, Scanning__PingTimeout=400)
    fetch(quarn, network, game)
    scan(quarn)
    # The first of the selected servers is silent.
    pings = [row.ping for row in quarn.rows()]
    first = pings.index("400") + 1
    selected = [first, *range(first + 1, len(pings) + 1)][:3]
    quarn.do("select-rows", quarn.control("lvwServers"), *selected)
    quarn.start_scan(network, len(selected) * len(REQUESTS[game]), "refresh")
    quarn.wait_for_scan()
    servers = listed(network, game)
    addresses = [server.address for server in servers + [servers[row - 1] for row in selected]]
    quarn.leave()
    assert "Extras" not in (quarn.folder / "Quarn.ini").read_text("latin-1")
    master, *requests = network.requests()
    assert master[:2] == ("master", game)
    assert master[3].startswith(MASTER_WORDS[game])
    expected = [("server", game, address, request) for address in addresses for request in REQUESTS[game]]
    assert requests == expected
