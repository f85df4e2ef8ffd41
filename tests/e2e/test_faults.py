"""Files that cannot be written, are held by another program or vanish, and servers that refuse: the old file
stays as it was, a list that cannot be saved stays in front, and the window stays usable."""

import os
import subprocess

import pytest

from harness.isolation import IsolatedNetwork
from harness.places import ROOT, windows_path
from harness.quarn import write_settings


def file_size_limit(size):
    """For a process whose files the system lets grow to this size: writing beyond it fails, as on a full disk."""
    import resource
    import signal

    def apply():
        signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
        resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))

    return apply


def fetch_and_leave(quarn, network):
    """Leaves the list of ten servers on the disk, and shows it again."""
    quarn.renew()
    quarn.wait_for_rows(10)
    leave_list(quarn)
    return_to_list(quarn, 10)


def leave_list(quarn):
    quarn.click_tree("Games")
    quarn.wait_for_rows(0)


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
    quarn.click_tree("Games", "Doom 3")
    quarn.do.wait("Doom 3", "selected-node", quarn.control("trvGames"))
    assert quarn.row_count() == 0
    quarn.do("let-go")
    leave_list(quarn)
    kept = [path for path in quarn.folder.glob("servers-d3.*") if path.read_bytes() == before]
    assert kept
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


@pytest.mark.parametrize("change", ["removed", "write-protected", "a folder"])
def test_settings_that_cannot_be_kept_do_not_stop_the_end(browse, change):
    quarn, _ = browse("d3")
    settings = quarn.folder / "Quarn.ini"
    if change == "write-protected":
        settings.chmod(0o444)
    else:
        settings.unlink()
    if change == "a folder":
        settings.mkdir()
    assert quarn.close() == 0
    if change == "removed":
        assert b"LastGame=9\r\n" in settings.read_bytes()
    assert not list(quarn.folder.glob("Quarn.ini.*"))


def test_servers_that_refuse_do_not_stop_a_scan(browse):
    quarn, network = browse(
        "oa", "--servers", 50, "--closed", 100, "--end-mark", "none", Scanning__PingTimeout=20
    )
    quarn.renew()
    quarn.wait_for_rows(50)
    quarn.press_toolbar("refreshall")
    quarn.wait_for_status("Retrieving*")
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


def test_a_scan_outlives_the_network(isolated, gamenet, folder, start):
    network = gamenet("--games", "d3", "--servers", 30, "--latency", 60, set_up=isolated.join)
    names = [server.name for server in network.servers_of("d3")]
    program_folder = folder(network)
    write_settings(program_folder, games=1, Scanning__PingTimeout=200)
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
    # The timer runs through the whole scan and strikes an answer that is on its way now and then.
    assert len(named()) > 15
    assert set(named()) <= set(names)
    quarn.leave()
