"""What is on the screen is what the list holds: painting everything again changes nothing."""

import pytest

from harness.lists import make_servers, put_lists
from harness.picture import painted, repainted
from harness.places import wait_until
from harness.quarn import write_settings

LOCK_COLUMN, ADDRESS_COLUMN, PING_COLUMN = 0, 1, 5


@pytest.fixture
def quarn(folder, start):
    place = folder()
    put_lists(place, make_servers(120))
    write_settings(place, 1, General__MinToTray=0, Selection__LastSortColumn=2, Selection__LastSortOrder=0)
    program = start(place)
    program.wait_until_usable()
    program.wait_for_rows(120)
    program.do("move", 0, 30, 1080, 680)
    return program


def expect_nothing_left_to_paint(quarn, when):
    assert painted(quarn, "lvwServers") == repainted(quarn, "lvwServers"), when


def test_locks_go_with_their_servers(quarn):
    servers = quarn.control("lvwServers")
    for column in LOCK_COLUMN, LOCK_COLUMN, PING_COLUMN, LOCK_COLUMN, ADDRESS_COLUMN, PING_COLUMN:
        before = quarn.rows()
        quarn.do("click-header", servers, column)
        wait_until(lambda: quarn.rows() != before, "the list is sorted")
        expect_nothing_left_to_paint(quarn, f"sorted by column {column}")


def test_the_text_of_an_empty_list_is_painted_once(folder, start):
    place = folder()
    write_settings(place, 1, General__MinToTray=0)
    quarn = start(place)
    quarn.wait_until_usable()
    quarn.do("change-dpi", 96, 288)  # the list becomes narrower than its columns
    expect_nothing_left_to_paint(quarn, "on another scale")


def test_a_window_that_grows_shows_each_row_once(quarn):
    servers = quarn.control("lvwServers")
    quarn.click_row(1)

    def selects_the_last_row():
        # Sorting as in the last run, which goes on behind the start, may move the row that was the last one.
        quarn.do("keyboard", "end")
        return quarn.do.text("selected-rows", servers) == "120"

    wait_until(selects_the_last_row, "the last row is selected")
    quarn.do("maximize")
    quarn.do.wait("maximized", "state")
    expect_nothing_left_to_paint(quarn, "maximized")
    quarn.do("restore")
    quarn.do.wait("normal", "state")
    expect_nothing_left_to_paint(quarn, "restored")
