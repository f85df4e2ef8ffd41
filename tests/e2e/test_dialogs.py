"""The dialogs as a user meets them: what they show, what they keep, and what a cancelled one leaves alone."""

import configparser
import re

import pytest

from harness.places import wait_until
from harness.quarn import write_settings

GAMES_INI = """[General]
IniVer=1050012
IniDesc=Games of the test
GameNum=2
MODNum=0
[Game1]
Description=Arena
ExeName=arena.exe
GameShort=ar
Engine=q3
[Game2]
Description=Crowbar
ExeName=crowbar.exe
GameShort=cb
Engine=hl
"""


@pytest.fixture
def quarn(folder, start):
    place = folder()
    (place / "Games.ini").write_text(GAMES_INI.replace("\n", "\r\n"), newline="")
    write_settings(place, 1, Games__Path1="C:\\Arena", General__MinToTray=0)
    quarn = start(place)
    quarn.wait_until_usable()
    return quarn


def settings(quarn):
    parser = configparser.ConfigParser(interpolation=None)
    parser.read(quarn.folder / "Quarn.ini", "latin-1")
    return parser


class OpenDialog:
    """A dialog of the program, opened by a menu entry."""

    def __init__(self, quarn, menu_entry, title):
        self.quarn, self.do, self.title = quarn, quarn.do, title
        quarn.choose(menu_entry)
        self.do.wait("*", "use", title)

    def __getitem__(self, control):
        return self.do.text("text", self.quarn.control(control))

    def __setitem__(self, control, text):
        self.do("set-text", self.quarn.control(control), text)

    def checked(self, control):
        return self.do.text("checked", self.quarn.control(control)) == "1"

    def press(self, button):
        self.do("press", button if button in ("OK", "Cancel") else self.quarn.control(button))

    def show_tab(self, number, field):
        """Clicks a tab and waits until a field of its page can be used."""
        self.do("tab", self.quarn.control("sstOptions"), number)
        wait_until(lambda: self.is_usable(field), f"{field} is shown")

    def is_usable(self, control):
        number = self.quarn.control(control)
        return any(row[0] == number and row[2] == "enabled" for row in self.do.table("controls"))

    def press_key(self, control, key):
        self.do("key", self.quarn.control(control), key)

    def wait_until_closed(self):
        self.do("use")
        self.do.wait(0, "is-open", self.title)

    def close(self, button):
        self.press(button)
        self.wait_until_closed()


def game_setup(quarn):
    return OpenDialog(quarn, "mnuExtrasGameSetup", "Game Setup")


def options(quarn):
    return OpenDialog(quarn, "mnuExtrasOptions", "Options")


def select_game(dialog, number):
    dialog.do("click-row", dialog.quarn.control("lvwGameSel"), number)


def test_game_setup_shows_each_game(quarn):
    dialog = game_setup(quarn)
    assert dialog["lblDefinition"] == "Games of the test"
    assert dialog["lblDefVersion"] == "1.05.0012"
    games = dialog.do.table("rows", quarn.control("lvwGameSel"))
    assert games == [["Arena"], ["Crowbar"]]
    assert dialog["txtPath"] == "C:\\Arena"
    assert dialog.checked("chkVisible")
    select_game(dialog, 2)
    dialog.do.wait("", "text", quarn.control("txtPath"))
    assert not dialog.checked("chkVisible")
    dialog.close("Cancel")


def test_game_setup_keeps_what_is_typed_for_each_game(quarn):
    dialog = game_setup(quarn)
    dialog["txtPath"] = "D:\\Games\\Arena"
    dialog["txtName"] = 'The "Player"'
    select_game(dialog, 2)
    dialog.do.wait("", "text", quarn.control("txtPath"))
    dialog["txtConfig"] = "my config.cfg"
    dialog.press("chkVisible")
    dialog.close("OK")
    quarn.do.wait("*Crowbar*", "tree", quarn.control("trvGames"))

    again = game_setup(quarn)
    assert again["txtPath"] == "D:\\Games\\Arena"
    assert again["txtName"] == 'The "Player"'
    again.close("Cancel")
    assert quarn.close() == 0
    games = settings(quarn)["Games"]
    assert games["Path1"] == "D:\\Games\\Arena"
    assert games["Name1"] == 'The "Player"'
    assert games["Config2"] == "my config.cfg"
    assert games["Visible2"] == "1"


