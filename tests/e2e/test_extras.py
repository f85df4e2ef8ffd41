"""The extras, which are off at first: chosen on their page by real keys, each at work in the real window, and
all of them together."""

import re

import pytest

from harness.places import wait_until
from harness.quarn import write_settings
from test_dialogs import settings
from test_keyboard import Keyboard
from test_lists import fetch, scan

SERVERS = [
    "127.0.0.5;27960;--;Bravo;5;12;16;baseq3;q3dm6;0;;;",
    "127.0.0.3;27961;--;alpha one;6;3;16;osp;q3dm17;0;;;3400000000",
    "127.0.0.9;27962;--;Charlie;7;3;8;cpma;aerowalk;0;;;3300000000",
]
BOXES = {
    "chkAskMasterFirst": "AskMasterFirst",
    "chkListOnce": "ListOnce",
    "chkSaveListAtExit": "SaveListAtExit",
    "chkNaturalSort": "NaturalSort",
    "chkKeepSorted": "KeepSorted",
    "chkShowAtStart": "ShowAtStart",
    "chkSearchBox": "SearchBox",
    "chkAskPassword": "AskPassword",
}
# Alt and the access key of each box, in the order of the boxes.
ACCESS_KEYS = "uosnkwbp"
EXTRAS = {name: 1 for name in BOXES.values()} | {"Simultaneous": 8}
ADDRESS_COLUMN, NAME_COLUMN, PLAYERS_COLUMN, VISIT_COLUMN = 1, 3, 4, 8


@pytest.fixture
def place(folder):
    place = folder()
    (place / "servers-q3.dat").write_text(
        f" {len(SERVERS)}\r\n" + "".join(f"{line}\r\n" for line in SERVERS), newline=""
    )
    write_settings(place, 1, General__MinToTray=0)
    return place


@pytest.fixture
def run(place, start):
    """Starts Quarn with these extras."""

    def start_with(**extras):
        values = {f"Extras__{name}": value for name, value in extras.items()}
        write_settings(place, 1, General__MinToTray=0, **values)
        quarn = start(place)
        quarn.wait_until_usable()
        quarn.wait_for_rows(len(SERVERS))
        return quarn

    return start_with


def names(quarn):
    return [row.name for row in quarn.rows()]


def wait_for_names(quarn, *expected):
    wait_until(lambda: names(quarn) == list(expected), f"the rows are {expected}")


def open_extras(hands):
    hands.opens("Options", "alt+x", "o")
    hands.press("ctrl+tab", "ctrl+tab", "ctrl+tab")
    hands.walks("txtSimultaneous")


def is_shown(quarn, control):
    number = quarn.control(control)
    return any(row[0] == number and row[2] == "enabled" for row in quarn.do.table("controls"))


def test_a_first_run_leaves_no_trace_of_them(folder, start):
    place = folder()
    (place / "Quarn.ini").unlink(missing_ok=True)
    quarn = start(place)
    quarn.answer("Quarn - Error", "OK")
    quarn.answer("Game Setup", "Cancel")
    quarn.wait_until_usable()
    assert not is_shown(quarn, "txtSearch")
    assert quarn.close() == 0
    written = (place / "Quarn.ini").read_bytes().decode("latin-1")
    written = re.sub(r"(Win(?:Top|Left|Height|Width))=\d+", r"\1=#", written)
    games = range(1, written.count("Visible") + 1)
    expected = (
        "[General]|MinToTray=1|KeepOnTop=0|RemWinPos=0|WinTop=#|WinLeft=#|WinHeight=#|WinWidth=#|WinState=0|"
        "[Selection]|LastGame=1|LastServer=1|LastSortColumn=1|LastSortOrder=1|[Filter]|Locked=1|Ping=1|"
        "[Scanning]|PingTimeout=1000|[Favorites]|Number=2|"
        + "".join(f"Name{number}=|" for number in range(1, 10))
        + "[Launcher]|QuitAfterStart=0|[Games]|"
        + "".join(f"Path{n}=|Config{n}=|Name{n}=|Visible{n}=0|" for n in games)
    )
    assert [line for line in written.split("\r\n") if line] == expected.split("|")[:-1]


def test_each_is_chosen_by_its_access_key(run):
    hands = Keyboard(run())
    open_extras(hands)
    hands.type("16")
    for key, box in zip(ACCESS_KEYS, BOXES):
        hands.press(f"alt+{key}")
        hands.is_on(box)
        assert hands.do.text("checked", hands.quarn.control(box)) == "1"
    hands.press("alt+a")
    hands.is_on("txtSimultaneous")
    hands.closes("Options", "enter")
    wait_until(lambda: is_shown(hands.quarn, "txtSearch"), "the search box is shown")
    assert hands.quarn.close() == 0
    kept = settings(hands.quarn)["Extras"]
    assert dict(kept) == {name.lower(): "1" for name in BOXES.values()} | {"simultaneous": "16"}


