"""Joining a server: how the game is started, what is handed over and kept, and what the window does then."""

from datetime import datetime

import pytest

from harness.places import RECORDER, wait_until, windows_path
from harness.quarn import write_settings
from test_lists import fetch, scan

EXECUTABLE = "recorder.exe"


class RecordedGame:
    """A program in a game's place that writes down how it was started."""

    def __init__(self, folder):
        folder.mkdir()
        (folder / EXECUTABLE).write_bytes(RECORDER.read_bytes())
        self._record = folder / "recorded.txt"
        self.folder = windows_path(folder)

    def start(self):
        """The command line behind the program's name and the folder it was started in."""
        lines = wait_until(self._lines, "the game was started")
        self._record.unlink()
        return lines[0].partition(f'{EXECUTABLE}"')[2].removeprefix(" "), lines[1]

    def starts(self):
        """How often it was started."""
        return len((self._record.parent / "starts.txt").read_bytes())

    def _lines(self):
        return self._record.exists() and self._record.read_bytes().decode("latin-1").splitlines()


def set_up(quarn, **fields):
    """The first game, in the Game Setup dialog."""
    quarn.choose("mnuExtrasGameSetup")
    quarn.do.wait("*", "use", "Game Setup")
    for field, text in fields.items():
        quarn.do("set-text", quarn.control(field), text)
    quarn.do("press", "OK")
    quarn.do("use")
    quarn.do.wait(0, "is-open", "Game Setup")


def set_password(quarn, password):
    """Of the selected server."""
    quarn.choose("mnuServSetPass")
    quarn.do.wait("*", "use", "Server Password")
    quarn.do("set-text", quarn.control("txtPass"), password)
    quarn.do("press", "OK")
    quarn.do("use")
    quarn.do.wait(0, "is-open", "Server Password")


COMMAND_LINES = {
    "oa": "+set fs_game {mod} +exec {config} +name {name} +set password {password} +connect {address}",
    "d3": "",
    "hl": "+connect {address} -game {mod}",
}
AS_SPECTATOR = {"oa": " +setu team s", "d3": "", "hl": " -s"}
SETUPS = [
    {"config": "", "name": "", "password": ""},
    {"config": 'my "own" file.cfg', "name": "Pl\xe4yer  +1 ^7", "password": 'open "Sesame" +quit'},
]


@pytest.mark.parametrize("game", COMMAND_LINES)
def test_a_game_is_told_what_its_family_understands(browse, tmp_path, game):
    quarn, network = browse(game, "--exe", EXECUTABLE, "--end-mark", "none")
    fetch(quarn, network, game)
    scan(quarn)
    recorded = RecordedGame(tmp_path / "a game's folder")
    server = network.servers_of(game)[2]
    quarn.click_row(3)
    quarn.do.wait("3", "selected-rows", quarn.control("lvwServers"))
    for setup in SETUPS:
        set_up(quarn, txtPath=recorded.folder, txtConfig=setup["config"], txtName=setup["name"])
        set_password(quarn, setup["password"])
        expected = COMMAND_LINES[game].format(mod=server.mod, address=server.address, **setup)

        quarn.do("double-click-row", quarn.control("lvwServers"), 3)
        assert recorded.start() == (expected, recorded.folder)
        quarn.choose("mnuServConnectSpec")
        assert recorded.start() == (expected + AS_SPECTATOR[game], recorded.folder)
    assert quarn.close() == 0


def test_a_visit_is_noted_and_handed_over(browse, tmp_path):
    quarn, network = browse("d3", "--exe", EXECUTABLE)
    fetch(quarn, network, "d3")
    scan(quarn)
    recorded = RecordedGame(tmp_path / "game")
    set_up(quarn, txtPath=recorded.folder)
    server = network.servers_of("d3")[2]
    earliest = datetime.now().replace(microsecond=0)
    quarn.do("double-click-row", quarn.control("lvwServers"), 3)
    recorded.start()
    handed_over = (quarn.folder / "server.txt").read_bytes().decode("latin-1")
    assert handed_over == f"{server.name} {server.address}\r\n"
    visited = datetime.strptime(quarn.rows()[2].last_visit, "%m/%d/%Y %I:%M:%S %p")
    assert earliest <= visited <= datetime.now()
    assert quarn.close() == 0


