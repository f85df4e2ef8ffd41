"""Moving through the window with real keys: what the tree, the list and the details follow, and what they do
not."""

import pytest

from harness.lists import make_servers, put_lists
from harness.picture import painted
from harness.places import wait_until
from harness.quarn import write_settings

VARIABLES = "\\sv_number\\{}"
ADDRESS = "9.9.9.9"


@pytest.fixture
def quarn(folder, start):
    """Two games: "Arena" with 40 servers named by their number, half of them locked, and "Crow" with none."""
    place = folder()
    put_lists(place, make_servers(1))
    rows = [" 40"]
    for number in range(1, 41):
        letter = chr(ord("a") + number % 26)
        rows.append(
            f"127.0.0.{number};27960;--;{letter} server {number};50;0;8;osp;q3dm1;{number % 2};;"
            f"{VARIABLES.format(number)};"
        )
    (place / "servers-ar.dat").write_text("".join(f"{row}\r\n" for row in rows), newline="")
    write_settings(place, 2, General__MinToTray=0, Favorites__Name1="Friends")
    program = start(place)
    program.wait_until_usable()
    program.wait_for_rows(40)
    return program


def number_of(row):
    return row.address.split(":")[0].rpartition(".")[2]


def wait_for_details_of(quarn, row):
    wait_until(
        lambda: quarn.variables() == [["sv_number", number_of(row)]], "the details are those of the row"
    )


def newly_selected_row(quarn):
    """While the selection moves there may be two."""
    selected = quarn.do.text("selected-rows", quarn.control("lvwServers"))
    return int(selected) if selected.isdigit() and selected != "3" else None


@pytest.mark.parametrize("key", ["end", "home", "pagedown", "h"])
def test_the_details_follow_every_key_that_moves_the_selection(quarn, key):
    rows = quarn.rows()
    quarn.click_row(3)
    wait_for_details_of(quarn, rows[2])
    quarn.do("keyboard", key)
    row = wait_until(lambda: newly_selected_row(quarn), "the key has moved the selection")
    selected = rows[row - 1]
    assert key != "h" or selected.name.startswith("h ")
    wait_for_details_of(quarn, selected)
    assert quarn.close() == 0


def test_a_filter_is_reached_and_set_by_keyboard(quarn):
    """The list of the game stays on show while the selection passes the folders."""
    tree = quarn.control("trvGames")
    quarn.click_tree("Games", "Arena")
    quarn.do.wait("Arena", "selected-node", tree)
    quarn.do("keyboard", "end")
    quarn.do.wait("<= 100", "selected-node", tree)
    quarn.do("keyboard", "up", "up", "up", "up")
    quarn.do.wait("Open servers only", "selected-node", tree)
    assert quarn.row_count() == 40
    quarn.do("keyboard", "space")
    quarn.wait_for_rows(20)
    quarn.do("keyboard", "up")
    quarn.do.wait("Filters", "selected-node", tree)
    assert quarn.row_count() == 20
    assert quarn.status(3) == "40 servers"
    assert quarn.close() == 0


def test_a_new_list_begins_at_its_first_row(quarn):
    servers = quarn.control("lvwServers")
    quarn.do("move", 0, 0, 900, 500)
    quarn.click_tree("Games", "Crow")
    quarn.wait_for_rows(0)
    quarn.click_tree("Games", "Arena")
    quarn.wait_for_rows(40)
    at_the_top = painted(quarn, "lvwServers")
    quarn.click_row(1)
    quarn.do("keyboard", "end")
    quarn.do.wait(40, "selected-rows", servers)
    assert painted(quarn, "lvwServers") != at_the_top
    quarn.click_tree("Games", "Crow")
    quarn.wait_for_rows(0)
    quarn.click_tree("Games", "Arena")
    quarn.wait_for_rows(40)
    assert painted(quarn, "lvwServers") == at_the_top
    assert quarn.close() == 0


def test_a_server_added_in_the_tree_goes_to_the_folder_of_the_menu(quarn):
    quarn.do("right-click-node", quarn.control("trvGames"), "Favorites", "Friends")
    quarn.do.wait("*#32768*", "windows")
    quarn.do("keyboard", "up", "enter")
    quarn.do.wait("*", "use", "Add Server")
    quarn.do("set-text", quarn.control("txtIP"), ADDRESS)
    quarn.do("set-text", quarn.control("txtPort"), "27960")
    quarn.do("press", "OK")
    quarn.do("use")
    quarn.wait_for_rows(1)
    assert quarn.rows()[0].address == f"{ADDRESS}:27960"
    quarn.answer("Add Server", "Cancel")
    quarn.click_tree("Games", "Arena")
    quarn.wait_for_rows(40)
    assert quarn.close() == 0
