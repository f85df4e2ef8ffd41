"""Runs the emulated game network and knows what its servers say."""

import configparser
import subprocess
from dataclasses import dataclass

from .driver import unescape
from .places import GAMENET, wait_until


@dataclass(frozen=True)
class Truth:
    """One server as the network made it."""

    game: str
    address: str
    name: str
    map: str
    mod: str
    country: str
    players: int
    slots: int
    locked: bool
    kind: str
    latency: int
    player_names: list


@dataclass(frozen=True)
class Game:
    """One game of the network's definitions file."""

    short: str
    name: str
    engine: str


def read_games(path):
    definitions = configparser.ConfigParser(interpolation=None)
    definitions.read(path, "latin-1")
    count = definitions.getint("General", "GameNum")
    sections = [definitions[f"Game{number}"] for number in range(1, count + 1)]
    return [Game(section["GameShort"], section["Description"], section["Engine"]) for section in sections]


def read_truth(path):
    lines = path.read_text("ascii").splitlines()
    columns = lines[0].split("\t")
    servers = []
    for line in lines[1:]:
        value = dict(zip(columns, line.split("\t")))
        names = value["player_names"]
        servers.append(
            Truth(
                game=value["game"],
                address=f"{value['address']}:{value['port']}",
                name=unescape(value["name"]),
                map=unescape(value["map"]),
                mod=unescape(value["mod"]),
                country=value["country"],
                players=int(value["players"] or 0),
                slots=int(value["max"] or 0),
                locked=value["locked"] == "1",
                kind=value["kind"],
                latency=int(value["latency"] or 0),
                player_names=[unescape(name) for name in names.split("|")] if names else [],
            )
        )
    return servers


class Gamenet:
    """A running network. It writes its files into `folder`; leaving the `with` block ends it. Of servers
    outside the network, given with --list, it knows the addresses only. `set_up` runs in its process first.
    """

    def __init__(self, folder, *options, set_up=None):
        self.games_ini = folder / "Games.ini"
        self.country_file = folder / "countryip.dat"
        self._folder = folder
        ready = folder / "gamenet.ready"
        truth = folder / "truth.tsv"
        ready.unlink(missing_ok=True)
        with open(folder / "gamenet.log", "wb") as log:
            self._process = subprocess.Popen(
                [GAMENET, "--die-with-parent", "--ready-file", ready, "--write-truth", truth]
                + ["--write-games-ini", self.games_ini, "--country-file", self.country_file]
                + ["--stats", folder / "statistics", "--record", folder / "record"]
                + ["--asked-file", folder / "asked"]
                + [str(option) for option in options],
                stdin=subprocess.DEVNULL,
                stdout=log,
                stderr=subprocess.STDOUT,
                preexec_fn=set_up,
            )
        wait_until(lambda: ready.exists() or self._has_ended(), "the game network is up")
        self.servers = read_truth(truth)
        self.games = read_games(self.games_ini)

    def servers_of(self, game):
        """What the servers of a game say, in the order of the master's list; by the game's short name."""
        return [server for server in self.servers if server.game == game]

    def statistics(self):
        """The counts of datagrams, once the network has ended."""
        self.__exit__()
        lines = (self._folder / "statistics").read_text().split()
        return {name: int(count) for name, count in (line.split("=") for line in lines)}

    def asked(self):
        """How many datagrams its servers have received so far."""
        return int((self._folder / "asked").read_text() or 0)

    def requests(self):
        """Every request that the network received, in its order, once it has ended: "master" or "server", the
        game, the address asked, the bytes."""
        self.__exit__()
        lines = (self._folder / "record").read_text().splitlines()
        return [(*words, bytes.fromhex(data)) for *words, data in (line.split(" ") for line in lines)]

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._process.terminate()
        self._process.wait()

    def _has_ended(self):
        if self._process.poll() is not None:
            raise RuntimeError("gamenet ended: " + (self._folder / "gamenet.log").read_text())
