"""Every dialog by the keyboard alone: opened from the menu, walked through with Tab, filled in and closed.
The keys are real ones: they go where the focus is."""

import pytest

from harness.quarn import write_settings
from test_dialogs import GAMES_INI, settings

ABOUT = ("alt+x", "right", "up", "enter")
SERVERS = " 1\r\n127.0.0.1;27960;--;One;5;0;8;baseq3;q3dm1;0;;;\r\n"


class Keyboard:
    """The user's hands, and what they find under the caret."""

    def __init__(self, quarn):
        self.quarn, self.do = quarn, quarn.do

    def press(self, *keys):
        if keys:
            self.do("keyboard", *keys)

    def type(self, text):
        self.do("type", text)

    def opens(self, title, *keys):
        self.press(*keys)
        self.do.wait("*", "use", title)

    def closes(self, title, key):
        self.press(key)
        self.do("use")
        self.do.wait(0, "is-open", title)

    def is_on(self, control):
        number = {"OK": "#1", "Cancel": "#2"}.get(control) or self.quarn.control(control)
        self.do.wait(number, "focus")

    def walks(self, *controls):
        for control in controls:
            self.press("tab")
            self.is_on(control)

    def reads(self, control, text):
        self.do.wait(text, "text", self.quarn.control(control))


@pytest.fixture
def hands(folder, start):
    place = folder()
    (place / "Games.ini").write_text(GAMES_INI.replace("\n", "\r\n"), newline="")
    (place / "servers-ar.dat").write_text(SERVERS, newline="")
    write_settings(place, 1, General__MinToTray=0)
    quarn = start(place)
    quarn.wait_until_usable()
    return Keyboard(quarn)


def kept_settings(hands):
    assert hands.quarn.close() == 0
    return settings(hands.quarn)


def test_game_setup(hands):
    hands.opens("Game Setup", "alt+x", "g")
    hands.is_on("lvwGameSel")
    hands.press("down")
    hands.walks("txtPath")
    hands.type("C:\\Crowbar")
    hands.walks("cmdBrowse", "txtConfig", "txtName")
    hands.type("Player 1")
    hands.walks("chkVisible", "OK", "Cancel", "lvwGameSel")
    hands.press("alt+v")
    hands.is_on("chkVisible")
    hands.press("shift+tab")
    hands.is_on("txtName")
    hands.closes("Game Setup", "enter")
    games = kept_settings(hands)["Games"]
    assert (games["Path2"], games["Name2"], games["Visible2"]) == ("C:\\Crowbar", "Player 1", "1")
    assert (games["Path1"], games["Name1"], games["Visible1"]) == ("", "", "1")


def test_the_folder_browser_is_reached_and_left(hands):
    hands.opens("Game Setup", "alt+x", "g")
    hands.opens("Browse*", "alt+b")
    hands.closes("Browse*", "escape")
    hands.opens("Quarn - Error")
    hands.closes("Quarn - Error", "enter")
    hands.do("use", "Game Setup")
    hands.closes("Game Setup", "escape")
    assert kept_settings(hands)["Games"]["Path1"] == ""


def test_options(hands):
    hands.opens("Options", "alt+x", "o")
    hands.is_on("sstOptions")
    hands.walks("chkMinToTray", "chkKeepOnTop", "chkRemWinPos")
    hands.press("space")
    hands.walks("OK", "Cancel", "sstOptions")
    hands.press("right")
    hands.walks("txtScanPingTimeout")
    hands.type("250")
    hands.press("shift+tab")
    hands.is_on("sstOptions")
    hands.press("right")
    hands.walks("optQuitAfterLaunch0")
    hands.press("up")
    hands.is_on("optQuitAfterLaunch2")
    hands.walks("cmbNumFavorites")
    hands.type("7")
    hands.closes("Options", "enter")
    kept = kept_settings(hands)
    assert kept["General"]["RemWinPos"] == "1"
    assert kept["General"]["KeepOnTop"] == "0"
    assert kept["Scanning"]["PingTimeout"] == "250"
    assert kept["Launcher"]["QuitAfterStart"] == "2"
    assert kept["Favorites"]["Number"] == "7"


def test_server_password(hands):
    password = ("alt+s", "down", "down", "enter")
    hands.opens("Server Password", *password)
    hands.is_on("txtPass")
    hands.type("open Sesame")
    hands.closes("Server Password", "enter")
    hands.opens("Server Password", *password)
    hands.reads("txtPass", "open Sesame")
    hands.walks("OK", "Cancel", "txtPass")
    hands.type("x")
    hands.closes("Server Password", "escape")
    hands.opens("Server Password", *password)
    hands.reads("txtPass", "open Sesame")
    hands.closes("Server Password", "escape")
    assert hands.quarn.close() == 0


def test_add_server(hands):
    hands.opens("Add Server", "alt+s", *["down"] * 5, "enter")
    hands.is_on("txtIP")
    hands.type("127.0.0.2")
    hands.walks("txtPort", "OK", "Cancel", "txtIP")
    hands.press("alt+p")
    hands.is_on("txtPort")
    hands.type("27961")
    hands.press("enter")
    hands.is_on("txtIP")
    hands.press("alt+a")
    hands.type("127.0.0.3")
    hands.press("enter")
    hands.closes("Add Server", "escape")
    hands.quarn.wait_for_rows(3)
    assert [row.address for row in hands.quarn.rows()] == [
        "127.0.0.1:27960",
        "127.0.0.2:27961",
        "127.0.0.3:27961",
    ]
    assert hands.quarn.close() == 0


def test_renaming_a_folder(hands):
    hands.is_on("lvwServers")
    hands.press("shift+tab")
    hands.is_on("trvGames")
    hands.press("down", "down")  # past the folders of all favorites to the first of them
    hands.opens("Change name", "apps", "down", "enter")
    hands.type("Friends")
    hands.closes("Change name", "enter")
    hands.do.wait("Friends", "selected-node", hands.quarn.control("trvGames"))
    assert kept_settings(hands)["Favorites"]["Name1"] == "Friends"


def test_about(hands):
    hands.opens("About Quarn", *ABOUT)
    hands.is_on("OK")
    hands.walks("cmdSystemInfo", "OK")
    hands.press("alt+s")  # where the system has no such tool, nothing happens
    hands.is_on("cmdSystemInfo")
    hands.closes("About Quarn", "escape")
    hands.opens("About Quarn", *ABOUT)
    hands.closes("About Quarn", "enter")
    assert hands.quarn.close() == 0
