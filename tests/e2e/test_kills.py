"""Ended without a warning while it saves, scans or closes, the program leaves whole files behind.

With --long it is ended 50 times, else a few times."""

import configparser
import random
import time

import pytest

from harness.lists import make_servers, put_lists
from harness.process import Process
from harness.quarn import FIRST_GAME_POSITION, write_settings

ENTRIES = 2000


@pytest.fixture
def two_lists(folder):
    """The program's folder with two games and a long list of each."""
    program_folder = folder()
    put_lists(program_folder, make_servers(ENTRIES), ("ar", "cr"))
    write_settings(program_folder, games=2, Scanning__PingTimeout=100)
    return program_folder


def switch_lists(quarn):
    quarn.click_tree("Games", "Crow")


def scan(quarn):
    quarn.press_toolbar("refreshall")


def close(quarn):
    quarn.do("close")


def test_every_file_is_whole_after_a_kill(two_lists, start, is_long, report):
    lists = {path: path.read_bytes() for path in two_lists.glob("servers-*.dat")}
    chance = random.Random(1)
    for number in range(1, (50 if is_long else 6) + 1):
        action = [switch_lists, scan, close][number % 3]
        quarn = start(two_lists)
        quarn.wait_until_usable()
        quarn.wait_for_rows(ENTRIES)
        process = Process(two_lists / "Quarn.exe")
        delay = chance.uniform(0, 0.2)
        action(quarn)
        time.sleep(delay)
        process.kill()
        quarn.do.exit_code()
        report(f"kill {number}: {delay * 1000:.0f} ms into {action.__name__}")
        for path, content in lists.items():
            assert path.read_bytes() == content
        settings = configparser.ConfigParser(interpolation=None, strict=False)
        settings.read(two_lists / "Quarn.ini", "latin-1")
        assert settings["Selection"]["LastGame"] == str(FIRST_GAME_POSITION)
    quarn = start(two_lists)
    quarn.wait_until_usable()
    quarn.wait_for_rows(ENTRIES)
    switch_lists(quarn)  # saves the list, in place of a save that was killed
    quarn.do.wait("Crow", "selected-node", quarn.control("trvGames"))
    quarn.wait_for_status("Ready.")
    assert quarn.close() == 0
    assert not list(two_lists.glob("*.tmp"))
