"""The hand-over of a server to the monitoring program in the neighbouring folder."""

import shutil

import pytest

from harness.driver import Driver
from harness.places import BUILD, wait_until
from harness.quarn import fresh_folder, write_settings

VELMAR = BUILD / "win64" / "tests" / "e2e" / "velmar" / "velmar.exe"
SERVERS = (
    " 2\r\n127.0.0.1;27960;--;One;5;0;8;baseq3;q3dm1;0;;;\r\n1.2.3.4;28960;--;Two;6;0;8;osp;q3dm2;0;;;\r\n"
)


@pytest.fixture
def quarn(tmp_path, start):
    """Quarn with a list of two servers, and Velmar's folder next to its own."""
    place = fresh_folder(tmp_path / "Quarn")
    write_settings(place, 1, General__MinToTray=0)
    (place / "servers-q3.dat").write_bytes(SERVERS.encode("latin-1"))
    (tmp_path / "Velmar").mkdir()
    quarn = start(place)
    quarn.wait_until_usable()
    quarn.wait_for_rows(2)
    rows = [row.address for row in quarn.rows()]
    quarn.click_row(rows.index("1.2.3.4:28960") + 1)
    return quarn


def test_velmar_is_started_and_told_which_server_to_watch(quarn, tmp_path):
    shutil.copy(VELMAR, tmp_path / "Velmar" / "Velmar.exe")
    received = tmp_path / "Velmar" / "received.txt"
    quarn.choose("mnuServMonitor")
    with Driver() as velmar:
        wait_until(lambda: is_attached(velmar), "Velmar runs")
        velmar.wait("normal", "state")
        quarn.press_toolbar("monitor")
        wait_until(received.exists, "Velmar was told of a server")
        text = b"ConGam:1.2.3.4:28960\0"
        line = f"3 {len(text)} {text.hex()}"
        # The first order may have found the window as well, if it came up in time.
        assert set(received.read_text().splitlines()) == {line}
        assert quarn.close() == 0
        velmar("exit-code")


def is_attached(driver):
    try:
        driver("attach", "Velmar.exe")
    except Exception:
        return False
    return True


def test_without_velmar_nothing_happens(quarn):
    quarn.choose("mnuServMonitor")
    quarn.choose("mnuServCopyAddress")  # runs behind it
    assert quarn.close() == 0  # and nothing was logged that would be worth a report
