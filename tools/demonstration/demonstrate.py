"""Shows Quarn at work on an emulated game network: in the hands of the user on a display, or driven and
reported where nobody watches. Run by run.sh, which provides Wine and a display."""

import argparse
import contextlib
import shutil
import signal
import subprocess
import sys
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests" / "e2e"))

from harness.driver import DriverError  # noqa: E402
from harness.gamenet import Gamenet  # noqa: E402
from harness.quarn import Quarn, fresh_folder, write_settings  # noqa: E402
from real_servers import real_servers  # noqa: E402

DEMO = ROOT / "build" / "demo"
HEADINGS = ("", "IP Address", "Location", "Name", "Players", "Ping", "Game", "Map", "Last Visit")
# The last one is what the picture shows, and what a watching user finds: the real servers are OpenArena's.
LAST_GAME = "oa"
# Left, top, width and height in pixels, so that no column is cut off.
WINDOW = (60, 60, 1160, 720)
LOOK_EVERY_SECONDS = 0.2
# Servers asked at once: one after the other, as the settings have it at first, and as many as suit most lines.
WAYS_TO_SCAN = (1, 32)


def print_table(rows):
    widths = [max(len(row[column]) for row in rows) for column in range(len(rows[0]))]
    for row in rows:
        print("  " + "  ".join(cell.ljust(width) for cell, width in zip(row, widths)).rstrip())
    print(flush=True)


def scan_game(quarn, game, rows):
    """Gets a game's list from its master and queries every server. Returns the seconds of the queries."""
    quarn.click_tree("Games", game.name)
    quarn.wait_for_rows(0)
    quarn.renew()
    quarn.wait_for_rows(rows)
    start = time.monotonic()
    quarn.press_toolbar("refreshall")
    quarn.wait_for_scan()
    return time.monotonic() - start


def print_game(quarn, game):
    print(f"{game.name}: {quarn.status(3)}")
    print_table([HEADINGS] + [tuple(vars(row).values()) for row in quarn.rows()])


def take_picture(quarn, path, real):
    """Of the window, with the details of the server that most players are on, or of the last of the real servers,
    which are listed behind the others."""
    players = [int(row.players.partition(" / ")[0]) for row in quarn.rows()]
    shown = len(players) - 1 if real else players.index(max(players))
    quarn.click_row(shown + 1)
    quarn.wait_for_players(players[shown])
    left, top, width, height = quarn.do.text("rectangle").split()
    grab = ["import", "-window", "root", "-crop", f"{width}x{height}+{left}+{top}", "+repage", "png:-"]

    # What was asked for is painted some time later: the picture is finished when it stays as it is.
    picture = b""
    while (latest := subprocess.run(grab, check=True, capture_output=True).stdout) != picture:
        picture = latest
        time.sleep(LOOK_EVERY_SECONDS)
    path.write_bytes(picture)
    print(f"A picture of the window is in {path.relative_to(ROOT)}")


def scan_all_games(quarn, network, prints):
    """Returns the seconds that all the queries took."""
    quarn.do("move", *WINDOW)
    seconds = 0
    for game in sorted(network.games, key=lambda game: game.short == LAST_GAME):
        seconds += scan_game(quarn, game, len(network.servers_of(game.short)))
        if prints:
            print_game(quarn, game)
    return seconds


def start_program(folder, network, at_once):
    """Quarn in a new folder, with a list of each game that names each server once."""
    fresh_folder(folder, network.games_ini)
    shutil.copyfile(network.country_file, folder / "countryip.dat")
    settings = {"Extras__ListOnce": 1, "Extras__Simultaneous": at_once}
    write_settings(folder, games=len(network.games), **settings)
    return Quarn(folder)


def scan_in_each_way(stack, network):
    """Returns the program that asked the most servers at once, with its window open."""
    for at_once in WAYS_TO_SCAN:
        shutil.rmtree(DEMO / "Quarn", ignore_errors=True)
        quarn = stack.enter_context(start_program(DEMO / "Quarn", network, at_once))
        quarn.wait_until_usable()
        is_last = at_once == WAYS_TO_SCAN[-1]
        seconds = scan_all_games(quarn, network, prints=is_last)
        way = "one after the other" if at_once == 1 else f"{at_once} at once"
        print(f"Asked {len(network.servers)} servers, {way}, in {seconds:.1f} seconds", flush=True)
        if not is_last:
            quarn.leave()
    return quarn


def watch(quarn, seconds):
    """Waits until the user closes the window, or closes it when the time given is over."""
    end = None if seconds is None else time.monotonic() + seconds
    while quarn.is_running():
        if end and time.monotonic() > end:
            quarn.leave()
        time.sleep(LOOK_EVERY_SECONDS)


def demonstrate(options):
    shutil.rmtree(DEMO, ignore_errors=True)
    DEMO.mkdir(parents=True)
    with contextlib.ExitStack() as stack:
        listed = []
        if options.real:
            print("Starting the real game servers")
            listed = ["--list", stack.enter_context(real_servers(DEMO / "openarena"))]
        network = stack.enter_context(Gamenet(DEMO, *listed))
        print(
            f"Started a network of {len(network.servers)} servers of {len(network.games)} games", flush=True
        )
        quarn = scan_in_each_way(stack, network)
        if options.watched:
            watch(quarn, options.seconds)
        else:
            take_picture(quarn, DEMO / "quarn.png", options.real)
            time.sleep(options.seconds or 0)
            quarn.leave()


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--watched", action="store_true", help="leave the window to the user")
    parser.add_argument("--real", action="store_true", help="with real game servers")
    parser.add_argument("--seconds", type=int)
    # So that what was started is ended on a request to terminate, as it is on an interrupt.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit("terminated"))
    try:
        demonstrate(parser.parse_args())
    except (DriverError, RuntimeError, TimeoutError) as error:
        sys.exit(f"error: the demonstration failed: {error}")


if __name__ == "__main__":
    main()