@pytest.mark.parametrize("way", ["Cancel", "escape", "close box"])
def test_a_cancelled_game_setup_changes_nothing(quarn, way):
    dialog = game_setup(quarn)
    dialog["txtPath"] = "E:\\"
    dialog.press("chkVisible")
    if way == "Cancel":
        dialog.press("Cancel")
    elif way == "escape":
        dialog.press_key("txtPath", "escape")
    else:
        dialog.do("close")
    dialog.wait_until_closed()
    assert quarn.close() == 0
    assert settings(quarn)["Games"]["Path1"] == "C:\\Arena"
    assert settings(quarn)["Games"]["Visible1"] == "1"


def test_options_show_and_keep_the_settings(quarn):
    dialog = options(quarn)
    assert not dialog.checked("chkMinToTray")
    assert dialog["txtScanPingTimeout"] == "1000"
    assert dialog.checked("optQuitAfterLaunch0")
    numbers = dialog.do("items", quarn.control("cmbNumFavorites"))
    assert [re.sub(r"^\W", "", number) for number in numbers] == [str(n) for n in range(1, 10)]

    dialog.press("chkRemWinPos")
    dialog.show_tab(1, "txtScanPingTimeout")
    dialog["txtScanPingTimeout"] = "-250"
    dialog.show_tab(2, "cmbNumFavorites")
    dialog.press("optQuitAfterLaunch2")
    dialog.do("choose", quarn.control("cmbNumFavorites"), "4")
    dialog.close("OK")
    assert quarn.close() == 0
    kept = settings(quarn)
    assert kept["General"]["RemWinPos"] == "1"
    assert kept["General"]["MinToTray"] == "0"
    assert kept["Scanning"]["PingTimeout"] == "-250"
    assert kept["Launcher"]["QuitAfterStart"] == "2"
    assert kept["Favorites"]["Number"] == "4"


def test_the_window_stays_on_top_from_the_moment_it_is_asked_to(quarn):
    for on_top in ("1", "0"):
        dialog = options(quarn)
        dialog.press("chkKeepOnTop")
        dialog.close("OK")
        quarn.do.wait(on_top, "top-most")
    assert quarn.close() == 0


@pytest.mark.parametrize("text", ["", "soon", "2147483648", "1 s"])
def test_options_insist_on_a_number_of_milliseconds(quarn, text):
    dialog = options(quarn)
    dialog.press("chkRemWinPos")
    dialog.show_tab(1, "txtScanPingTimeout")
    dialog["txtScanPingTimeout"] = text
    dialog.show_tab(0, "chkMinToTray")
    dialog.press("OK")
    assert quarn.message("Quarn - Error") == "The scan timeout must be a whole number of milliseconds!"
    quarn.answer("Quarn - Error", "OK")
    dialog.do("use", "Options")
    wait_until(lambda: dialog.is_usable("txtScanPingTimeout"), "the page with the field is in front")
    assert dialog["txtScanPingTimeout"] == text
    dialog.close("Cancel")
    assert quarn.close() == 0
    assert settings(quarn)["General"]["RemWinPos"] == "0"
    assert settings(quarn)["Scanning"]["PingTimeout"] == "1000"


def test_about_shows_the_version(quarn):
    dialog = OpenDialog(quarn, "mnuInfoAbout", "About Quarn")
    assert re.fullmatch(r"Version \d+\.\d+\.\d+", dialog["lblVersion"])
    dialog.close("OK")
    assert quarn.close() == 0


def test_closing_the_window_closes_its_dialogs_first(quarn):
    dialog = game_setup(quarn)
    dialog["txtPath"] = "E:\\"
    dialog.do("use")
    quarn.do("post", ".", 0x10)  # WM_CLOSE, as the taskbar sends it
    assert quarn.do.exit_code() == 0
    assert settings(quarn)["Games"]["Path1"] == "C:\\Arena"
    assert "Application terminated normally" in quarn.log()
