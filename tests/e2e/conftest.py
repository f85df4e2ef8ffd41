"""Fixtures of the end-to-end tests. They need a display and a Wine prefix, which test.sh provides."""

import os
import shutil
import signal
import zlib

import pytest

from harness.gamenet import Gamenet
from harness.places import BUILD, ROOT
from harness.quarn import Quarn, fresh_folder, write_settings

LONG_TIMEOUT = 30000
FIGURES = BUILD / "results/figures.txt"


def pytest_addoption(parser):
    # Networks that run at the same time need different addresses: those of two checkouts, and those of the
    # desktops of one.
    seed = zlib.crc32(bytes(ROOT)) % 10000 + int(os.environ.get("QUARN_DESKTOP", 0))
    parser.addoption("--seed", type=int, default=seed, help="of the game network")
    parser.addoption(
        "--long",
        action="store_true",
        default="QUARN_LONG" in os.environ,
        help="the long form of the tests that have one; also with QUARN_LONG in the environment",
    )


def pytest_report_header(config):
    return f"game network: --seed {config.getoption('--seed')}"


def pytest_runtestloop(session):
    if not session.config.option.collectonly and not {"WINEPREFIX", "DISPLAY"} <= os.environ.keys():
        pytest.exit("the end-to-end tests need Wine and a display: run ./test.sh", returncode=2)


@pytest.fixture
def is_long(request):
    """Whether tests that have a long form are to run it; the short form is a fair sample."""
    return request.config.getoption("--long")


@pytest.fixture(autouse=True)
def ends_in_time(is_long):
    """Ends a test that takes too long before CTest ends this process. CTest would leave the programs that the test
    has started running, and the next test could not start them."""

    def fail(*_):
        raise TimeoutError("the test takes too long")

    signal.signal(signal.SIGALRM, fail)
    signal.alarm(3540 if is_long else 270)
    yield
    signal.alarm(0)


@pytest.fixture
def report(is_long):
    """Notes a figure of a long test in build/results/figures.txt: tests side by side have no terminal to print
    it to."""

    def write(line):
        if is_long:
            FIGURES.parent.mkdir(exist_ok=True)
            with FIGURES.open("a") as figures:
                figures.write(line + "\n")

    return write


@pytest.fixture
def gamenet(tmp_path, request):
    """Starts a game network with the options given; by default the demonstration's 60 servers. `set_up` runs in
    its process first."""
    running = []

    def start(*options, set_up=None):
        folder = tmp_path / f"gamenet{len(running)}"
        folder.mkdir()
        seed = request.config.getoption("--seed")
        running.append(Gamenet(folder, "--seed", seed, "--master-port", 0, *options, set_up=set_up))
        return running[-1]

    yield start
    for network in running:
        network.__exit__(None, None, None)


@pytest.fixture
def folder(tmp_path):
    """Copies the program's folder; with a game network, games and countries are the network's."""

    def copy(network=None):
        program_folder = fresh_folder(tmp_path / "Quarn", network and network.games_ini)
        if network:
            shutil.copyfile(network.country_file, program_folder / "countryip.dat")
        return program_folder

    return copy


@pytest.fixture
def browse(gamenet, folder, start):
    """Starts the program on a network of one game, whose node is selected and whose list is still empty.
    Options go to the network, named values into the settings. The timer, which runs through a scan whatever
    a server does, strikes in no test that does not ask for it."""

    def open_game(game, *options, **settings):
        network = gamenet("--games", game, *options)
        program_folder = folder(network)
        write_settings(program_folder, games=1, **{"Scanning__PingTimeout": LONG_TIMEOUT, **settings})
        quarn = start(program_folder)
        quarn.wait_until_usable()
        return quarn, network

    return open_game


@pytest.fixture
def start():
    """Starts the program that lies in a folder; `set_up` runs in its process first, and `arguments` go onto
    its command line."""
    running = []

    def start_in(folder, set_up=None, arguments=""):
        running.append(Quarn(folder, set_up, arguments))
        return running[-1]

    yield start_in
    for program in running:
        program.__exit__(None, None, None)
