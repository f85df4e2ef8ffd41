"""How the program starts and ends, and the files it leaves behind."""

import re

import pytest

from harness.quarn import fresh_folder, write_settings
from harness.places import PROGRAM_FOLDER, wait_until

FIXED_NODES = ["Filters", "  Open servers only", "  Ping", "    <= 20", "    <= 50", "    <= 100"]
NO_GAME = (
    "Quarn has detected that no game has been set up yet.\r\n"
    "Therefore, the game setup menu will be opened now, please set up\r\n"
    "the games to your liking."
)
LAST_ENTRY = r"frmMain;Form_Unload;\d\d/\d\d/\d\d \d\d:\d\d:\d\d\.\d{3};0;Application terminated normally\r\n"

SETTINGS_AFTER_FIRST_RUN = """\
[General]
MinToTray=1
KeepOnTop=0
RemWinPos=0
WinTop={top}
WinLeft={left}
WinHeight={height}
WinWidth={width}
WinState=0
[Selection]
LastGame=1
LastServer=1
LastSortColumn=1
LastSortOrder=1
[Filter]
Locked=1
Ping=1
[Scanning]
PingTimeout=1000
[Favorites]
Number=2
Name1=
Name2=
Name3=
Name4=
Name5=
Name6=
Name7=
Name8=
Name9=
[Launcher]
QuitAfterStart=0
[Games]
"""
TWIPS_PER_PIXEL = 15


def past_the_first_start(quarn):
    """Answers what the program asks while it has no games."""
    assert quarn.message("Quarn - Error") == NO_GAME
    quarn.answer("Quarn - Error", "OK")
    quarn.answer("Game Setup", "Cancel")
    quarn.wait_until_usable()


def definitions_of_shipped_games():
    return int(re.search(r"GameNum=(\d+)", (PROGRAM_FOLDER / "Games.ini").read_text("latin-1")).group(1))


def test_first_start_leads_to_the_game_setup_and_stays_usable(folder, start):
    quarn = start(folder())
    past_the_first_start(quarn)
    assert quarn.tree() == ["Games", "Favorites", "  ", "  "] + FIXED_NODES
    assert quarn.status(3) == "0 servers"
    assert set(quarn.toolbar_states()) == {"disabled", "separator"}
    quarn.click_tree("Filters", "Open servers only")
    assert quarn.close() == 0


def test_first_exit_writes_every_setting(folder, start):
    quarn = start(folder())
    past_the_first_start(quarn)
    left, top, width, height = map(int, quarn.do.text("rectangle").split())
    assert quarn.close() == 0

    expected = SETTINGS_AFTER_FIRST_RUN.format(
        left=left * TWIPS_PER_PIXEL,
        top=top * TWIPS_PER_PIXEL,
        width=width * TWIPS_PER_PIXEL,
        height=height * TWIPS_PER_PIXEL,
    )
    for number in range(1, definitions_of_shipped_games() + 1):
        expected += f"Path{number}=\nConfig{number}=\nName{number}=\nVisible{number}=0\n"
    assert (quarn.folder / "Quarn.ini").read_bytes() == expected.replace("\n", "\r\n").encode()


def test_a_run_keeps_the_settings_it_found(gamenet, folder, start):
    program_folder = folder(gamenet("--games", "oa,d3"))
    write_settings(program_folder, games=2, Favorites__Name1="L\xfcneburg", Scanning__PingTimeout=250)
    settings = program_folder / "Quarn.ini"
    with open(settings, "ab") as file:
        file.write(b"Path4=C:\\Somewhere\r\n[Elsewhere]\r\nKept=as it is\r\n")

    def run():
        quarn = start(program_folder)
        quarn.wait_until_usable()
        assert quarn.close() == 0
        return settings.read_bytes()

    completed = run()
    for line in (
        b"Name1=L\xfcneburg",
        b"PingTimeout=250",
        b"Visible2=1",
        b"LastGame=9",
        b"Locked=0",
        b"Ping=0",
    ):
        assert line + b"\r\n" in completed
    assert b"Path4=C:\\Somewhere\r\n[Elsewhere]\r\nKept=as it is\r\n" in completed
    assert b"Path3=" not in completed
    assert run() == completed


def test_the_log_holds_the_last_entry_alone(folder, start):
    quarn = start(folder())
    past_the_first_start(quarn)
    assert [line.split(";")[:2] for line in quarn.log().splitlines()] == [
        ["modMain", "Main"],
        ["frmMain", "Form_Load"],
    ]
    assert quarn.close() == 0
    assert re.fullmatch(LAST_ENTRY, quarn.log())


def test_arguments_change_nothing(folder, start):
    place = folder()
    write_settings(place, games=1)
    (place / "servers-q3.dat").write_bytes(b" 1\r\n127.0.0.1;27960;--;One;5;0;8;baseq3;q3dm1;0;;;\r\n")

    def run(arguments):
        quarn = start(place, arguments=arguments)
        quarn.wait_until_usable()
        shown = [quarn.do(what) for what in ("windows", "state", "rectangle", "top-most")]
        shown += [quarn.tree(), quarn.selected_node(), quarn.rows(), quarn.status(3), quarn.toolbar_states()]
        assert quarn.close() == 0
        files = {file.name: file.read_bytes() for file in place.iterdir() if file.suffix != ".log"}
        return shown, files

    run("")  # completes the settings
    plain = run("")
    assert len(plain[0][6]) == 1
    for arguments in ("/? --help -h", "servers-q3.dat", '"unpaired', "/minimized " + "x" * 10000):
        assert run(arguments) == plain, arguments


