"""The driver itself, on a window that tells in its status bar what was done to it."""

import re

import pytest

from harness.driver import Driver, DriverError
from harness.places import ROOT, STAND_IN


def numbers():
    header = (ROOT / "tests/e2e/standin/ids.h").read_text()
    return {name: f"#{number}" for name, number in re.findall(r"#define ID_(\w+) (\d+)", header)}


ID = numbers()


def command(name):
    return ID[name].removeprefix("#")


@pytest.fixture
def do():
    with Driver() as driver:
        driver.start(STAND_IN)
        driver.wait("normal", "state")
        yield driver


def fill(do):
    do("command", command("fill"))
    do.wait("40", "row-count", ID["list"])


def wait_for_event(do, text):
    do.wait(text, "status", ID["status"], 1)


def test_reads_the_window(do):
    assert do("title") == ["Stand-in"]
    assert do.table("windows") == [["Stand-in", "StandIn", "enabled"]]
    classes = [row[1] for row in do.table("controls")]
    assert classes == [
        "ToolbarWindow32",
        "SysTreeView32",
        "SysListView32",
        "SysHeader32",
        "msctls_statusbar32",
        "msctls_progress32",
    ]


def test_a_control_is_found_by_its_class(do):
    assert do("row-count", "SysListView32") == do("row-count", "syslistview32:1") == ["0"]


def test_moves_and_sizes_the_window(do):
    do("move", 50, 60, 500, 300)
    assert do("rectangle") == ["50 60 500 300"]
    assert do("top-most") == ["0"]
    do("minimize")
    do.wait("minimized", "state")
    do("restore")
    do.wait("normal", "state")


def test_reads_bars(do):
    assert do("status", ID["status"]) == ["", "second"]
    assert do("progress", ID["progress"]) == ["17/60"]
    assert do.table("buttons", ID["toolbar"]) == [
        [command("ask"), "enabled"],
        ["0", "separator"],
        [command("disabled"), "disabled"],
    ]


def test_walks_the_tree(do):
    do("expand-node", ID["tree"], "Games")
    do("click-node", ID["tree"], "Games", "First & last")
    wait_for_event(do, "clicked the tree")
    do.wait("First & last", "selected-node", ID["tree"])
    rows = [(text, state) for text, state, _ in do.table("tree", ID["tree"])]
    assert rows == [("Games", ""), ("  First & last", "selected"), ("Filters", "")]
    do("right-click-node", ID["tree"], "Filters")
    wait_for_event(do, "right-clicked the tree")
    do("select-node", ID["tree"], "Games")
    do.wait("Games", "selected-node", ID["tree"])


def test_cells_come_byte_for_byte(do):
    fill(do)
    rows = do.table("rows", ID["list"])
    assert len(rows) == 40
    assert rows[30] == ["", "row\t31\\\xe9"]


def test_works_on_rows(do):
    fill(do)
    do("click-row", ID["list"], 3)
    wait_for_event(do, "clicked 3")
    assert do("selected-rows", ID["list"]) == ["3"]
    do("double-click-row", ID["list"], 38)
    wait_for_event(do, "double-clicked 38")
    do("right-click-row", ID["list"], 37)
    wait_for_event(do, "right-clicked 37")
    do("key", ID["list"], "down")
    wait_for_event(do, "key 40")
    do.wait("38", "selected-rows", ID["list"])
    do("select-rows", ID["list"], 2, 5)
    assert do("selected-rows", ID["list"]) == ["2 5"]


def test_shows_the_sort_arrow(do):
    do("click-header", ID["list"], 1)
    wait_for_event(do, "sorted 1")
    assert do.table("columns", ID["list"]) == [["", ""], ["Name", "up"]]
    do("click-header", ID["list"], 1)
    do.wait("*down", "columns", ID["list"])


def test_answers_a_message_box(do):
    do("press-button", ID["toolbar"], 1)
    do.wait("*", "use", "Question")
    texts = [text for _, name, _, text in do.table("controls") if name == "Static"]
    assert "Really?\r\nSure?" in texts
    do("press", "no")
    do("use")
    wait_for_event(do, "no")
    do.wait("0", "is-open", "Question")


