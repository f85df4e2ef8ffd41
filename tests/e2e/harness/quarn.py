"""Quarn.exe as a user meets it: its folder, its window, its controls under their names."""

import re
import shutil
from dataclasses import dataclass

from .driver import Driver, DriverError, unescape
from .places import IDS, PROGRAM_FOLDER, wait_until, windows_path

TITLE = "Quarn"
TOOLBAR = {
    "querymaster": 1,
    "refreshall": 3,
    "refresh": 4,
    "stop": 5,
    "join": 7,
    "monitor": 8,
    "favorites": 10,
}
# The fixed nodes of the tree take positions 1 to 8; the first shown game follows them.
FIRST_GAME_POSITION = 9


def resource_numbers():
    """The numbers that the program's own header gives its commands and controls."""
    found = re.findall(r"^#define ID_(\w+) (\d+)", IDS.read_text(), re.MULTILINE)
    return {name: int(number) for name, number in found}


class Tray:
    """The notification area, in which the icons that are there before do not count. Leaving the `with` block
    lets go of it."""

    TITLE = "Wine System Tray"
    ICON = "__winex11_tray_icon"

    def __init__(self):
        self._do = Driver()
        self._do("attach", "explorer.exe")
        self._icons_before = self._icons()

    def __enter__(self):
        return self

    def __exit__(self, *exception):
        self._do.__exit__(*exception)

    def wait_for_icon(self, shown=True):
        wait_until(lambda: self._icons() == self._icons_before + shown, f"an icon is shown: {shown}")

    def click(self, kind):
        """On the newest icon: "left", "right" or "double"."""
        self._do("use", self.TITLE)
        self._do("click", self.ICON, kind)

    def _icons(self):
        if self._do("is-open", self.TITLE) == ["0"]:
            return 0
        try:
            self._do("use", self.TITLE)
            return [control for _, control, _, _ in self._do.table("controls")].count(self.ICON)
        except DriverError:
            return None  # an icon goes just now


@dataclass(frozen=True)
class Row:
    """One row of the server list, cell by cell."""

    lock: str
    address: str
    location: str
    name: str
    players: str
    ping: str
    game: str
    map: str
    last_visit: str


def fresh_folder(path, games_ini=None):
    """A copy of the program's folder as it is installed, with other definitions when some are given."""
    shutil.copytree(PROGRAM_FOLDER, path)
    if games_ini:
        shutil.copyfile(games_ini, path / "Games.ini")
    return path


def write_settings(folder, games, **others):
    """A settings file that shows the first `games` games and selects the first of them. Other values are
    given as section__key=value."""
    sections = {"Games": {f"Visible{number}": 1 for number in range(1, games + 1)}}
    sections["Selection"] = {"LastGame": FIRST_GAME_POSITION}
    sections["Filter"] = {"Locked": 0, "Ping": 0}
    for name, value in others.items():
        section, key = name.split("__")
        sections.setdefault(section, {})[key] = value
    text = ""
    for section, values in sections.items():
        text += f"[{section}]\n" + "".join(f"{key}={value}\n" for key, value in values.items())
    (folder / "Quarn.ini").write_text(text.replace("\n", "\r\n"), "latin-1", newline="")


def set_master(folder, **values):
    """Changes keys of every game's master in the definitions, given as Key=value."""
    definitions = (folder / "Games.ini").read_text("latin-1")
    for key, value in values.items():
        definitions = re.sub(rf"(?m)^{key}=.*$", f"{key}={value}", definitions)
    (folder / "Games.ini").write_text(definitions, "latin-1", newline="")


