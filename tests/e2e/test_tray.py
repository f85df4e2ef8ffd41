"""The icon in the notification area: the way there, back, and out of the program."""

import pytest

from harness.quarn import Tray, write_settings

SERVERS = (
    " 2\r\n127.0.0.1;27960;--;One;5;0;8;baseq3;q3dm1;0;;;\r\n1.2.3.4;28960;--;Two;6;0;8;osp;q3dm2;0;;;\r\n"
)


@pytest.fixture
def quarn(folder, start):
    place = folder()
    (place / "servers-q3.dat").write_bytes(SERVERS.encode("latin-1"))
    write_settings(place, 1, General__MinToTray=1)
    quarn = start(place)
    quarn.wait_until_usable()
    return quarn


@pytest.fixture
def tray(quarn):
    # After the program, whose start has brought up the notification area.
    with Tray() as tray:
        yield tray


def minimize(quarn, tray):
    quarn.do("minimize")
    quarn.do.wait("hidden", "state")
    tray.wait_for_icon()


def test_a_double_click_brings_the_window_back(quarn, tray):
    for _ in range(2):
        minimize(quarn, tray)
        tray.click("double")
        quarn.do.wait("normal", "state")
        tray.wait_for_icon(False)
    assert quarn.row_count() == 2
    assert quarn.close() == 0


def test_a_second_start_brings_the_window_back(quarn, tray):
    for _ in range(2):
        minimize(quarn, tray)
        assert quarn.run_second_instance() == 0
        quarn.do.wait("normal", "state")
        tray.wait_for_icon(False)
    assert quarn.log().endswith(";0;Quarn is already running.\r\n")
    assert quarn.close() == 0


def open_menu(quarn, tray):
    tray.click("right")
    quarn.do.wait("*#32768*", "windows")


def test_the_menu_ends_the_program(quarn, tray):
    minimize(quarn, tray)
    open_menu(quarn, tray)
    quarn.do("key", ".", "down", "down", "enter")
    assert quarn.do.exit_code() == 0
    tray.wait_for_icon(False)
    assert quarn.log().endswith(";0;Application terminated normally\r\n")


def test_the_menu_opens_the_window(quarn, tray):
    minimize(quarn, tray)
    open_menu(quarn, tray)
    quarn.do("key", ".", "down", "enter")
    quarn.do.wait("normal", "state")
    tray.wait_for_icon(False)
    assert quarn.close() == 0


def test_ending_the_program_from_outside_leaves_no_icon(quarn, tray):
    minimize(quarn, tray)
    quarn.do("post", ".", 0x10)  # WM_CLOSE, as a task manager sends it
    assert quarn.do.exit_code() == 0
    tray.wait_for_icon(False)


def test_without_the_setting_it_goes_to_the_taskbar(folder, start):
    place = folder()
    write_settings(place, 1, General__MinToTray=0)
    quarn = start(place)
    quarn.wait_until_usable()
    quarn.do("minimize")
    quarn.do.wait("minimized", "state")
    quarn.do("restore")
    quarn.do.wait("normal", "state")
    quarn.do("minimize")
    quarn.do.wait("minimized", "state")
    assert quarn.run_second_instance() == 0
    quarn.do.wait("normal", "state")
    assert quarn.close() == 0