def test_works_in_a_folder_that_the_code_page_cannot_name(tmp_path, start):
    program_folder = fresh_folder(tmp_path / "\u0418\u0433\u0440\u0430 \u03a9")
    write_settings(program_folder, games=1)
    (program_folder / "servers-q3.dat").write_bytes(
        b" 1\r\n127.0.0.1;27960;--;One;5;0;8;baseq3;q3dm1;0;;;\r\n"
    )
    quarn = start(program_folder)
    quarn.wait_until_usable()
    assert [row.name for row in quarn.rows()] == ["One"]
    assert quarn.log().startswith("modMain;Main;")
    quarn.do("select-rows", quarn.control("lvwServers"), 1)
    quarn.choose("mnuServDelete")
    quarn.wait_for_rows(0)
    quarn.click_tree("Games")
    quarn.do.wait("Games", "selected-node", quarn.control("trvGames"))
    assert quarn.close() == 0
    assert (program_folder / "servers-q3.dat").read_bytes() == b" 0\r\n"
    assert b"QuitAfterStart=0\r\n" in (program_folder / "Quarn.ini").read_bytes()
    assert {path.name for path in tmp_path.iterdir()} == {program_folder.name}


def test_a_second_instance_only_logs(browse):
    quarn, _ = browse("oa")
    before = quarn.do("windows")
    assert quarn.run_second_instance() == 0
    assert quarn.do("windows") == before
    assert quarn.log().splitlines()[-1].endswith(";0;Quarn is already running.")
    assert quarn.close() == 0


def test_without_definitions_there_are_no_games(folder, start):
    program_folder = folder()
    (program_folder / "Games.ini").unlink()
    quarn = start(program_folder)
    past_the_first_start(quarn)
    assert quarn.close() == 0
    assert (program_folder / "Quarn.ini").read_bytes().endswith(b"[Launcher]\r\nQuitAfterStart=0\r\n")


@pytest.mark.parametrize(
    "definitions",
    [
        pytest.param(b"", id="empty"),
        pytest.param(bytes(range(256)) * 64, id="noise"),
        pytest.param(b"[General]\r\nGameNum=abc\r\n", id="no number"),
        pytest.param(b"[General\r\nGameNum=1\r\n[Game1]\r\nGameShort=a", id="cut off"),
    ],
)
def test_damaged_definitions_leave_a_usable_program(folder, start, definitions):
    program_folder = folder()
    (program_folder / "Games.ini").write_bytes(definitions)
    quarn = start(program_folder)
    past_the_first_start(quarn)
    assert quarn.tree()[0] == "Games"
    quarn.leave()
    assert re.fullmatch(LAST_ENTRY, quarn.log())


def dismiss_what_is_shown(quarn):
    """Answers errors until the window itself can be used, which it cannot before its tree is filled."""

    def usable():
        if quarn.do("is-open", "Quarn - Error") == ["1"]:
            quarn.answer("Quarn - Error", "OK")
        return [row[2] for row in quarn.do.table("windows")] == ["enabled"] and quarn.tree()

    wait_until(usable, "the window can be used")


@pytest.mark.parametrize("value", ["-2147483648", "2147483647", "99999999999", "-1", "many"])
def test_settings_out_of_range_leave_a_usable_program(folder, start, value):
    program_folder = folder()
    keys = re.findall(r"^\w+(?==)", SETTINGS_AFTER_FIRST_RUN, re.M)
    lines = [
        line if line.startswith("[") else line.partition("=")[0] + "=" + value
        for line in SETTINGS_AFTER_FIRST_RUN.splitlines()
    ]
    games = ["Visible1=1"] + [f"{key}1={value}" for key in ("Path", "Config", "Name")]
    (program_folder / "Quarn.ini").write_text("\r\n".join(lines + games) + "\r\n", newline="")
    quarn = start(program_folder)
    dismiss_what_is_shown(quarn)
    assert quarn.tree()[0].strip() == "Games"
    quarn.choose("mnuExtrasOptions")
    quarn.answer("Options", "OK")
    dismiss_what_is_shown(quarn)
    quarn.leave()
    assert re.fullmatch(LAST_ENTRY, quarn.log())
    kept = (program_folder / "Quarn.ini").read_text("latin-1")
    assert set(keys) <= set(re.findall(r"^\w+(?==)", kept, re.M))


@pytest.mark.parametrize(
    "count, error",
    [
        pytest.param("-1", "9: Subscript out of range", id="negative"),
        pytest.param("2147483647", "7: Out of memory", id="huge"),
    ],
)
@pytest.mark.parametrize("key", ["GameNum", "MODNum"])
def test_an_impossible_count_ends_the_start_with_a_message(folder, start, key, count, error):
    program_folder = folder()
    (program_folder / "Games.ini").write_text(f"[General]\n{key}={count}\n")
    quarn = start(program_folder)
    assert f"A error has occurred in modMain in Main\r\nError #{error}\r\n" in quarn.message("Quarn - Error")
    quarn.answer("Quarn - Error", "OK")
    quarn.do.exit_code()
    assert re.search(rf"^modMain;Main;[^;]*;{error.replace(': ', ';')}\r$", quarn.log(), re.M)
    assert not (program_folder / "Quarn.ini").exists()


def test_a_counted_game_without_a_section_is_a_game_of_defaults(folder, start):
    program_folder = folder()
    (program_folder / "Games.ini").write_bytes(
        b"[General]\r\nGameNum=2\r\n[Game1]\r\nDescription=Only one$32\r\nGameShort=one\r\nEngine=q3\r\n"
    )
    write_settings(program_folder, games=2)
    quarn = start(program_folder)
    quarn.wait_until_usable()
    assert "  Only one$32" in quarn.tree()
    quarn.leave()
