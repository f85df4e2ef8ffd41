"""The built Windows executables: what they need from the system, and how they are protected."""

import re
import struct
import subprocess
from pathlib import Path
from xml.etree import ElementTree

import pytest

ROOT = Path(__file__).resolve().parents[2]
BUILD = ROOT / "build"

# Libraries that every Windows from version 7 on takes from its own folder, wherever a program lies: its list of
# known libraries. Any other one would be looked for next to the program before the program's first instruction.
KNOWN_LIBRARIES = {
    "advapi32.dll",
    "comdlg32.dll",
    "gdi32.dll",
    "kernel32.dll",
    "msvcrt.dll",
    "ole32.dll",
    "oleaut32.dll",
    "shell32.dll",
    "shlwapi.dll",
    "user32.dll",
    "ws2_32.dll",
}
# Its version is in the program's manifest, and the system keeps its libraries of several versions in one place.
LIBRARIES_OF_THE_MANIFEST = {"comctl32.dll"}

# Bits of the DllCharacteristics in a program's header.
HIGH_ENTROPY_VA, DYNAMIC_BASE, NX_COMPAT = 0x20, 0x40, 0x100

# Numbers of resource types.
VERSION, MANIFEST = 16, 24


class Executable:
    def __init__(self, preset, architecture, protections):
        objdump = f"{architecture}-w64-mingw32-objdump"
        self.path = BUILD / preset / "Quarn" / "Quarn.exe"
        self.headers = subprocess.run(
            [objdump, "-p", self.path], check=True, capture_output=True, text=True
        ).stdout
        self.content = self.path.read_bytes()
        self.protections = protections

    def number(self, field):
        return int(re.search(rf"^{field}\s+([0-9a-f]+)", self.headers, re.MULTILINE).group(1), 16)

    def size_of_directory(self, number):
        entry = re.search(rf"^Entry {number:x} [0-9a-f]+ ([0-9a-f]+) ", self.headers, re.MULTILINE)
        return int(entry.group(1), 16)

    def resource(self, kind):
        command = ["wrestool", "--extract", "--raw", f"--type={kind}", "--name=1", self.path]
        return subprocess.run(command, check=True, capture_output=True).stdout


@pytest.fixture(
    scope="module",
    params=[
        pytest.param(("win64", "x86_64", HIGH_ENTROPY_VA | DYNAMIC_BASE | NX_COMPAT), id="win64"),
        pytest.param(("win32", "i686", DYNAMIC_BASE | NX_COMPAT), id="win32"),
    ],
)
def executable(request):
    return Executable(*request.param)


def test_no_library_next_to_it_is_loaded_at_its_start(executable):
    imported = {name.lower() for name in re.findall(r"DLL Name: (\S+)", executable.headers)}
    assert "kernel32.dll" in imported
    assert imported - KNOWN_LIBRARIES - LIBRARIES_OF_THE_MANIFEST == set()


def test_the_linker_protects_it(executable):
    assert executable.number("DllCharacteristics") & executable.protections == executable.protections


def test_the_loader_can_move_it(executable):
    # Without relocations, the dynamic base is a promise that the loader cannot keep.
    base_relocations = 5
    assert executable.size_of_directory(base_relocations) > 0


def test_loads_no_library_later(executable):
    # A delayed import would be looked for when the search for libraries may have changed.
    delayed_imports = 13
    assert executable.size_of_directory(delayed_imports) == 0


def test_exports_nothing(executable):
    exports = 0
    assert executable.size_of_directory(exports) == 0


def test_opens_no_console(executable):
    windows_subsystem = 2
    assert executable.number("Subsystem") == windows_subsystem


def test_holds_neither_the_time_nor_the_place_of_its_build(executable):
    assert re.search(r"^Time/Date\s+Thu Jan +1 00:00:00 1970", executable.headers, re.MULTILINE)
    assert bytes(BUILD.parent) not in executable.content


def project_version():
    project = (ROOT / "CMakeLists.txt").read_text()
    return re.search(r"project\(Quarn VERSION ([0-9.]+)", project).group(1)


def test_its_manifest_asks_for_no_rights_and_for_the_themed_controls(executable):
    manifest = ElementTree.fromstring(executable.resource(MANIFEST))

    def elements(name):
        return [element for element in manifest.iter() if element.tag.rpartition("}")[2] == name]

    levels = [element.attrib for element in elements("requestedExecutionLevel")]
    assert levels == [{"level": "asInvoker", "uiAccess": "false"}]
    own, *needed = (element.attrib for element in elements("assemblyIdentity"))
    assert (own["name"], own["version"]) == ("Quarn", project_version() + ".0")
    assert [(each["name"], each["version"]) for each in needed] == [
        ("Microsoft.Windows.Common-Controls", "6.0.0.0")
    ]
    assert [element.text for element in elements("dpiAware")] == ["true"]
    windows_10 = "{8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}"
    assert windows_10 in [element.attrib["Id"] for element in elements("supportedOS")]


def test_its_version_resource_tells_the_projects_version(executable):
    resource = executable.resource(VERSION)
    signature = struct.pack("<I", 0xFEEF04BD)
    fixed = struct.unpack_from("<13I", resource, resource.index(signature))
    numbers = [int(number) for number in project_version().split(".")] + [0]
    for high, low in ((2, 3), (4, 5)):  # of the file, of the product
        assert [fixed[high] >> 16, fixed[high] & 0xFFFF, fixed[low] >> 16, fixed[low] & 0xFFFF] == numbers
    texts = resource.decode("utf-16-le", errors="replace")
    for name, value in (
        ("ProductName", "Quarn"),
        ("OriginalFilename", "Quarn.exe"),
        ("FileVersion", project_version()),
        ("ProductVersion", project_version()),
    ):
        assert re.search(rf"{name}\0+{re.escape(value)}\0", texts), name


def icon_sizes(path, name):
    """The sizes of one icon in a program's resources, from the directory that an icon file begins with."""
    icon = subprocess.run(
        ["wrestool", "--extract", "--type=14", f"--name={name}", path], check=True, capture_output=True
    ).stdout
    (count,) = struct.unpack_from("<H", icon, 4)
    return [icon[6 + 16 * entry] or 256 for entry in range(count)]


def test_its_pictures_fit_every_scale():
    # 16 pixels and the toolbar's 24 at 100, 125, 150, 200 percent and more; the program also on the desktop.
    path = BUILD / "win64" / "Quarn" / "Quarn.exe"
    listed = subprocess.run(
        ["wrestool", "--list", "--type=14", path], check=True, capture_output=True, text=True
    )
    names = re.findall(r"--name='(\w+)'", listed.stdout)
    assert names[0] == "APPLICATION", "the Explorer shows the first"
    assert len(names) == len(set(names)) > 10
    for name in names:
        program_only = [64, 256] if name == "APPLICATION" else []
        assert icon_sizes(path, name) == [16, 20, 24, 32, 40, 48] + program_only, name


def test_is_small(executable):
    assert len(executable.content) <= 1_800_000
