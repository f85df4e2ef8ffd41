"""The commands on a list and on a server, from the menus, the mouse and the keyboard."""

import pytest

from harness.places import wait_until, windows_path
from test_lists import fetch, scan


@pytest.fixture
def doom(browse):
    quarn, network = browse("d3")
    fetch(quarn, network, "d3")
    return quarn, network


@pytest.mark.parametrize("answer, rows", [("Yes", 0), ("No", 10)])
def test_clear_asks_first(doom, answer, rows):
    quarn, _ = doom
    quarn.choose("mnuServerListClear")
    quarn.answer("Clear server list", answer)
    quarn.wait_for_rows(rows)
    assert quarn.close() == 0


def test_delete_removes_the_selected_rows(doom):
    quarn, network = doom
    quarn.do("select-rows", quarn.control("lvwServers"), 2, 3)
    quarn.choose("mnuServDelete")
    quarn.wait_for_rows(8)
    kept = [server.address for server in network.servers_of("d3")]
    del kept[1:3]
    assert [row.address for row in quarn.rows()] == kept
    assert quarn.close() == 0


def test_copy_puts_the_address_on_the_clipboard(doom):
    quarn, network = doom
    quarn.click_row(4)
    quarn.do.wait("4", "selected-rows", quarn.control("lvwServers"))
    quarn.choose("mnuServCopyAddress")
    quarn.do.wait(network.servers_of("d3")[3].address, "clipboard")
    assert quarn.close() == 0


def pick_from_open_menu(quarn, *keys):
    quarn.do.wait("*#32768*", "windows")
    quarn.do("key", ".", *keys, "enter")


def test_a_right_click_opens_the_menu_for_its_row(doom):
    quarn, network = doom
    quarn.do("right-click-row", quarn.control("lvwServers"), 3)
    pick_from_open_menu(quarn, "up")  # the last entry copies the address
    quarn.do.wait(network.servers_of("d3")[2].address, "clipboard")
    assert quarn.close() == 0


def test_the_favorites_button_offers_the_folders(doom):
    quarn, network = doom
    quarn.click_row(2)
    quarn.press_toolbar("favorites")
    pick_from_open_menu(quarn, "down")
    folder = quarn.folder / "servers-fav1.dat"
    wait_until(folder.exists, "the folder has a file")
    address = network.servers_of("d3")[1].address.replace(":", ";")
    assert f"\r\n{address};".encode() in folder.read_bytes()
    assert quarn.close() == 0


def open_add_server(quarn):
    quarn.choose("mnuServAdd")
    quarn.do.wait("*", "use", "Add Server")


def try_to_add(quarn, address, port):
    quarn.do("set-text", quarn.control("txtIP"), address)
    quarn.do("set-text", quarn.control("txtPort"), port)
    quarn.do("press", "OK")


def test_a_server_is_added_by_hand(doom):
    quarn, network = doom
    server = network.servers_of("d3")[0]
    open_add_server(quarn)
    try_to_add(quarn, *server.address.split(":"))
    quarn.do("use")
    quarn.wait_for_rows(11)
    quarn.answer("Add Server", "Cancel")
    added = quarn.rows()[-1]
    assert (added.address, added.location, added.name) == (server.address, server.country, "")
    scan(quarn)
    assert quarn.rows()[-1].name == server.name
    assert quarn.close() == 0


@pytest.mark.parametrize(
    "address, port, message",
    [
        ("", "27666", "You have to enter both, an address and a port for the new server!"),
        ("127.0.0.1", "", "You have to enter both, an address and a port for the new server!"),
        ("127.0.0.1", "27a", "The specified port must be numerical!"),
        ("5", "27666", "The IP address entered does not contain 4 sets of numbers!"),
    ],
)
def test_a_wrong_address_is_refused_with_a_reason(doom, address, port, message):
    quarn, _ = doom
    open_add_server(quarn)
    try_to_add(quarn, address, port)
    assert quarn.message("Quarn - Error") == message
    quarn.answer("Quarn - Error", "OK")
    quarn.answer("Add Server", "Cancel")
    assert quarn.row_count() == 10
    assert quarn.close() == 0


def test_an_export_has_a_line_for_each_row(doom, tmp_path):
    quarn, _ = doom
    exported = tmp_path / "list.txt"
    quarn.choose("mnuServerListExport")
    quarn.do.wait("*", "use", "Save serverlist as...")
    quarn.do("set-text", "#1148", windows_path(exported))
    quarn.do("press", "Save")
    quarn.do("use")
    wait_until(lambda: exported.exists() and exported.read_bytes() == b"\r\n" * 10, "the list is exported")
    assert quarn.close() == 0
