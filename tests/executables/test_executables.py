"""The built Windows executables: what they need from the system, and how they are protected."""

import re
import subprocess
from pathlib import Path

import pytest

BUILD = Path(__file__).resolve().parents[2] / "build"

# Libraries that are part of every Windows from version 7 on.
SYSTEM_LIBRARIES = {
    "advapi32.dll",
    "comctl32.dll",
    "comdlg32.dll",
    "gdi32.dll",
    "kernel32.dll",
    "msvcrt.dll",
    "ole32.dll",
    "oleaut32.dll",
    "shell32.dll",
    "shlwapi.dll",
    "user32.dll",
    "uxtheme.dll",
    "version.dll",
    "ws2_32.dll",
    "wsock32.dll",
}

# Bits of the DllCharacteristics in a program's header.
HIGH_ENTROPY_VA, DYNAMIC_BASE, NX_COMPAT = 0x20, 0x40, 0x100


class Executable:
    def __init__(self, preset, architecture, protections):
        objdump = f"{architecture}-w64-mingw32-objdump"
        path = BUILD / preset / "Quarn" / "Quarn.exe"
        self.headers = subprocess.run(
            [objdump, "-p", path], check=True, capture_output=True, text=True
        ).stdout
        self.content = path.read_bytes()
        self.protections = protections

    def number(self, field):
        return int(re.search(rf"^{field}\s+([0-9a-f]+)", self.headers, re.MULTILINE).group(1), 16)


@pytest.fixture(
    scope="module",
    params=[
        pytest.param(("win64", "x86_64", HIGH_ENTROPY_VA | DYNAMIC_BASE | NX_COMPAT), id="win64"),
        pytest.param(("win32", "i686", DYNAMIC_BASE | NX_COMPAT), id="win32"),
    ],
)
def executable(request):
    return Executable(*request.param)


def test_needs_system_libraries_only(executable):
    imported = {name.lower() for name in re.findall(r"DLL Name: (\S+)", executable.headers)}
    assert "kernel32.dll" in imported
    assert imported - SYSTEM_LIBRARIES == set()


def test_the_linker_protects_it(executable):
    assert executable.number("DllCharacteristics") & executable.protections == executable.protections


def test_the_loader_can_move_it(executable):
    # Without relocations, the dynamic base is a promise that the loader cannot keep.
    directory = re.search(r"^Entry 5 [0-9a-f]+ ([0-9a-f]+) Base Relocation", executable.headers, re.MULTILINE)
    assert int(directory.group(1), 16) > 0


def test_opens_no_console(executable):
    windows_subsystem = 2
    assert executable.number("Subsystem") == windows_subsystem


def test_holds_neither_the_time_nor_the_place_of_its_build(executable):
    assert re.search(r"^Time/Date\s+Thu Jan +1 00:00:00 1970", executable.headers, re.MULTILINE)
    assert bytes(BUILD.parent) not in executable.content
