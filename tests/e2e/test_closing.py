"""Closing the program while something is open in front of its window: whatever it is and however the program is
closed, it ends at once, with everything stored."""

import pytest

from harness.places import wait_until, windows_path
from harness.quarn import write_settings
from test_dialogs import GAMES_INI

SERVERS = " 1\r\n127.0.0.1;27960;--;One;5;0;8;baseq3;q3dm1;0;;;\r\n"

WM_CLOSE = 0x10
WM_QUERYENDSESSION = 0x11
WM_ENDSESSION = 0x16
WM_SYSCOMMAND = 0x112
SC_CLOSE = 0xF060

# After five seconds the program gives up and ends without having cancelled what is open.
CANCELLED_SECONDS = 4


def started(folder, start, games=1):
    place = folder()
    (place / "Games.ini").write_text(GAMES_INI.replace("\n", "\r\n"), newline="")
    (place / "servers-ar.dat").write_text(SERVERS, newline="")
    write_settings(place, games, General__MinToTray=1, Favorites__Name1="Friends")
    quarn = start(place)
    if games:
        quarn.wait_until_usable()
        quarn.wait_for_rows(1)
    return quarn


def choose(entry, title):
    def open_it(quarn):
        quarn.choose(entry)
        quarn.do.wait("*", "use", title)

    return open_it


def of_selected_server(entry, title):
    def open_it(quarn):
        quarn.click_row(1)
        quarn.do.wait("1", "selected-rows", quarn.control("lvwServers"))
        choose(entry, title)(quarn)

    return open_it


def first_start_box(quarn):
    quarn.do.wait("*", "use", "Quarn - Error")


def game_setup_of_the_first_start(quarn):
    quarn.answer("Quarn - Error", "OK")
    quarn.do.wait("*", "use", "Game Setup")


def rename_box(quarn):
    quarn.click_tree("Favorites", "Friends")
    quarn.do.wait("Friends", "selected-node", quarn.control("trvGames"))
    choose("mnuTreeRename", "Change name")(quarn)


def folder_browser(quarn):
    choose("mnuExtrasGameSetup", "Game Setup")(quarn)
    quarn.do("press", quarn.control("cmdBrowse"))
    quarn.do.wait("*", "use", "Browse*")


def box_over_a_dialog(quarn):
    choose("mnuServAdd", "Add Server")(quarn)
    quarn.do("press", "OK")
    quarn.do.wait("*", "use", "Quarn - Error")


def overwrite_question(quarn):
    existing = quarn.folder / "list.txt"
    existing.write_text("kept")
    choose("mnuServerListExport", "Save serverlist as...")(quarn)
    quarn.do("set-text", "#1148", windows_path(existing))
    quarn.do("press", "Save")
    wait_until(lambda: len(quarn.do("windows")) == 3, "the question is open")


def menu(quarn):
    quarn.do.wait("*#32768*", "windows")


def menu_of_the_bar(quarn):
    quarn.do("keyboard", "alt+s")
    menu(quarn)


def menu_of_the_list(quarn):
    quarn.do("right-click-row", quarn.control("lvwServers"), 1)
    menu(quarn)


def menu_of_the_tree(quarn):
    quarn.do("right-click-node", quarn.control("trvGames"), "Favorites", "Friends")
    menu(quarn)


def menu_of_the_toolbar(quarn):
    quarn.click_row(1)
    quarn.press_toolbar("favorites")
    menu(quarn)


OPEN = {
    "question": choose("mnuServerListClear", "Clear server list"),
    "failed join": of_selected_server("mnuServConnectPlay", "Quarn - Error"),
    "password": of_selected_server("mnuServSetPass", "Server Password"),
    "add server": choose("mnuServAdd", "Add Server"),
    "box over add server": box_over_a_dialog,
    "game setup": choose("mnuExtrasGameSetup", "Game Setup"),
    "folder browser": folder_browser,
    "options": choose("mnuExtrasOptions", "Options"),
    "about": choose("mnuInfoAbout", "About Quarn"),
    "rename": rename_box,
    "save": choose("mnuServerListExport", "Save serverlist as..."),
    "overwrite": overwrite_question,
    "menu bar": menu_of_the_bar,
    "list menu": menu_of_the_list,
    "tree menu": menu_of_the_tree,
    "toolbar menu": menu_of_the_toolbar,
}


def close_from_outside(quarn):
    quarn.do("post", ".", WM_CLOSE)


def close_by_the_caption(quarn):
    quarn.do("post", ".", WM_SYSCOMMAND, SC_CLOSE)


def quit_by_the_menu(quarn):
    quarn.do("post", ".", 0x111, quarn._numbers["mnuFileQuit"])


def quit_by_the_tray(quarn):
    quarn.do("post", ".", 0x111, quarn._numbers["mnuSysQuit"])


def end_of_the_session(quarn):
    quarn.do("post", ".", WM_QUERYENDSESSION)
    quarn.do("post", ".", WM_ENDSESSION, 1)


# The caption and the menu of a window in front of which a dialog is open cannot be reached.
OVER_A_DIALOG = [close_from_outside, quit_by_the_tray, end_of_the_session]
OVER_A_MENU = [*OVER_A_DIALOG, close_by_the_caption, quit_by_the_menu]
DIALOGS = [(opened, close) for opened in OPEN if "menu" not in opened for close in OVER_A_DIALOG]
MENUS = [(opened, close) for opened in OPEN if "menu" in opened for close in OVER_A_MENU]


def expect_a_clean_end(quarn):
    assert quarn.do.exit_code() == 0
    assert quarn.log().endswith(";0;Application terminated normally\r\n")
    settings = (quarn.folder / "Quarn.ini").read_text("latin-1")
    assert "\nName1=Friends\n" in settings
    assert "\nLastSortColumn=" in settings


@pytest.mark.parametrize("opened, close", DIALOGS + MENUS)
def test_whatever_is_open_is_cancelled(folder, start, opened, close):
    quarn = started(folder, start)
    OPEN[opened](quarn)
    quarn.do("use")
    quarn.do("timeout", CANCELLED_SECONDS)
    close(quarn)
    expect_a_clean_end(quarn)
    if opened == "overwrite":
        assert (quarn.folder / "list.txt").read_text() == "kept"


@pytest.mark.parametrize("close", OVER_A_DIALOG)
@pytest.mark.parametrize("opened", [first_start_box, game_setup_of_the_first_start])
def test_what_a_first_start_opens_is_cancelled(folder, start, opened, close):
    quarn = started(folder, start, games=0)
    opened(quarn)
    quarn.do("use")
    quarn.do("timeout", CANCELLED_SECONDS)
    close(quarn)
    expect_a_clean_end(quarn)
