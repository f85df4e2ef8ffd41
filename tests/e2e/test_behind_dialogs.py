"""A scan that continues behind an open dialog or message box."""

import pytest

from harness.places import wait_until

SERVERS = 80
WM_CLOSE = 0x10


@pytest.fixture
def scanning(browse):
    """The program, in a scan of which some servers have answered, and its network."""

    def begin(at_once=1, latency="60-90"):  # milliseconds
        options = ["--servers", SERVERS, "--latency", latency, "--end-mark", "none"]
        quarn, network = browse("oa", *options, Extras__Simultaneous=at_once)
        quarn.renew()
        quarn.wait_for_rows(SERVERS)
        quarn.press_toolbar("refreshall")
        wait_until(lambda: answered(quarn) > 0, "a server has answered")
        return quarn, network

    return begin


def answered(quarn):
    """How many rows show a server's answer."""
    return sum(row.name != "" for row in quarn.rows())


def wait_for_a_further_answer(quarn):
    before = answered(quarn)
    wait_until(lambda: answered(quarn) > before, "a further server has answered")


def expect_all_answered(quarn, network):
    assert [row.name for row in quarn.rows()] == [server.name for server in network.servers]
    assert quarn.status(3) == f"{SERVERS} servers"


@pytest.mark.parametrize("at_once, latency", [(1, "60-90"), (8, "600-900")])
def test_more_servers_answer_while_the_options_are_open(scanning, at_once, latency):
    quarn, network = scanning(at_once, latency)
    quarn.choose("mnuExtrasOptions")
    quarn.do.wait(1, "is-open", "Options")
    assert answered(quarn) < SERVERS
    wait_for_a_further_answer(quarn)
    quarn.wait_for_scan()
    expect_all_answered(quarn, network)
    assert quarn.do("is-open", "Options") == ["1"]
    quarn.answer("Options", "OK")
    assert quarn.status() == "Ready."
    expect_all_answered(quarn, network)
    assert quarn.close() == 0
    asked = [address for kind, _, address, _ in network.requests() if kind == "server"]
    assert asked == [server.address for server in network.servers]


def test_the_scan_continues_when_the_dialog_is_closed_early(scanning):
    quarn, _ = scanning(latency="300-400")
    quarn.choose("mnuInfoAbout")
    quarn.do.wait(1, "is-open", "About Quarn")
    wait_for_a_further_answer(quarn)
    quarn.answer("About Quarn", "OK")
    assert answered(quarn) < SERVERS
    wait_for_a_further_answer(quarn)
    quarn.press_toolbar("stop")
    quarn.wait_for_status("Scanning aborted by user.")
    assert quarn.close() == 0


def test_more_servers_answer_behind_a_message_in_front_of_a_dialog(scanning):
    quarn, network = scanning()
    quarn.choose("mnuServAdd")
    quarn.do.wait("*", "use", "Add Server")
    quarn.do("press", "OK")  # without an address
    quarn.do("use")
    quarn.do.wait(1, "is-open", "Quarn - Error")
    assert answered(quarn) < SERVERS
    quarn.wait_for_scan()
    expect_all_answered(quarn, network)
    quarn.answer("Quarn - Error", "OK")
    quarn.do("use", "Add Server")
    quarn.do("close")
    quarn.do("use")
    quarn.do.wait(0, "is-open", "Add Server")
    assert quarn.close() == 0


def test_the_program_closes_although_a_scan_continues_behind_a_dialog(scanning):
    quarn, _ = scanning(latency="300-400")
    quarn.choose("mnuExtrasOptions")
    quarn.do.wait(1, "is-open", "Options")
    wait_for_a_further_answer(quarn)
    quarn.do("post", ".", WM_CLOSE)
    assert quarn.do.exit_code() == 0
    assert quarn.log().endswith(";0;Application terminated normally\r\n")
    assert quarn.log().count("\n") == 1