GAMES_INI = f"""[General]
GameNum=1
MODNum=0
[Game1]
Description=Arena
ExeName={EXECUTABLE}
GameShort=ar
Engine=q3
"""
SERVERS = " 1\r\n127.0.0.1;27960;--;One;5;0;8;baseq3;q3dm1;0;;;\r\n"


@pytest.fixture
def open_with(folder, start, tmp_path):
    """Starts the program on a saved list of one server, and names the game in its place."""

    def open_folder(**settings):
        recorded = RecordedGame(tmp_path / "game")
        place = folder()
        (place / "Games.ini").write_text(GAMES_INI.replace("\n", "\r\n"), newline="")
        (place / "servers-ar.dat").write_text(SERVERS, newline="")
        write_settings(place, 1, **{"Games__Path1": recorded.folder, **settings})
        quarn = start(place)
        quarn.wait_until_usable()
        return quarn, recorded

    return open_folder


@pytest.mark.parametrize(
    "action, to_tray, state",
    [
        pytest.param(0, 1, "normal", id="nothing"),
        pytest.param(1, 0, "minimized", id="to the taskbar"),
        pytest.param(1, 1, "hidden", id="to the tray"),
        pytest.param(3, 1, "normal", id="an unknown action"),
    ],
)
def test_the_window_goes_where_it_should(open_with, action, to_tray, state):
    quarn, recorded = open_with(Launcher__QuitAfterStart=action, General__MinToTray=to_tray)
    quarn.do("double-click-row", quarn.control("lvwServers"), 1)
    recorded.start()
    quarn.do.wait(state, "state")
    quarn.choose("mnuServCopyAddress")  # runs behind the start, so the state does not change any more
    quarn.do.wait("127.0.0.1:27960", "clipboard")
    assert quarn.do.text("state") == state
    quarn.do("post", ".", 0x10)  # WM_CLOSE: a hidden window has no close box
    assert quarn.do.exit_code() == 0


def test_the_program_ends_after_the_start(open_with):
    quarn, recorded = open_with(Launcher__QuitAfterStart=2)
    quarn.do("double-click-row", quarn.control("lvwServers"), 1)
    recorded.start()
    assert quarn.do.exit_code() == 0
    assert quarn.log().endswith(";0;Application terminated normally\r\n")
    settings = (quarn.folder / "Quarn.ini").read_text("latin-1")
    assert f"Path1={recorded.folder}\\\n" in settings


@pytest.mark.parametrize("action", [1, 2])
def test_without_a_game_the_window_stays(open_with, action):
    quarn, recorded = open_with(Launcher__QuitAfterStart=action, Games__Path1="C:\\no such folder")
    quarn.do("double-click-row", quarn.control("lvwServers"), 1)
    assert quarn.message("Quarn - Error") == "The game executable could not be found. Please check game path!"
    quarn.answer("Quarn - Error", "OK")
    quarn.answer("Game Setup", "Cancel")
    assert quarn.do.text("state") == "normal"
    assert quarn.rows()[0].last_visit != ""
    assert not (quarn.folder / "server.txt").exists()
    assert quarn.close() == 0


def test_a_record_that_cannot_be_written_stops_no_game(open_with):
    quarn, recorded = open_with()
    (quarn.folder / "server.txt").mkdir()
    quarn.do("double-click-row", quarn.control("lvwServers"), 1)
    recorded.start()
    assert "\nmodGameStart;StartGame;" in quarn.log()
    quarn.leave()
