"""Files that cannot be written, are held by another program or vanish, and servers that refuse: the old file
stays as it was, a list that cannot be saved stays in front, and the window stays usable."""

import os
import re
import subprocess
from contextlib import contextmanager
from threading import Timer

import pytest

from harness.driver import Driver
from harness.isolation import IsolatedNetwork
from harness.places import ROOT, wait_until, windows_path
from harness.quarn import write_settings


def file_size_limit(size):
    """For a process whose files the system lets grow to this size: writing beyond it fails, as on a full disk."""
    import resource
    import signal

    def apply():
        signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
        resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))

    return apply


@contextmanager
def held_by_another_program(path, seconds=None):
    """The file is open in another program, which lets nobody else in; for the time given, or all the while."""
    with Driver() as other:
        other("hold", windows_path(path))
        if seconds:
            Timer(seconds, other, ["let-go"]).start()
        yield


def fetch_and_leave(quarn, network):
    """Leaves the list of ten servers on the disk, and shows it again."""
    quarn.renew()
    quarn.wait_for_rows(10)
    leave_list(quarn)
    return_to_list(quarn, 10)


def leave_list(quarn):
    quarn.click_tree("Games")
    wait_until(lambda: "enabled" not in quarn.toolbar_states(), "no list is shown")
    assert quarn.row_count() == 0


def show_empty_list(quarn):
    quarn.click_tree("Games", "Doom 3")
    wait_until(lambda: "enabled" in quarn.toolbar_states(), "the list is shown")
    assert quarn.row_count() == 0


def fail_to_leave_list(quarn, rows, error):
    """A list that cannot be saved is not given up for another one, and the player hears of it."""
    quarn.click_tree("Games")
    assert f"\r\nError #{error}\r\n" in quarn.message("Quarn - Error")
    quarn.answer("Quarn - Error", "OK")
    assert quarn.row_count() == rows


def return_to_list(quarn, rows):
    quarn.click_tree("Games", "Doom 3")
    quarn.wait_for_rows(rows)


def delete_row(quarn, number, left):
    quarn.do("select-rows", quarn.control("lvwServers"), number)
    quarn.choose("mnuServDelete")
    quarn.wait_for_rows(left)


def test_a_list_that_another_program_holds_stays_as_it_is(browse):
    quarn, network = browse("d3")
    fetch_and_leave(quarn, network)
    saved = quarn.folder / "servers-d3.dat"
    before = saved.read_bytes()
    delete_row(quarn, 1, left=9)
    quarn.do("hold", windows_path(saved))
    fail_to_leave_list(quarn, 9, "70: Permission denied")
    quarn.do("let-go")
    assert saved.read_bytes() == before
    assert not list(quarn.folder.glob("*.tmp"))

    quarn.click_tree("Favorites")
    quarn.wait_for_rows(0)
    assert saved.read_bytes().startswith(b" 9\r\n")
    quarn.leave()


def test_a_list_that_another_program_holds_is_not_overwritten_by_an_empty_one(browse):
    quarn, network = browse("d3")
    fetch_and_leave(quarn, network)
    saved = quarn.folder / "servers-d3.dat"
    before = saved.read_bytes()
    leave_list(quarn)
    quarn.do("hold", windows_path(saved))
    show_empty_list(quarn)
    quarn.do("let-go")
    leave_list(quarn)
    assert saved.read_bytes() == before
    assert [path.name for path in quarn.folder.glob("servers-d3.*")] == ["servers-d3.dat"]
    return_to_list(quarn, 10)
    quarn.leave()


def test_lists_that_are_held_for_a_moment_are_waited_for(browse):
    quarn, network = browse("d3")
    fetch_and_leave(quarn, network)
    saved = quarn.folder / "servers-d3.dat"
    delete_row(quarn, 1, left=9)
    with held_by_another_program(saved, seconds=0.15):
        leave_list(quarn)
    assert saved.read_bytes().startswith(b" 9\r\n")
    with held_by_another_program(saved, seconds=0.15):
        return_to_list(quarn, 9)
    assert quarn.close() == 0  # without the question that follows an error


