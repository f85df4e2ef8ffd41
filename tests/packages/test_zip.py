"""The ZIP, and that packing is repeatable."""

import shutil
import struct
import subprocess
import zipfile

import pytest

from conftest import BUILD, OLDER_VERSION, PACKAGES, ROOT
from release import VERSION

FILES = {
    "Games.ini",
    "Quarn.ini",
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


def test_the_settings_name_two_favorites_folders_and_nothing_else():
    with zipfile.ZipFile(PACKAGES / f"Quarn-{VERSION}.zip") as packed:
        settings = packed.read("Quarn/Quarn.ini")
        assert b"keep your own Quarn.ini" in b" ".join(packed.read("Quarn/ReadMe.txt").split())
    assert settings == b"[Favorites]\r\nName1=My servers\r\nName2=Friends\r\n"


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


def test_a_signing_command_gets_program_uninstaller_and_installer(small_build, pack, tmp_path):
    signed = tmp_path / "signed files.txt"
    command = tmp_path / "sign it"
    command.write_text(f'#!/bin/bash\necho "$1: $2" >>"{signed}"\nprintf SIGNATURE >>"$2"\n')
    command.chmod(0o755)
    packed, setup = pack(small_build, OLDER_VERSION, tmp_path / "output", sign=f'"{command}" --quietly')
    lines = signed.read_text().splitlines()
    assert len(lines) == 3
    assert all(line.startswith("--quietly: /") for line in lines)
    assert lines[0].endswith("/Quarn.exe")
    assert lines[2].endswith(f"/Quarn-{OLDER_VERSION}-setup.exe")
    assert setup.read_bytes().endswith(b"SIGNATURE")
    with zipfile.ZipFile(packed) as files:
        assert files.read("Quarn/Quarn.exe").endswith(b"olderSIGNATURE")


def test_a_signature_that_fails_makes_no_package(small_build, pack, tmp_path):
    with pytest.raises(subprocess.CalledProcessError):
        pack(small_build, OLDER_VERSION, tmp_path / "output", sign="false")
    assert not list((tmp_path / "output").iterdir())
    only_program = "f() { [[ $1 == */Quarn.exe ]]; }; f"
    with pytest.raises(subprocess.CalledProcessError):
        pack(small_build, OLDER_VERSION, tmp_path / "output", sign=only_program)
    assert not list((tmp_path / "output").glob("*.exe"))


@pytest.mark.parametrize(
    "options, error",
    [
        (["--sign"], "error: --sign needs a command; see ./package.sh --help\n"),
        (
            ["--sign", "true", "--verify"],
            "error: --verify compares packages without signatures: leave out --sign\n",
        ),
        (
            ["--verify", "--sign", "true"],
            "error: --verify compares packages without signatures: leave out --sign\n",
        ),
    ],
)
def test_options_that_do_not_go_together_are_refused(options, error):
    done = subprocess.run([ROOT / "package.sh", *options], capture_output=True, text=True)
    assert (done.returncode, done.stderr) == (1, error)
