"""Rules for the sources as a whole, which no compiler checks."""

import itertools
import re
from pathlib import Path

import pytest

ROOT = Path(__file__).resolve().parents[2]
MODULE_FOLDERS = ("core", "query", "views", "launch", "support")

SEVERAL_THREADS = re.compile(
    r"#include <(?:atomic|barrier|condition_variable|future|latch|(?:shared_)?mutex|semaphore|thread)>"
    r"|\b(?:thread_local|std::(?:async|atomic|jthread|mutex|thread))\b"
    r"|\b(?:_?beginthread(?:ex)?|Create(?:Remote)?Thread(?:pool\w*)?|QueueUserWorkItem"
    r"|EnterCriticalSection|AcquireSRWLock\w*|Interlocked\w+)\b"
)

# The folders by floor, the lowest first. A source includes its own folder and those of lower floors.
FLOORS = [
    {"base"},
    {"controls", "desktop"},
    {"core"},
    {"support"},
    {"query"},
    {"launch"},
    {"views"},
    {"win32"},
]
FOLDERS = [folder for floor in FLOORS for folder in sorted(floor)]
# The only sources that include a folder of a higher floor.
UPWARD_INCLUDES = {
    ("core/modCommonSubs.cpp", "support"): "writes to the log",
    ("core/modDefinitions.cpp", "query"): "owns the country lookup",
    ("core/modDefinitions.cpp", "support"): "owns the log",
    ("core/modMain.cpp", "query"): "opens the country lookup",
    ("core/modMain.cpp", "support"): "opens the log",
}
INCLUDED_FOLDER = re.compile(r'^ *# *include "([^/"]+)/', re.MULTILINE)

# A name under which errors are logged.
MODULE = re.compile(r'"((?:mod|frm|cls)[A-Z]\w*)"')


def sources(*folders):
    files = [file for folder in folders for file in sorted((ROOT / folder).rglob("*"))]
    return [file for file in files if file.suffix in (".h", ".cpp")]


@pytest.mark.parametrize("folder", FOLDERS)
def test_there_is_one_thread_only(folder):
    files = sources(folder)
    assert files
    assert {file: found[0] for file in files if (found := SEVERAL_THREADS.search(file.read_text()))} == {}


def test_a_name_in_the_log_leads_to_a_source_in_the_same_folder():
    named = [(file, name) for file in sources(*MODULE_FOLDERS) for name in MODULE.findall(file.read_text())]
    assert len(named) > 20
    for file, name in named:
        assert file.with_name(f"{name}.h").exists(), f"{file} logs as {name}"


@pytest.mark.parametrize("folder", FOLDERS)
def test_a_folder_includes_only_folders_of_lower_floors(folder):
    below = itertools.takewhile(lambda floor: folder not in floor, FLOORS)
    allowed = {folder}.union(*below)
    files = sources(folder)
    assert files
    others = {
        (str(file.relative_to(ROOT)), included)
        for file in files
        for included in INCLUDED_FOLDER.findall(file.read_text())
        if included not in allowed
    }
    assert others == {listed for listed in UPWARD_INCLUDES if listed[0].startswith(folder + "/")}


# Units without a suite of their own name, and where they are tested: a part of a larger unit, a base class, or
# code that needs the running program.
TESTED_ELSEWHERE = {
    "win32/Dialog": "EveryDialogTest",
    "win32/DialogTemplate": "EveryDialogTest",
    "win32/Fonts": "MainWindowTest",
    "win32/MainWindowEvents": "MainWindowTest",
    "win32/MainWindowForm": "MainWindowTest",
    "win32/PerformanceCounter": "ClockWinTest",
    "win32/PixelsOfPng": "PixelsTest",
    "win32/Resources": "ImagesTest",
    "win32/WinMain": "tests/e2e/test_start.py",
    "win32/controls/Control": "ListViewControlTest",
    "win32/controls/ListViewControlEvents": "ListViewControlTest",
    "win32/desktop/Patience": "FilesWinTest",
    "win32/dialogs/ModalFormsWin": "EveryDialogTest",
}
SUITE = re.compile(r"^TEST(?:_F|_P)?\((\w+),", re.MULTILINE)


def test_every_unit_has_a_test_suite_of_its_name():
    suites = {suite for file in sources("tests") for suite in SUITE.findall(file.read_text())}
    assert suites
    units = [file for file in sources(*FOLDERS) if file.suffix == ".cpp"]
    names = {file.stem for file in units}
    # DialogCommandsTest is a suite of DialogCommands, not of Dialog.
    tested = {
        max((name for name in names if suite.startswith(name)), key=len, default=None) for suite in suites
    }
    without = {str(file.relative_to(ROOT).with_suffix("")) for file in units if file.stem not in tested}
    assert without == set(TESTED_ELSEWHERE)
    for unit, place in TESTED_ELSEWHERE.items():
        assert place in suites or (ROOT / place).is_file(), f"{unit} is tested in {place}"
