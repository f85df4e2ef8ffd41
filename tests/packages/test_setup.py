"""Installing, using, upgrading and removing Quarn as a user does, without administrator rights."""

import zipfile
import zlib
from subprocess import DEVNULL, Popen
from threading import Timer

import pytest

from conftest import OLDER_VERSION, PACKAGES
from harness.driver import Driver
from harness.gamenet import Gamenet
from harness.places import ROOT, windows_path
from harness.quarn import Quarn, write_settings
from release import VERSION

SETUP = PACKAGES / f"Quarn-{VERSION}-setup.exe"
SEED = zlib.crc32(bytes(ROOT)) % 10000
NO_GAME_SET_UP = "Quarn - Error"
# The blank is the dialog's own.
UNINSTALLER_TITLE = "Quarn Uninstall "
QUESTION_TITLE = "Quarn Uninstall"

USERS_FILES = {
    "Quarn.ini": b"[General]\r\nMinToTray=0\r\n",
    "servers-q3.dat": b" 0\r\n",
    "servers-fav1.bak": b"torn",
    "Favorites.ini": b"[fav1]\r\n127.0.0.1:27960=q3\r\n",
    "my own export.txt": b"kept in any case",
}


@pytest.fixture(scope="session")
def shipped():
    """What is installed: names and contents, but for the uninstaller."""
    with zipfile.ZipFile(PACKAGES / f"Quarn-{VERSION}.zip") as packed:
        return {name.removeprefix("Quarn/"): packed.read(name) for name in packed.namelist()}


def add_users_files(installation):
    for name, content in USERS_FILES.items():
        (installation.folder / name).write_bytes(content)


def without_uninstaller(files):
    return {name: content for name, content in files.items() if name != "Uninstall.exe"}


def test_installs_for_the_user_and_says_what_it_is(installation, shipped):
    assert installation.run(SETUP) == 0
    assert without_uninstaller(installation.files()) == shipped
    assert installation.shortcut.exists()
    # The folder that the program is started in, as text of 16 bits a character.
    assert installation.windows_folder.encode("utf-16-le") in installation.shortcut.read_bytes()

    folder = installation.windows_folder
    entry = installation.entry()
    expected = {
        "DisplayName": "Quarn",
        "DisplayVersion": VERSION,
        "Publisher": "The Quarn developers",
        "DisplayIcon": rf"{folder}\Quarn.exe",
        "InstallLocation": folder,
        "UninstallString": rf'"{folder}\Uninstall.exe"',
        "QuietUninstallString": rf'"{folder}\Uninstall.exe" /S',
    }
    assert {name: entry[name] for name in expected} == expected
    size = sum(map(len, shipped.values()))
    assert size <= int(entry["EstimatedSize"], 16) * 1024 < size * 1.05


def test_a_first_installation_names_the_favorites_folders(installation):
    assert installation.run(SETUP) == 0
    with Quarn(installation.folder) as quarn:
        quarn.message(NO_GAME_SET_UP)
        quarn.answer(NO_GAME_SET_UP, "OK")
        quarn.answer("Game Setup", "Cancel")
        quarn.wait_until_usable()
        assert quarn.tree()[:4] == ["Games", "Favorites", "  My servers", "  Friends"]
        assert quarn.close() == 0
    settings = (installation.folder / "Quarn.ini").read_bytes()
    assert b"Name1=My servers\r\nName2=Friends\r\n" in settings and b"[General]" in settings

    assert installation.remove() == 0
    assert installation.files() == {"Quarn.ini": settings}
    assert installation.run(SETUP) == 0
    assert (installation.folder / "Quarn.ini").read_bytes() == settings


def test_an_upgrade_brings_no_settings(installation, older_setup):
    assert installation.run(older_setup) == 0
    (installation.folder / "Quarn.ini").unlink()
    assert installation.run(SETUP) == 0
    assert not (installation.folder / "Quarn.ini").exists()


def test_the_installed_program_fetches_and_scans_a_list(installation, tmp_path):
    assert installation.run(SETUP) == 0
    with Gamenet(tmp_path, "--seed", SEED, "--master-port", 0, "--games", "d3") as network:
        (installation.folder / "Games.ini").write_bytes(network.games_ini.read_bytes())
        (installation.folder / "countryip.dat").write_bytes(network.country_file.read_bytes())
        write_settings(installation.folder, games=1, Scanning__PingTimeout=30000)
        with Quarn(installation.folder) as quarn:
            quarn.wait_until_usable()
            quarn.renew()
            quarn.wait_for_rows(len(network.servers))
            quarn.press_toolbar("refreshall")
            quarn.wait_for_scan()
            assert [(row.address, row.location, row.name) for row in quarn.rows()] == [
                (server.address, server.country, server.name) for server in network.servers
            ]
            assert quarn.close() == 0


def test_an_upgrade_brings_what_is_new_and_keeps_what_is_the_users(installation, older_setup, shipped):
    assert installation.run(older_setup) == 0
    assert installation.entry()["DisplayVersion"] == OLDER_VERSION
    older = installation.files()
    assert older["Quarn.exe"] != shipped["Quarn.exe"] and older["Games.ini"] != shipped["Games.ini"]
    add_users_files(installation)

    assert installation.run(SETUP) == 0
    assert without_uninstaller(installation.files()) == {**shipped, **USERS_FILES}
    assert installation.entry()["DisplayVersion"] == VERSION


