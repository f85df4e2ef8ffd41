"""A favorites folder with servers of several games, and what is asked before one is joined."""

import pytest

from harness.places import wait_until
from harness.quarn import write_settings
from test_joining import COMMAND_LINES, EXECUTABLE, RecordedGame
from test_lists import fetch, listed, scan
from test_tree import export

GAMES = {"oa": "OpenArena", "d3": "Doom 3", "hl": "Half-Life"}


@pytest.fixture
def three_games(gamenet, folder, start, tmp_path):
    """The program on a network of three games, each in a folder of its own, and a server of each in the first
    favorites folder. Returns the program, the favorites as the network made them, and the games."""
    network = gamenet("--games", ",".join(GAMES), "--end-mark", "none", "--servers", 3, "--exe", EXECUTABLE)
    games = {game: RecordedGame(tmp_path / f"game {game}") for game in GAMES}
    settings = {f"Games__Path{number}": games[game].folder for number, game in enumerate(GAMES, 1)}
    settings |= {f"Games__Name{number}": f"Player of {game}" for number, game in enumerate(GAMES, 1)}
    place = folder(network)
    write_settings(place, 3, Scanning__PingTimeout=30000, Favorites__Name1="Mixed", **settings)
    quarn = start(place)
    quarn.wait_until_usable()
    for short, name in GAMES.items():
        quarn.click_tree("Games", name)
        fetch(quarn, network, short)
    favorites = []
    for short, name in GAMES.items():  # adding one reads its list again, which is saved by now
        quarn.click_tree("Games", name)
        quarn.wait_for_rows(len(listed(network, short)))
        favorites.append(network.servers_of(short)[1])
        address = favorites[-1].address
        quarn.click_row(row_of(quarn, favorites[-1]))
        quarn.choose("mnuServAddToFavorites1")
        noted = f"{address}={short}\r\n".encode()
        file = place / "Favorites.ini"
        wait_until(lambda: file.exists() and noted in file.read_bytes(), "the game is noted")
    return quarn, favorites, games


def show_folder(quarn):
    quarn.click_tree("Favorites", "Mixed")
    quarn.wait_for_rows(3)


# Another list of the same length may still be shown.
def row_of(quarn, server):
    def addresses():
        return [row.address for row in quarn.rows()]

    wait_until(lambda: server.address in addresses(), "the server is listed")
    return addresses().index(server.address) + 1


def wait_for_complete_rows(quarn, favorites):
    """The answers of a Half-Life server come in any order, also after the scan."""
    told = {server.address: (server.name, server.map) for server in favorites}
    wait_until(
        lambda: {row.address: (row.name, row.map) for row in quarn.rows()} == told, "all rows are complete"
    )


def join_each(quarn, favorites, games):
    for server in favorites:
        quarn.do("double-click-row", quarn.control("lvwServers"), row_of(quarn, server))
        expected = COMMAND_LINES[server.game].format(
            mod=server.mod, config="", name=f"Player of {server.game}", password="", address=server.address
        )
        assert games[server.game].start() == (expected, games[server.game].folder)


def test_favorites_of_several_games_are_refreshed_and_joined(three_games, start):
    quarn, favorites, games = three_games
    show_folder(quarn)
    scan(quarn)
    wait_for_complete_rows(quarn, favorites)
    join_each(quarn, favorites, games)
    quarn.click_tree("Games", "Doom 3")  # saves the folder
    quarn.wait_for_rows(3)
    assert quarn.close() == 0

    again = start(quarn.folder)
    again.wait_until_usable()
    show_folder(again)
    scan(again)
    wait_for_complete_rows(again, favorites)
    join_each(again, favorites, games)
    again.click_row(1)
    removed = again.rows()[0].address
    again.choose("mnuServDelete")
    again.wait_for_rows(2)
    again.click_tree("Games", "Doom 3")
    again.wait_for_rows(3)
    kept = (again.folder / "Favorites.ini").read_text("ascii").splitlines()
    addresses = [line.split("=")[0] for line in kept[1:]]
    assert addresses == [server.address for server in favorites if server.address != removed]
    assert again.close() == 0