def test_no_copy_of_a_damaged_list_is_overwritten(browse):
    quarn, _ = browse("d3")
    saved = quarn.folder / "servers-d3.dat"
    for number, backup in enumerate(["servers-d3.bak", "servers-d3.2.bak", "servers-d3.3.bak"]):
        leave_list(quarn)
        damaged = f" 1\r\n127.10.0.1;27666;--;a;b;{number};0;8;base;m;0;;;\r\n".encode()
        saved.write_bytes(damaged)
        show_empty_list(quarn)
        leave_list(quarn)
        assert saved.read_bytes() == b" 0\r\n"
        assert (quarn.folder / backup).read_bytes() == damaged
    assert len(list(quarn.folder.glob("*.bak"))) == 3
    quarn.leave()


def test_a_full_disk_leaves_the_old_list(gamenet, folder, start):
    network = gamenet("--games", "d3")
    program_folder = folder(network)
    write_settings(program_folder, games=1)
    saved = program_folder / "servers-d3.dat"
    entry = "127.10.0.1;27666;--;" + "n" * 1000 + ";20;3;8;base;game/mp/d3dm1;0;;\\\\;\r\n"
    content = f" 200\r\n{entry * 200}".encode()
    saved.write_bytes(content)
    quarn = start(program_folder, set_up=file_size_limit(len(content) // 2))
    quarn.wait_until_usable()
    quarn.wait_for_rows(200)
    delete_row(quarn, 1, left=199)
    fail_to_leave_list(quarn, 199, "57: Device I/O error")
    assert saved.read_bytes() == content
    assert not list(quarn.folder.glob("*.tmp"))
    quarn.leave()


@pytest.mark.parametrize("change", ["removed", "a folder"])
def test_settings_that_cannot_be_kept_do_not_stop_the_end(browse, change):
    quarn, _ = browse("d3")
    settings = quarn.folder / "Quarn.ini"
    settings.unlink()
    if change == "a folder":
        settings.mkdir()
    assert quarn.close() == 0
    if change == "removed":
        assert b"LastGame=9\r\n" in settings.read_bytes()
    assert not list(quarn.folder.glob("Quarn.ini.*"))


def test_write_protected_settings_stay_until_they_are_not(browse, start):
    quarn, _ = browse("d3")
    settings = quarn.folder / "Quarn.ini"
    before = settings.read_bytes()
    settings.chmod(0o444)  # a file without any right to write it is write-protected for Windows' programs
    leftover = quarn.folder / "Quarn.ini.new"
    leftover.write_bytes(b"of a run that crashed")
    leftover.chmod(0o444)
    assert quarn.close() == 0
    assert settings.read_bytes() == before
    assert not leftover.exists()

    settings.chmod(0o644)
    again = start(quarn.folder)
    again.wait_until_usable()
    assert again.close() == 0
    assert re.search(rb"^WinState=0\r$", settings.read_bytes(), re.M)
    assert not list(quarn.folder.glob("Quarn.ini.*"))


def test_a_full_disk_leaves_the_old_settings(folder, start):
    program_folder = folder()
    write_settings(program_folder, games=1, Mine__key="x" * 500)
    settings = program_folder / "Quarn.ini"
    before = settings.read_bytes()
    full_size = len(before) + 200  # the first save writes more keys than fit into that
    quarn = start(program_folder, set_up=file_size_limit(full_size))
    quarn.wait_until_usable()
    quarn.leave()
    assert settings.read_bytes() == before
    assert not list(program_folder.glob("Quarn.ini.*"))

    quarn = start(program_folder)
    quarn.wait_until_usable()
    assert quarn.close() == 0
    assert len(settings.read_bytes()) > full_size
    assert b"key=" + b"x" * 500 in settings.read_bytes()


@pytest.mark.parametrize("seconds", [0.15, None])
def test_settings_that_are_held_while_the_program_ends(browse, seconds):
    quarn, _ = browse("d3")
    settings = quarn.folder / "Quarn.ini"
    before = settings.read_bytes()
    with held_by_another_program(settings, seconds):
        assert quarn.close() == 0
    after = settings.read_bytes()
    assert b"QuitAfterStart=0\r\n" in after if seconds else after == before
    assert not list(quarn.folder.glob("Quarn.ini.*"))


@pytest.mark.parametrize("seconds", [0.15, None])
def test_settings_that_are_held_while_the_program_starts(folder, start, seconds):
    program_folder = folder()
    write_settings(program_folder, games=1, Scanning__PingTimeout=1234)
    settings = program_folder / "Quarn.ini"
    before = settings.read_bytes()
    with held_by_another_program(settings, seconds):
        quarn = start(program_folder)
        if seconds is None:  # the defaults show no game
            quarn.answer("Quarn - Error", "OK")
            quarn.answer("Game Setup", "Cancel")
        quarn.wait_until_usable()
    assert quarn.close() == 0
    after = settings.read_bytes()
    assert b"PingTimeout=1234\r\n" in after
    assert b"QuitAfterStart=0\r\n" in after if seconds else after == before


@pytest.mark.parametrize("at_once", [1, 32])
def test_servers_that_refuse_do_not_stop_a_scan(browse, at_once):
    settings = {"Scanning__PingTimeout": 20, "Extras__Simultaneous": at_once}
    quarn, network = browse("oa", "--servers", 50, "--closed", 100, "--end-mark", "none", **settings)
    quarn.renew()
    quarn.wait_for_rows(50)
    quarn.press_toolbar("refreshall")
    quarn.wait_for_scan()
    assert [row.ping for row in quarn.rows()] == ["20"] * 50
    quarn.leave()


@pytest.fixture
def isolated(monkeypatch):
    """A network that can go away, and a Wine of its own in it: programs under Wine are in the network that
    their server is in."""
    try:
        network = IsolatedNetwork()
    except OSError as error:
        pytest.skip(f"no network can be made here: {error}")
    # Beside the original: files of two file systems cannot be one and the same.
    prefix = os.environ["WINEPREFIX"] + "-isolated"
    desktops = ROOT / "tools/scripts/desktops.sh"
    copy = ["bash", "-ec", 'source "$1"; copy_prefix "$WINEPREFIX" "$2"', "copy", desktops, prefix]
    subprocess.run(copy, check=True)
    monkeypatch.setenv("WINEPREFIX", prefix)
    yield network
    subprocess.run(["wineserver", "-k"], check=False)
    network.close()


@pytest.mark.parametrize("at_once", [1, 4])
def test_a_scan_outlives_the_network(isolated, gamenet, folder, start, at_once):
    network = gamenet("--games", "d3", "--servers", 30, "--latency", 60, set_up=isolated.join)
    names = [server.name for server in network.servers_of("d3")]
    program_folder = folder(network)
    write_settings(program_folder, games=1, Scanning__PingTimeout=200, Extras__Simultaneous=at_once)
    quarn = start(program_folder, set_up=isolated.join)
    quarn.wait_until_usable()

    def named():
        return [row.name for row in quarn.rows() if row.name]

    quarn.renew()
    quarn.wait_for_rows(30)
    quarn.press_toolbar("refreshall")
    quarn.wait_for_status("*/30", panel=3)
    isolated.set_up(False)
    quarn.wait_for_scan()
    assert len(named()) < 30
    assert (quarn.rows()[-1].name, quarn.rows()[-1].ping) == ("", "200")

    quarn.renew()
    quarn.wait_for_status("Getting new serverlist from master...")
    quarn.wait_for_rows(0)
    isolated.set_up(True)
    quarn.renew()
    quarn.wait_for_rows(30)
    quarn.press_toolbar("refreshall")
    quarn.wait_for_scan()
    wait_until(lambda: named() == names, "every row has its name")
    quarn.leave()


@pytest.mark.parametrize("at_once", [1, 32])
def test_a_scan_asks_fewer_at_once_where_ports_run_out(isolated, gamenet, folder, start, at_once):
    network = gamenet("--games", "d3", "--servers", 60, "--latency", 30, set_up=isolated.join)
    program_folder = folder(network)
    write_settings(program_folder, games=1, Extras__Simultaneous=at_once)
    quarn = start(program_folder, set_up=isolated.join)
    quarn.wait_until_usable()
    quarn.renew()
    quarn.wait_for_rows(60)
    isolated.limit_ports(8)
    quarn.start_scan(network, 33)
    quarn.wait_for_scan()
    assert [row.name for row in quarn.rows()] == [server.name for server in network.servers_of("d3")]
    assert quarn.log().count(";SendServerQuery;") == 1
    quarn.leave()