def test_cancel_chooses_none(run):
    hands = Keyboard(run())
    open_extras(hands)
    hands.type("16")
    hands.press("alt+b")
    hands.closes("Options", "escape")
    assert not is_shown(hands.quarn, "txtSearch")
    assert hands.quarn.close() == 0
    assert "Extras" not in settings(hands.quarn)


def test_a_number_that_is_none_is_shown_again(run):
    hands = Keyboard(run())
    open_extras(hands)
    hands.type("many")
    hands.press("enter")
    assert hands.quarn.message("Quarn - Error").startswith("The number of servers asked at once must be")
    hands.quarn.answer("Quarn - Error", "OK")
    hands.do("use", "Options")
    hands.is_on("txtSimultaneous")
    hands.type("1000")
    hands.closes("Options", "enter")
    assert hands.quarn.close() == 0
    assert settings(hands.quarn)["Extras"]["Simultaneous"] == "64"


@pytest.mark.parametrize("others", [{}, EXTRAS], ids=["alone", "with all others"])
def test_the_search_box_narrows_the_list(run, others):
    quarn = run(**(others | {"SearchBox": 1}))
    hands = Keyboard(quarn)
    quarn.do("click-header", quarn.control("lvwServers"), NAME_COLUMN)
    ascending = ["alpha one", "Bravo", "Charlie"]
    wait_until(lambda: names(quarn) in (ascending, ascending[::-1]), "the rows are sorted")
    shown = names(quarn)
    hands.press("ctrl+f")
    hands.is_on("txtSearch")
    hands.type("DM")
    wait_until(lambda: sorted(names(quarn)) == ["Bravo", "alpha one"], "two maps contain the text")
    hands.type("17")
    wait_for_names(quarn, "alpha one")
    assert quarn.status(3) == "3 servers"
    hands.press("escape")
    hands.is_on("lvwServers")
    wait_for_names(quarn, *shown)
    assert quarn.do.text("text", quarn.control("txtSearch")) == ""
    hands.press("ctrl+f")
    hands.type("127.0.0.9")
    wait_for_names(quarn, "Charlie")
    hands.press("enter")
    hands.is_on("lvwServers")
    assert names(quarn) == ["Charlie"]
    assert quarn.close() == 0


def test_the_search_box_has_a_name_and_its_place_in_the_tab_order(run):
    quarn = run(SearchBox=1)
    hands = Keyboard(quarn)
    named = {number: name for number, _, name in quarn.do.table("accessible")}
    assert named[quarn.control("txtSearch")] == "Search servers"
    hands.press("ctrl+f")
    hands.is_on("txtSearch")
    hands.walks("trvGames", "lvwServers", "lvwPlayers", "lvwServVars", "txtSearch")
    hands.press("shift+tab")
    hands.is_on("lvwServVars")
    assert quarn.close() == 0


def test_keys_in_the_search_box_are_its_own(run):
    quarn = run(SearchBox=1)
    hands = Keyboard(quarn)
    quarn.click_row(1)
    hands.press("ctrl+f")
    hands.type("a")
    hands.press("delete", "ctrl+a", "ctrl+c")
    quarn.do.wait("a", "clipboard")
    hands.press("escape")
    quarn.wait_for_rows(3)
    assert quarn.close() == 0


