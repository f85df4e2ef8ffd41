"""Three dedicated OpenArena servers with bots, on loopback addresses only and known to no master."""

import contextlib
import os
import re
import socket
import subprocess
import sys
from dataclasses import dataclass
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests" / "e2e"))

from harness.places import wait_until  # noqa: E402

PROGRAM = "/usr/games/openarena-server"
PORT = 27960
BOTS = ("sarge", "gargoyle", "kyonshi", "grism", "skelebot")
# Loading a map takes some seconds, and bots join one after the other.
START_SECONDS = 60


@dataclass(frozen=True)
class RealServer:
    address: str
    map: str
    bots: int

    def start(self, home):
        home.mkdir(parents=True)
        settings = {
            # A server of the local network: one that tells no master of itself.
            "dedicated": 1,
            "sv_master1": "",
            "net_enabled": 1,
            "net_ip": self.address,
            "net_port": PORT,
            "sv_hostname": f"OpenArena on {self.map}",
            "sv_maxclients": 8,
            "bot_enable": 1,
            "ttycon": 0,
        }
        arguments = [word for name, value in settings.items() for word in ("+set", name, str(value))]
        arguments += ["+map", self.map]
        arguments += [word for bot in BOTS[: self.bots] for word in ("+addbot", bot)]
        with open(home / "server.log", "wb") as log:
            return subprocess.Popen(
                [PROGRAM, *arguments],
                env={**os.environ, "HOME": str(home)},
                stdin=subprocess.DEVNULL,
                stdout=log,
                stderr=subprocess.STDOUT,
            )

    def player_count(self):
        """The number of players that the server tells of; None while it does not answer."""
        with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as asking:
            asking.settimeout(0.5)
            try:
                asking.sendto(b"\xff\xff\xff\xffgetstatus\n", (self.address, PORT))
                reply = asking.recv(65535)
            except OSError:
                return None
        return len(re.findall(rb'^-?\d+ \d+ "', reply, re.MULTILINE))


SERVERS = (
    RealServer("127.0.71.1", "oa_dm1", bots=3),
    RealServer("127.0.71.2", "aggressor", bots=4),
    RealServer("127.0.71.3", "oa_ctf2", bots=5),
)


def wait_for_bots(server, process):
    def has_its_bots():
        if process.poll() is not None:
            raise RuntimeError(f"the game server on {server.map} has ended")
        return server.player_count() == server.bots

    wait_until(has_its_bots, f"the game server on {server.map} has its bots", START_SECONDS)


@contextlib.contextmanager
def real_servers(folder):
    """Runs the servers for as long as the `with` block lasts; gives the file that lists them for gamenet."""
    folder.mkdir(parents=True)
    list_file = folder / "servers.txt"
    list_file.write_text("".join(f"oa {server.address}:{PORT}\n" for server in SERVERS))
    running = []
    try:
        for server in SERVERS:
            running.append(server.start(folder / server.map))
        for server, process in zip(SERVERS, running):
            wait_for_bots(server, process)
        yield list_file
    finally:
        for process in running:
            process.terminate()
        for process in running:
            process.wait()