def test_all_selected_servers_are_added(three_games):
    quarn, _, _ = three_games
    quarn.click_tree("Games", "Doom 3")
    quarn.wait_for_rows(3)
    quarn.do("select-rows", quarn.control("lvwServers"), 1, 3)
    quarn.choose("mnuServAddToFavorites2")

    def games_noted():
        return (quarn.folder / "Favorites.ini").read_text("ascii").partition("[fav2]")[2].count("=d3")

    wait_until(lambda: games_noted() == 2, "both games are noted")
    assert (quarn.folder / "servers-fav2.dat").read_bytes().startswith(b" 2\r\n")
    assert quarn.close() == 0


MOD = 'a "b" && c +quit'
GAMES_INI = f"[General]\nGameNum=1\n[Game1]\nDescription=A\nGameShort=ar\nEngine=hl\nExeName={EXECUTABLE}\n"
SERVERS = f" 1\r\n127.0.0.1;27960;--;=One;5;0;8;{MOD};q3dm1;1;;;\r\n"


@pytest.fixture
def suspicious(folder, start, tmp_path):
    """A list of one server with a password, whose MOD name could give commands; and its game."""

    def open_folder(**settings):
        game = RecordedGame(tmp_path / "game")
        place = folder()
        (place / "Games.ini").write_text(GAMES_INI.replace("\n", "\r\n"), newline="")
        (place / "servers-ar.dat").write_text(SERVERS, newline="")
        write_settings(place, 1, **{"Games__Path1": game.folder, **settings})
        quarn = start(place)
        quarn.wait_until_usable()
        quarn.click_row(1)
        return quarn, game

    return open_folder


def test_a_line_with_commands_is_asked_about(suspicious):
    quarn, game = suspicious()
    quarn.choose("mnuServConnectPlay")
    assert f"+connect 127.0.0.1:27960 -game {MOD}\r\n" in quarn.message("Join server")
    quarn.do("use", "Join server")
    quarn.do("keyboard", "enter")  # the default is No
    quarn.do("use")
    quarn.do.wait(0, "is-open", "Join server")
    quarn.choose("mnuServCopyAddress")  # runs behind the join
    quarn.do.wait("127.0.0.1:27960", "clipboard")
    assert quarn.rows()[0].last_visit == ""

    quarn.choose("mnuServConnectPlay")
    quarn.answer("Join server", "Yes")
    assert game.start() == (f"+connect 127.0.0.1:27960 -game {MOD}", game.folder)
    assert quarn.close() == 0


def test_a_missing_password_is_asked_for(suspicious):
    quarn, game = suspicious(Extras__AskPassword=1)
    quarn.choose("mnuServConnectPlay")
    quarn.answer("Server Password", "Cancel")
    quarn.choose("mnuServConnectPlay")
    quarn.do.wait("*", "use", "Server Password")
    quarn.do("set-text", quarn.control("txtPass"), "sesame")
    quarn.do("press", "OK")
    quarn.do("use")
    quarn.answer("Join server", "Yes")
    assert game.start()[0].startswith("+connect 127.0.0.1:27960 ")
    assert game.starts() == 1
    assert quarn.close() == 0


def test_an_export_can_be_a_table(suspicious, tmp_path):
    quarn, _ = suspicious()
    exported = tmp_path / "list.CSV"
    export(quarn, exported)
    expected = (
        "\ufeff,IP Address,Location,Name,Players,Ping,Game,Map,Last Visit\r\n"
        'locked,127.0.0.1:27960, --, =One,0 / 8,5,"a ""b"" && c +quit",q3dm1,\r\n'
    ).encode()
    wait_until(lambda: exported.exists() and exported.read_bytes() == expected, "the table is exported")
    assert quarn.close() == 0
