"""Asks the network's servers as the program does, and reads from their replies what a list file keeps as
variables. Written from the formats alone, so that a mistake of the program is not repeated here."""

import socket

REPLY_SECONDS = 5
Q3_REQUEST = b"\xff\xff\xff\xffgetstatus"
D3_REQUEST = b"\xff\xffgetinfo\0\0\0\0"
HL_REQUEST = b"\xff\xff\xff\xffrules"
# What has a column of its own is no variable.
Q3_COLUMNS = {"sv_hostname", "mapname", "gamename", "sv_maxclients", "g_needpass", "pswrd"}
D3_COLUMNS = {"si_name", "si_map", "gamename", "si_maxplayers", "si_usepass"}


def ask(address, request):
    host, port = address.split(":")
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as peer:
        peer.settimeout(REPLY_SECONDS)
        peer.sendto(request, (host, int(port)))
        return peer.recv(65535)


def from_pairs(fields, columns):
    pairs = zip(fields[::2], fields[1::2])
    kept = [(key, value) for key, value in pairs if key.lower() not in columns]
    return "".join(f"\\{key}\\{value}" for key, value in kept).lower()


def q3_variables(address):
    info = ask(address, Q3_REQUEST).decode("latin-1").split("\n")[1]
    return from_pairs(info.split("\\")[1:], Q3_COLUMNS)


def d3_variables(address):
    pairs = ask(address, D3_REQUEST).decode("latin-1").partition("\0\1\0")[2]
    fields = pairs[: pairs.index("\0\0\0")].split("\0")
    return from_pairs(fields, D3_COLUMNS)


def hl_variables(address):
    return ask(address, HL_REQUEST).decode("latin-1").replace("\0", "\\").removesuffix("\\")


VARIABLES_OF = {"q3": q3_variables, "d3": d3_variables, "hl": hl_variables}
