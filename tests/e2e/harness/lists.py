"""Long server lists, as the program would have saved them."""

import random
from dataclasses import dataclass

GAMES_INI = (
    "[General]\nGameNum=2\nMODNum=0\n"
    "[Game1]\nDescription=Arena\nGameShort=ar\nEngine=q3\n"
    "[Game2]\nDescription=Crow\nGameShort=cr\nEngine=d3\n"
)
VARIABLES = "\\g_gametype\\4\\fraglimit\\20\\timelimit\\15\\version\\1.32 linux-i386\\dmflags\\0"


@dataclass
class Server:
    line: str
    ping: int


def make_servers(count):
    """Servers as scans leave them: of all pings, some of them with a password, a few of them visited."""
    chance = random.Random(count)
    servers = []
    for number in range(count):
        address = f"127.{10 + (number >> 16)}.{number >> 8 & 255}.{number & 255}"
        name = f"{chance.choice(['Old', 'New', 'Fast'])} {chance.choice(['Tower', 'Arena'])} {number}"
        ping = chance.randint(5, 300)
        fields = [address, 27960, chance.choice(["DE", "US", "FR", "--"]), name, ping]
        fields += [chance.randint(0, 16), 16, chance.choice(["baseq3", "osp", "cpma"])]
        fields += [f"q3dm{chance.randint(1, 19)}", chance.randint(0, 1), "", VARIABLES]
        fields += [chance.choice(["", "", "", "3400000000"])]
        servers.append(Server(";".join(map(str, fields)), ping))
    return servers


def put_lists(folder, servers, names=("ar",)):
    """Gives a program's folder the two games "Arena" and "Crow", and those of them named their list."""
    (folder / "Games.ini").write_text(GAMES_INI.replace("\n", "\r\n"), newline="")
    lines = [f" {len(servers)}"] + [server.line for server in servers]
    for name in names:
        (folder / f"servers-{name}.dat").write_bytes("".join(f"{line}\r\n" for line in lines).encode())
