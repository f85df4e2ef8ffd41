"""The menus that pop up: at the list, at the tree and at the toolbar."""

import pytest

from harness.quarn import write_settings

SERVERS = (
    " 3\r\n127.0.0.1;27960;--;One;5;0;8;baseq3;q3dm1;0;;;\r\n1.2.3.4;28960;--;Two;6;0;8;osp;q3dm2;0;;;\r\n"
    "10.0.0.7;1;--;Three;7;0;8;osp;q3dm3;0;;;\r\n"
)


@pytest.fixture
def quarn(folder, start):
    place = folder()
    (place / "servers-q3.dat").write_bytes(SERVERS.encode("latin-1"))
    write_settings(place, 1, Favorites__Name1="Friends", Favorites__Name2="Clan wars")
    quarn = start(place)
    quarn.wait_until_usable()
    quarn.wait_for_rows(3)
    return quarn


def choose_from_menu(quarn, *keys):
    """In the menu that pops up."""
    quarn.do.wait("*#32768*", "windows")
    quarn.do("key", ".", *keys, "enter")


def row_of(quarn, address):
    return [row.address for row in quarn.rows()].index(address) + 1


def test_a_right_click_works_on_the_server_under_the_mouse(quarn):
    quarn.click_row(row_of(quarn, "127.0.0.1:27960"))
    number = row_of(quarn, "1.2.3.4:28960")
    quarn.do("right-click-row", quarn.control("lvwServers"), number)
    choose_from_menu(quarn, "up")  # the last entry: Copy address
    quarn.do.wait("1.2.3.4:28960", "clipboard")
    assert quarn.do("selected-rows", quarn.control("lvwServers")) == [str(number)]
    assert quarn.close() == 0


def test_a_disabled_menu_does_not_pop_up(quarn):
    quarn.click_tree("Games")
    quarn.wait_for_rows(0)
    quarn.choose("mnuServCopyAddress")
    quarn.do("post", quarn.control("lvwServers"), 0x204, 2, 0x00100010)  # WM_RBUTTONDOWN
    quarn.do("click-node", quarn.control("trvGames"), "Favorites")  # would close a menu, and do no more
    quarn.do.wait("Favorites", "selected-node", quarn.control("trvGames"))
    assert quarn.close() == 0


def test_a_right_click_in_the_tree_works_on_the_node_under_the_mouse(quarn):
    quarn.do("right-click-node", quarn.control("trvGames"), "Favorites", "Clan wars")
    choose_from_menu(quarn, "down")
    quarn.do.wait("*", "use", "Change name")
    quarn.do("set-text", "Edit", "Rivals")
    quarn.answer("Change name", "OK")
    quarn.do.wait("Rivals", "selected-node", quarn.control("trvGames"))
    assert quarn.row_count() == 3  # the click has switched no list
    assert quarn.close() == 0


def test_the_toolbar_offers_the_folders(quarn):
    quarn.click_row(row_of(quarn, "10.0.0.7:1"))
    quarn.press_toolbar("favorites")
    choose_from_menu(quarn, "down", "down")
    quarn.click_tree("Favorites", "Clan wars")
    quarn.wait_for_rows(1)
    assert quarn.rows()[0].address == "10.0.0.7:1"
    assert quarn.close() == 0