class Quarn:
    """The running program. Leaving the `with` block ends it, however far it came."""

    def __init__(self, folder, set_up=None, arguments=""):
        self.folder = folder
        self.do = Driver(set_up)
        self._numbers = resource_numbers()
        self.do.start(folder / "Quarn.exe", arguments)

    def __enter__(self):
        return self

    def __exit__(self, *exception):
        self.do.__exit__(*exception)

    def control(self, name):
        return f"#{self._numbers[name]}"

    def wait_until_usable(self):
        """The window stands, has loaded its list, and no dialog is in front of it."""
        self.do.wait("normal", "state")
        self.wait_for_status("Ready.")

    def status(self, panel=1):
        return self.do.text("status", self.control("sbMain"), panel)

    def wait_for_status(self, pattern, panel=1):
        self.do.wait(pattern, "status", self.control("sbMain"), panel)

    def choose(self, menu_entry):
        self.do("command", self._numbers[menu_entry])

    def press_toolbar(self, button):
        self.do("press-button", self.control("tbMain"), TOOLBAR[button])

    def toolbar_states(self):
        return [state for _, state in self.do.table("buttons", self.control("tbMain"))]

    def click_tree(self, *path):
        def clicked():
            try:
                self.do("click-node", self.control("trvGames"), *path)
            except DriverError as error:
                if "has no node" not in str(error):
                    raise
                return False
            return True

        # A tree that is being rebuilt may not have the node yet.
        wait_until(clicked, f"the tree has the node {path}")

    def tree(self):
        """The tree's texts, indented by two blanks a level."""
        # A tree that is being rebuilt loses nodes under the reader's eyes: then it is read again.
        lines = self.do.wait("Games*", "tree", self.control("trvGames"))
        return [unescape(line.split("\t")[0]) for line in lines]

    def selected_node(self):
        return self.do.text("selected-node", self.control("trvGames"))

    def row_count(self):
        return int(self.do.text("row-count", self.control("lvwServers")))

    def rows(self):
        return [Row(*cells) for cells in self.do.table("rows", self.control("lvwServers"))]

    def click_row(self, number):
        self.do("click-row", self.control("lvwServers"), number)

    def wait_for_rows(self, count):
        self.do.wait(count, "row-count", self.control("lvwServers"))

    def wait_for_players(self, count):
        self.do.wait(count, "row-count", self.control("lvwPlayers"))

    def players(self):
        return self.do.table("rows", self.control("lvwPlayers"))

    def variables(self):
        return self.do.table("rows", self.control("lvwServVars"))

    def message(self, title):
        """Waits for a message box and returns its text; the box stays open."""
        self.do.wait("*", "use", title)
        texts = [row[3] for row in self.do.table("controls") if row[1] == "Static" and row[3]]
        self.do("use")
        return "\n".join(texts)

    def answer(self, title, button):
        """Waits for a dialog, presses one of its buttons and waits until it is gone."""
        self.do.wait("*", "use", title)
        self.do("press", button)
        self.do("use")
        self.do.wait(0, "is-open", title)

    def renew(self):
        self.press_toolbar("querymaster")
        self.answer("Clear server list", "Yes")

    def start_scan(self, network, datagrams, button="refreshall"):
        """Starts a scan and waits until the servers of its network have received this number of datagrams. It must
        be more than the scan sends before the status bar shows it: the bar may still show the scan before."""
        wanted = network.asked() + datagrams
        self.press_toolbar(button)
        wait_until(lambda: network.asked() >= wanted, "the servers are asked")

    def wait_for_scan(self):
        """Waits until a scan has come to its end, which puts another text into the status bar than the
        master query and the scan itself do."""
        self.wait_for_status("Ready.")

    def measure_scan(self):
        """As wait_for_scan; returns how long that took and how long the window's slowest answer took, both in
        milliseconds."""
        return map(int, self.do.text("measure", "Ready.", "status", self.control("sbMain"), 1).split())

    def close(self, report=None):
        """Closes the window, giving an answer to the offer to send a report when errors were logged;
        returns the exit code."""
        self._press_close()
        if report:
            self.answer("Send error log?", report)
        return self.do.exit_code()

    def _press_close(self):
        # A dialog goes a moment before it lets the window go.
        self.do.wait("", "close")

    def is_running(self):
        return self.do("is-running") == ["1"]

    def leave(self):
        """Closes the window whatever was logged, and waits until the program has ended."""
        self._press_close()

        def ended_or_asks():
            if self.is_running() and self.do("is-open", "Send error log?") == ["1"]:
                self.answer("Send error log?", "No")
            return not self.is_running()

        wait_until(ended_or_asks, "the program has ended")

    def run_second_instance(self):
        return int(self.do.text("run", windows_path(self.folder / "Quarn.exe")))

    def log(self):
        return (self.folder / f"{TITLE}.log").read_bytes().decode("latin-1")