def test_an_upgrade_leaves_edited_games_and_countries_alone(installation, older_setup, shipped):
    edited = {"Games.ini": b"[General]\r\nGameNum=0\r\n", "countryip.dat": b"1\r\n0;9;YY\r\n"}
    assert installation.run(older_setup) == 0
    for name, content in edited.items():
        (installation.folder / name).write_bytes(content)

    beside = {"Games.new.ini": shipped["Games.ini"], "countryip.new.dat": shipped["countryip.dat"]}
    for _ in range(2):
        assert installation.run(SETUP) == 0
        assert without_uninstaller(installation.files()) == {**shipped, **beside, **edited}

    assert installation.remove() == 0
    assert installation.files() == edited


def test_nothing_is_touched_while_the_program_runs(installation, older_setup):
    assert installation.run(older_setup) == 0
    before = installation.files()
    with Quarn(installation.folder) as quarn:
        quarn.do.wait("1", "is-open", NO_GAME_SET_UP)
        aborted = 2
        assert installation.run(SETUP) == aborted
        assert installation.remove() == aborted
        during = installation.files()
        del during["Quarn.log"]
        assert during == before
        assert installation.entry()["DisplayVersion"] == OLDER_VERSION


HELD = ["Quarn.exe", "Uninstall.exe", "ReadMe.txt", "Licences/GCC runtime.txt", "Games.ini", "countryip.dat"]


@pytest.mark.parametrize("name", HELD)
def test_a_file_that_stays_held_leaves_the_older_version_whole(installation, older_setup, name):
    assert installation.run(older_setup) == 0
    before = installation.files()
    with Driver() as other:
        other("hold", windows_path(installation.folder / name))
        aborted = 2
        assert installation.run(SETUP) == aborted
    assert installation.files() == before
    assert installation.entry()["DisplayVersion"] == OLDER_VERSION


@pytest.mark.parametrize("name", HELD)
def test_a_file_that_is_held_for_a_moment_is_waited_for(installation, older_setup, name, shipped):
    assert installation.run(older_setup) == 0
    with Driver() as other:
        other("hold", windows_path(installation.folder / name))
        Timer(0.7, other, ["let-go"]).start()
        assert installation.run(SETUP) == 0
    assert without_uninstaller(installation.files()) == shipped


def test_a_folder_that_cannot_be_written_to_is_refused(installation):
    installation.folder.parent.mkdir(parents=True, exist_ok=True)
    installation.folder.write_text("a file in its place")
    try:
        aborted = 2
        assert installation.run(SETUP) == aborted
        assert installation.folder.read_text() == "a file in its place"
    finally:
        installation.folder.unlink()
    assert installation.entry() == {}
    assert not installation.shortcut.exists()


def test_signed_packages_install_signed_files(installation, small_build, pack, tmp_path):
    command = "f() { printf SIGNATURE >>$1; }; f"
    setup = pack(small_build, OLDER_VERSION, tmp_path, sign=command)[1]
    assert installation.run(setup) == 0
    files = installation.files()
    for name in ("Quarn.exe", "Uninstall.exe"):
        assert files[name].endswith(b"SIGNATURE"), name
    assert installation.remove() == 0
    assert not installation.folder.exists()


def test_a_silent_removal_leaves_only_what_is_the_users(installation):
    assert installation.run(SETUP) == 0
    add_users_files(installation)
    (installation.folder / "Quarn.log").write_bytes(b"of the last run")
    (installation.folder / "server.txt").write_bytes(b"of the last game")
    assert installation.remove() == 0
    assert installation.files() == USERS_FILES
    assert installation.entry() == {}
    assert not installation.shortcut.exists()


def test_a_removal_without_settings_leaves_nothing(installation):
    assert installation.run(SETUP) == 0
    assert installation.remove() == 0
    assert not installation.folder.exists()


@pytest.mark.parametrize("answer, kept", [("No", set(USERS_FILES)), ("Yes", {"my own export.txt"})])
def test_a_removal_asks_before_it_takes_settings_and_lists(installation, older_setup, answer, kept):
    assert installation.run(older_setup) == 0
    add_users_files(installation)
    uninstaller = windows_path(installation.folder / "Uninstall.exe")
    running = Popen(
        ["wine", uninstaller, "_?=" + installation.windows_folder], stdout=DEVNULL, stderr=DEVNULL
    )
    try:
        with Driver() as driver:
            driver.wait("*", "attach", "Uninstall.exe")
            driver.wait("*", "use", UNINSTALLER_TITLE)
            driver("press", "Uninstall")
            driver.wait("*", "use", QUESTION_TITLE)
            driver("press", answer)
            driver("use", UNINSTALLER_TITLE)
            driver.wait("*", "press", "Close")
            assert driver.exit_code() == 0
    finally:
        running.kill()
        running.wait()
    assert set(installation.files()) - {"Uninstall.exe"} == kept
