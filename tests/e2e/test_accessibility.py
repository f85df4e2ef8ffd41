"""What users of a screen reader, or of the keyboard alone, need: every control has a name,
and the focus stays where it was."""

import pytest

from harness.places import wait_until
from harness.quarn import write_settings

# The parts that name themselves: a list's columns. A line between groups, and a text that is still empty, have
# nothing to say.
WITHOUT_A_NAME = {"SysHeader32", "Static"}
SERVERS = (
    " 2\r\n127.0.0.1;27960;--;One;5;0;8;baseq3;q3dm1;0;;;\r\n"
    "127.0.0.1;27961;--;Two;5;0;8;baseq3;q3dm1;0;;;\r\n"
)
# A dialog, the command that opens it and the keys that lead through its pages.
DIALOGS = [
    ("Game Setup", "mnuExtrasGameSetup", []),
    ("Options", "mnuExtrasOptions", ["right", "right", "right"]),
    ("Add Server", "mnuServAdd", []),
    ("Server Password", "mnuServSetPass", []),
    ("About Quarn", "mnuInfoAbout", []),
]
LISTS = ["trvGames", "lvwServers", "lvwPlayers", "lvwServVars"]


@pytest.fixture
def quarn(folder, start):
    place = folder()
    (place / "servers-q3.dat").write_text(SERVERS, newline="")
    write_settings(place, 1, General__MinToTray=0, Scanning__PingTimeout=100)
    program = start(place)
    program.wait_until_usable()
    return program


def names(quarn):
    return {(kind, number): name for number, kind, name in quarn.do.table("accessible")}


def unnamed(quarn):
    return [kind for (kind, _), name in names(quarn).items() if not name and kind not in WITHOUT_A_NAME]


def move_focus_to(quarn, control):
    while (focus := quarn.do.text("focus")) != quarn.control(control):
        quarn.do("keyboard", "tab")
        wait_until(lambda: quarn.do.text("focus") != focus, "the focus has moved on")


def test_every_control_of_the_window_has_a_name(quarn):
    assert unnamed(quarn) == []
    by_number = {number: name for (_, number), name in names(quarn).items()}
    assert [by_number[quarn.control(name)] for name in LISTS] == ["Games", "Servers", "Players", "Variables"]


def test_every_row_has_its_servers_name(quarn):
    assert quarn.do("row-names", quarn.control("lvwServers")) == ["One", "Two"]
    assert [row.name for row in quarn.rows()] == ["One", "Two"]
    assert [row.lock for row in quarn.rows()] == ["", ""]


@pytest.mark.parametrize("title, command, keys", DIALOGS, ids=[title for title, _, _ in DIALOGS])
def test_every_control_of_a_dialog_has_a_name(quarn, title, command, keys):
    quarn.click_row(1)
    quarn.choose(command)
    quarn.do.wait("*", "use", title)
    seen = names(quarn)
    assert unnamed(quarn) == []
    for key in keys:
        quarn.do("keyboard", key)
        before = seen
        wait_until(lambda: names(quarn) != before, "another page is shown")
        seen = names(quarn)
        assert unnamed(quarn) == []
    quarn.do("keyboard", "escape")
    quarn.do("use")
    quarn.do.wait(0, "is-open", title)
    assert quarn.close() == 0


@pytest.mark.parametrize("control", LISTS)
def test_a_closed_dialog_gives_the_focus_back(quarn, control):
    move_focus_to(quarn, control)
    for title, command, _ in DIALOGS[:2]:
        quarn.choose(command)
        quarn.do.wait("*", "use", title)
        quarn.do("keyboard", "escape")
        quarn.do("use")
        quarn.do.wait(0, "is-open", title)
        quarn.do.wait(quarn.control(control), "focus")
    assert quarn.close() == 0


@pytest.mark.parametrize("control", LISTS)
def test_what_fills_the_lists_leaves_the_focus_alone(quarn, control):
    move_focus_to(quarn, control)
    quarn.choose("mnuServRefreshAll")
    quarn.wait_for_scan()
    assert quarn.do.text("focus") == quarn.control(control)
    quarn.choose("mnuServerListClear")
    quarn.answer("Clear server list", "Yes")
    quarn.wait_for_rows(0)
    quarn.do.wait(quarn.control(control), "focus")
    assert quarn.close() == 0