@pytest.mark.parametrize("dpi", [96, 144, 192])
def test_the_search_box_never_covers_a_button(run, dpi):
    quarn = run(SearchBox=1)
    if dpi != 96:
        quarn.do("change-dpi", 96, dpi)

    def is_inside_the_toolbar():
        left, top, wide, high = map(int, quarn.do.text("rectangle", quarn.control("txtSearch")).split())
        bar = list(map(int, quarn.do.text("rectangle", quarn.control("tbMain")).split()))
        return (
            wide > 0
            and high > 0
            and left + wide <= bar[0] + bar[2]
            and bar[1] <= top
            and top + high <= bar[1] + bar[3]
        )

    for width in (1000, 700, 400, 200):
        quarn.do("move", 0, 0, width * dpi // 96, 600)
        # The window manager moves the window in several steps.
        wait_until(is_inside_the_toolbar, f"the box is inside a toolbar of {width}")
    assert quarn.close() == 0


def test_players_sort_by_number_and_never_visited_first(run):
    quarn = run(NaturalSort=1)
    lists = quarn.control("lvwServers")
    by_number = ["Charlie", "alpha one", "Bravo"]

    def click_and_wait(column, *orders):
        quarn.do("click-header", lists, column)
        wait_until(lambda: names(quarn) in orders, f"the rows are in one of the orders {orders}")
        return names(quarn)

    first = click_and_wait(PLAYERS_COLUMN, by_number, by_number[::-1])
    click_and_wait(PLAYERS_COLUMN, first[::-1])
    visited = ["Bravo", "Charlie", "alpha one"], ["alpha one", "Charlie", "Bravo"]
    first = click_and_wait(VISIT_COLUMN, *visited)
    click_and_wait(VISIT_COLUMN, *(order for order in visited if order != first))
    assert quarn.close() == 0


@pytest.mark.parametrize("keep", [0, 1])
def test_an_added_server_takes_its_place(run, keep):
    quarn = run(KeepSorted=keep)
    unsorted = [row.address for row in quarn.rows()]
    ascending = sorted(unsorted)
    quarn.do("click-header", quarn.control("lvwServers"), ADDRESS_COLUMN)
    orders = [ascending, ascending[::-1]]
    wait_until(lambda: [row.address for row in quarn.rows()] in orders, "the rows are sorted")
    if [row.address for row in quarn.rows()] != ascending:
        quarn.do("click-header", quarn.control("lvwServers"), ADDRESS_COLUMN)
    wait_until(lambda: [row.address for row in quarn.rows()] == ascending, "the rows are in ascending order")
    quarn.choose("mnuServAdd")
    quarn.do.wait("*", "use", "Add Server")
    quarn.do("set-text", quarn.control("txtIP"), "127.0.0.4")
    quarn.do("set-text", quarn.control("txtPort"), "27960")
    quarn.do("press", "OK")
    quarn.do("use")
    quarn.wait_for_rows(4)
    place = 1 if keep else 3
    wait_until(
        lambda: [row.address for row in quarn.rows()].index("127.0.0.4:27960") == place, "it is in its place"
    )
    columns = quarn.do.table("columns", quarn.control("lvwServers"))
    assert bool(columns[ADDRESS_COLUMN][1]) == bool(keep), "the arrow stays with the order"
    quarn.answer("Add Server", "Cancel")
    assert quarn.close() == 0


@pytest.mark.parametrize("save", [0, 1])
def test_the_list_on_show_is_saved_at_the_end(run, place, save):
    quarn = run(SaveListAtExit=save)
    quarn.click_row(1)
    quarn.choose("mnuServDelete")
    quarn.wait_for_rows(2)
    assert quarn.close() == 0
    assert (place / "servers-q3.dat").read_text("latin-1").split("\n")[0].strip() == ("2" if save else "3")


@pytest.mark.parametrize("save", [0, 1])
def test_the_list_on_show_is_saved_before_a_favorite_is_added(browse, save):
    """A list that is fresh from the master has no file yet."""
    quarn, network = browse("oa", "--end-mark", "none", Extras__SaveListAtExit=save)
    fetch(quarn, network, "oa")
    scan(quarn)
    quarn.click_row(2)
    quarn.choose("mnuServAddToFavorites1")
    listed = len(network.servers)
    quarn.wait_for_status(f"{listed if save else 0} servers", panel=3)
    assert quarn.row_count() == listed
    if save:
        quarn.click_row(3)
        wait_until(quarn.variables, "the server's rules are shown")
    quarn.leave()


@pytest.mark.parametrize("show", [0, 1])
def test_a_minimized_window_is_shown_at_the_start(place, start, show):
    write_settings(place, 1, General__MinToTray=0, General__WinState=1, Extras__ShowAtStart=show)
    quarn = start(place)
    quarn.do.wait("normal" if show else "minimized", "state")
    if show:
        quarn.wait_until_usable()
    assert quarn.close() == 0


def test_a_column_keeps_the_width_that_it_was_given(run, start, place):
    quarn = run()
    lists = quarn.control("lvwServers")
    set_width = 0x101E  # LVM_SETCOLUMNWIDTH; column 0 of the control is the name
    quarn.do("post", lists, set_width, 0, 333)
    assert quarn.close() == 0
    assert settings(quarn)["Extras"]["ColumnWidths"] == "0,0,0,4995,0,0,0,0,0,0,0,0,0,0"
    quarn = start(place)
    quarn.wait_until_usable()
    quarn.do("post", lists, set_width, 0, 160)  # the width of its design
    assert quarn.close() == 0
    assert "ColumnWidths" not in settings(quarn)["Extras"]
