"""The keys that give commands in the main window: each does what its menu entry or button does, once for each
press, and only where it is meant. The keys are real ones."""

import pytest

from harness.places import wait_until
from harness.process import Process
from harness.quarn import write_settings
from test_joining import RecordedGame
from test_lists import fetch, scan

SERVERS = "".join(
    [" 5\r\n"]
    + [
        f"127.0.0.{number};27960;--;Server {number};{number};0;8;osp;q3dm{number};0;;;\r\n"
        for number in range(1, 6)
    ]
)


@pytest.fixture
def doom(browse):
    """A list of ten servers that answer after a while."""
    quarn, network = browse("d3", "--latency", 100)
    fetch(quarn, network, "d3")
    return quarn, network


@pytest.fixture
def quarn(folder, start):
    """A saved list of five servers."""
    place = folder()
    (place / "servers-q3.dat").write_text(SERVERS, newline="")
    write_settings(
        place, 2, Favorites__Name1="Friends", Selection__LastSortColumn=2, Selection__LastSortOrder=0
    )
    quarn = start(place)
    quarn.wait_until_usable()
    quarn.wait_for_rows(5)
    return quarn


def select(quarn, *rows):
    quarn.click_row(rows[0])
    quarn.do.wait(rows[0], "selected-rows", quarn.control("lvwServers"))
    if len(rows) > 1:
        quarn.do("select-rows", quarn.control("lvwServers"), *rows)


def wait_for_scan_to_start(quarn):
    quarn.wait_for_status("Retrieving server stats, please wait.")


def requests(quarn, network):
    assert quarn.close() == 0
    return network.statistics()["server_requests"]


def test_f5_refreshes_every_server(doom):
    quarn, network = doom
    quarn.do("keyboard", "f5")
    wait_for_scan_to_start(quarn)
    quarn.wait_for_scan()
    assert [row.name for row in quarn.rows()] == [server.name for server in network.servers_of("d3")]
    assert requests(quarn, network) == 10


def test_ctrl_f5_refreshes_the_selected_servers(doom):
    quarn, network = doom
    select(quarn, 2, 5)
    quarn.do("keyboard", "ctrl+f5")
    wait_for_scan_to_start(quarn)
    quarn.wait_for_scan()
    servers = network.servers_of("d3")
    asked = [servers[1].name, servers[4].name]
    assert [row.name for row in quarn.rows() if row.name] == asked
    assert requests(quarn, network) == 2


def test_escape_stops_a_scan(doom):
    quarn, network = doom
    quarn.do("keyboard", "f5")
    wait_for_scan_to_start(quarn)
    quarn.do("keyboard", "escape")
    quarn.wait_for_status("Scanning aborted by user.")
    assert requests(quarn, network) < 10


def test_escape_without_a_scan_leaves_the_next_one_alone(doom):
    quarn, network = doom
    quarn.do("keyboard", "escape")
    quarn.press_toolbar("stop")
    scan(quarn)
    assert requests(quarn, network) == 10


def test_escape_in_a_menu_or_dialog_leaves_the_scan_alone(doom):
    quarn, network = doom
    quarn.do("keyboard", "f5")
    wait_for_scan_to_start(quarn)
    quarn.do("keyboard", "alt+x")
    quarn.do.wait("*#32768*", "windows")
    focus = quarn.do.text("focus")
    # Keys act in their order, but later than commands: the last one shows that all have acted.
    quarn.do("keyboard", "escape", "escape", "tab")
    wait_until(lambda: quarn.do.text("focus") != focus, "the keys have acted")
    quarn.choose("mnuInfoAbout")
    quarn.do.wait("*", "use", "About Quarn")
    quarn.do("keyboard", "escape")
    quarn.do("use")
    quarn.do.wait(0, "is-open", "About Quarn")
    quarn.wait_for_scan()
    assert requests(quarn, network) == 10


def test_f5_held_down_scans_once(doom):
    quarn, network = doom
    quarn.do("hold-key", "f5", 8)
    wait_for_scan_to_start(quarn)
    quarn.wait_for_scan()
    assert requests(quarn, network) == 10


