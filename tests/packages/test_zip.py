"""The ZIP, and that packing is repeatable."""

import shutil
import struct
import zipfile

from conftest import BUILD, OLDER_VERSION, PACKAGES
from release import VERSION

FILES = {
    "Games.ini",
    "Licences/GCC runtime.txt",
    "Licences/MinGW-w64 runtime.txt",
    "Licences/Third-party notices.txt",
    "Quarn.exe",
    "ReadMe.txt",
    "countryip-licence.txt",
    "countryip.dat",
}


def test_the_zip_has_one_folder_that_holds_everything():
    with zipfile.ZipFile(PACKAGES / f"Quarn-{VERSION}.zip") as packed:
        assert packed.namelist() == sorted(f"Quarn/{name}" for name in FILES)
        assert packed.read("Quarn/Quarn.exe") == (BUILD / "Quarn" / "Quarn.exe").read_bytes()
        assert packed.read("Quarn/countryip.dat") == (BUILD / "Quarn" / "countryip.dat").read_bytes()
        for name in FILES - {"Quarn.exe", "countryip.dat"}:
            text = packed.read(f"Quarn/{name}")
            assert text.count(b"\n") == text.count(b"\r\n") > 0, name
        assert packed.read("Quarn/ReadMe.txt").startswith(f"Quarn {VERSION}\r\n".encode())


def test_only_two_packages_are_made():
    assert {path.name for path in PACKAGES.iterdir()} == {
        f"Quarn-{VERSION}.zip",
        f"Quarn-{VERSION}-setup.exe",
    }


def test_the_installer_carries_the_version():
    content = (PACKAGES / f"Quarn-{VERSION}-setup.exe").read_bytes()
    start = content.index(struct.pack("<I", 0xFEEF04BD))  # of the version resource
    high, low = struct.unpack_from("<II", content, start + 8)
    assert f"{high >> 16}.{high & 0xFFFF}.{low >> 16}" == VERSION


def test_packing_elsewhere_and_later_gives_the_same_bytes(small_build, pack, tmp_path):
    copy = tmp_path / "a folder of another name" / "build"
    shutil.copytree(small_build, copy, copy_function=shutil.copyfile)
    first = pack(small_build, OLDER_VERSION, tmp_path / "first")
    second = pack(copy, OLDER_VERSION, tmp_path / "second", TZ="Asia/Tokyo", LC_ALL="C.UTF-8")
    for one, other in zip(first, second):
        assert one.read_bytes() == other.read_bytes(), one.name
    another_day = pack(small_build, OLDER_VERSION, tmp_path / "third", day="1700000100")
    assert another_day[0].read_bytes() != first[0].read_bytes()