def test_fills_in_a_dialog(do):
    do("command", command("dialog"))
    do.wait("*", "use", "Stand-in dialog")
    do("set-text", ID["edit"], 'a "b" \\c')
    assert do.text("text", ID["edit"]) == 'a "b" \\c'
    do("press", "Remember")
    do.wait("1", "checked", ID["check"])
    do("choose", ID["combo"], "third")
    do("choose", ID["listbox"], "second")
    assert do("items", ID["combo"]) == [" first", " second", "*third"]
    assert do("items", ID["listbox"]) == [" first", "*second", " third"]
    do("tab", ID["tabs"], 1)
    do("press", "OK")
    do("use")
    wait_for_event(do, 'OK a "b" \\c 1 2 1')


def test_types_where_the_focus_is(do):
    do("command", command("dialog"))
    do.wait("*", "use", "Stand-in dialog")
    do.wait(ID["edit"], "focus")
    do("type", 'A "b" +1')
    do.wait('A "b" +1', "text", ID["edit"])
    do("keyboard", "tab", "alt+r")
    do.wait("1", "checked", ID["check"])
    assert do("focus") == [ID["check"]]
    do("keyboard", "shift+tab")
    do.wait(ID["edit"], "focus")
    do("click", ID["check"])
    do.wait("0", "checked", ID["check"])
    do("keyboard", "escape")
    do("use")
    do.wait("0", "is-open", "Stand-in dialog")


def test_reports_the_exit_code(do):
    do("close")
    assert do.exit_code() == 42


def test_ends_the_program_with_itself(do):
    with Driver() as second:
        second("attach", "standin.exe")
        do.__exit__(None, None, None)
        assert second.exit_code() == 1


@pytest.mark.parametrize(
    "words, reason",
    [
        (["no-such-command"], "no command no-such-command"),
        (["rows"], "rows needs LIST"),
        (["rows", "#999"], "no control #999"),
        (["rows", "#"], "is no number"),
        (["click-row", ID["list"], "1"], "no row 1"),
        (["click-row", ID["list"], "x"], '"x" is no number'),
        (["click-node", ID["tree"], "Games", "Last"], 'no node "Last"'),
        (["click-header", ID["list"], "2"], "no column 2"),
        (["status", ID["status"], "3"], "no panel 3"),
        (["press-button", ID["toolbar"], "3"], "disabled"),
        (["press-button", ID["toolbar"], "4"], "no button 4"),
        (["key", ID["list"], "hyper"], 'no key "hyper"'),
        (["keyboard", "alt+hyper"], 'no key "hyper"'),
        (["keyboard", "alt+"], 'no key ""'),
        (["use", "No such window"], "no window has the title"),
        (["attach", "standin.exe"], "has its program already"),
        (["start", "Z:\\nowhere.exe"], "has its program already"),
        (["run", "Z:\\nowhere.exe"], "cannot be started"),
    ],
)
def test_says_why_something_cannot_be_done(do, words, reason):
    with pytest.raises(DriverError, match=re.escape(reason)):
        do(*words)


def test_reaches_nothing_behind_a_dialog(do):
    do("press-button", ID["toolbar"], 1)
    do.wait("1", "is-open", "Question")
    for words in (["command", command("fill")], ["click-row", ID["list"], 1], ["close"]):
        with pytest.raises(DriverError, match="a dialog is open in front of it"):
            do(*words)


def test_a_wait_ends(do):
    do("timeout", 1)
    with pytest.raises(DriverError, match="waited in vain"):
        do.wait("never", "title")


def test_measures_until_the_result_shows(do):
    do("command", command("fill"))
    total, longest = map(int, do.text("measure", "40", "row-count", ID["list"]).split())
    assert do("row-count", ID["list"]) == ["40"]
    assert 0 <= longest <= total + 20  # an answer that comes at once may be the slowest all the same
    do("timeout", 1)
    with pytest.raises(DriverError, match="measured in vain"):
        do("measure", "never", "title")


def test_knows_that_its_program_is_missing():
    with Driver() as driver:
        with pytest.raises(DriverError, match="no program was started"):
            driver("title")
        with pytest.raises(DriverError, match="nosuch.exe does not run"):
            driver("attach", "nosuch.exe")