def test_delete_removes_the_selected_servers_and_goes_on_to_the_next(quarn):
    select(quarn, 2, 3)
    quarn.do("keyboard", "delete")
    quarn.wait_for_rows(3)
    assert [row.name for row in quarn.rows()] == ["Server 1", "Server 4", "Server 5"]
    quarn.do.wait("2", "selected-rows", quarn.control("lvwServers"))
    assert quarn.status(3) == "3 servers"
    assert quarn.close() == 0


def test_delete_held_down_removes_one_server(quarn):
    select(quarn, 2)
    quarn.do("hold-key", "delete", 8)
    quarn.wait_for_rows(4)
    quarn.choose("mnuServCopyAddress")  # comes behind the keys
    quarn.do.wait("127.0.0.*:27960", "clipboard")
    assert quarn.row_count() == 4
    assert quarn.close() == 0


def test_delete_outside_the_list_removes_nothing(quarn):
    select(quarn, 2)
    quarn.do("keyboard", "shift+tab", "delete", "tab", "ctrl+c")
    quarn.do.wait("127.0.0.2:27960", "clipboard")
    assert quarn.row_count() == 5
    assert quarn.close() == 0


def test_ctrl_c_copies_the_address(quarn):
    select(quarn, 4)
    quarn.do("keyboard", "ctrl+c")
    quarn.do.wait("127.0.0.4:27960", "clipboard")
    assert quarn.close() == 0


def test_ctrl_a_selects_every_server(quarn):
    select(quarn, 2)
    quarn.do("keyboard", "ctrl+a")
    quarn.do.wait("1 2 3 4 5", "selected-rows", quarn.control("lvwServers"))
    assert quarn.close() == 0


def test_ctrl_r_renews_the_list(quarn):
    quarn.do("keyboard", "ctrl+r")
    quarn.answer("Clear server list", "No")
    assert quarn.row_count() == 5
    assert quarn.close() == 0


def test_f2_renames_the_folder_that_is_selected_in_the_tree(quarn):
    quarn.do("keyboard", "f2")  # the list has the focus: nothing to rename there
    quarn.click_tree("Favorites", "Friends")
    quarn.do.wait("Friends", "selected-node", quarn.control("trvGames"))
    quarn.do("keyboard", "f2")
    quarn.do.wait("*", "use", "Change name")
    quarn.do("type", "Rivals")
    quarn.do("keyboard", "enter")
    quarn.do("use")
    quarn.do.wait("Rivals", "selected-node", quarn.control("trvGames"))
    assert quarn.close() == 0


def test_f1_opens_the_help(quarn):
    # The help file is not there, so the system's viewer is loaded and shows nothing.
    process = Process(quarn.folder / "Quarn.exe")
    assert not process.has_loaded("hhctrl.ocx")
    quarn.do("keyboard", "f1")
    wait_until(lambda: process.has_loaded("hhctrl.ocx"), "the viewer is loaded")
    assert quarn.close() == 0


@pytest.fixture
def recorded(folder, start, tmp_path):
    game = RecordedGame(tmp_path / "game")
    place = folder()
    (place / "Games.ini").write_text(
        "[General]\r\nGameNum=1\r\n[Game1]\r\nDescription=Arena\r\nExeName=recorder.exe\r\n"
        "GameShort=q3\r\nEngine=q3\r\n",
        newline="",
    )
    (place / "servers-q3.dat").write_text(SERVERS, newline="")
    write_settings(place, 1, Games__Path1=game.folder)
    quarn = start(place)
    quarn.wait_until_usable()
    quarn.wait_for_rows(5)
    return quarn, game


@pytest.mark.parametrize("times", [1, 8])
def test_enter_joins_once(recorded, tmp_path, times):
    quarn, game = recorded
    select(quarn, 3)
    quarn.do("hold-key", "enter", times)
    game.start()
    quarn.choose("mnuServCopyAddress")  # comes behind the keys
    quarn.do.wait("*:27960", "clipboard")
    assert quarn.close() == 0
    assert (tmp_path / "game" / "starts.txt").read_text() == "*"
