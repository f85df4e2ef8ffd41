"""What the tests of the packages work with: the packages of this build, a smaller and older release to upgrade
from, and the folders of the user in the Wine prefix. They need what package.sh makes; test.sh provides it."""

import os
import shutil
import subprocess
import sys
from pathlib import Path

import pytest

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests" / "e2e"))

from installation import Installation  # noqa: E402

BUILD = ROOT / "build" / "win64"
PACKAGES = ROOT / "build" / "packages"
OLDER_VERSION = "0.9.0"
SOME_DAY = "1700000000"


def pytest_runtestloop(session):
    if session.config.option.collectonly:
        return
    if not {"WINEPREFIX", "DISPLAY"} <= os.environ.keys():
        pytest.exit("the tests of the packages need Wine and a display: run ./test.sh", returncode=2)
    if not PACKAGES.exists():
        pytest.exit("no packages to test: run ./package.sh", returncode=2)


@pytest.fixture(scope="session")
def pack():
    """Packs a build folder; returns the ZIP and the installer."""

    def run(build, version, output, day=SOME_DAY, **environment):
        subprocess.run(
            [ROOT / "tools" / "packaging" / "make-packages", build, version, output],
            check=True,
            env={**os.environ, "SOURCE_DATE_EPOCH": day, **environment},
        )
        return output / f"Quarn-{version}.zip", output / f"Quarn-{version}-setup.exe"

    return run


@pytest.fixture(scope="session")
def small_build(tmp_path_factory):
    """A build whose program, games and countries differ from this one's, and which is packed in no time."""
    build = tmp_path_factory.mktemp("small") / "build"
    shutil.copytree(BUILD / "Quarn", build / "Quarn")
    (build / "win32" / "icons").mkdir(parents=True)
    shutil.copy(BUILD / "win32" / "icons" / "quarn.ico", build / "win32" / "icons")
    with open(build / "Quarn" / "Quarn.exe", "ab") as program:
        program.write(b"older")
    (build / "Quarn" / "Games.ini").write_text("[General]\nIniDesc=Older games\nGameNum=0\nMODNum=0\n")
    (build / "Quarn" / "countryip.dat").write_text("1\n0;1;XX\n")
    return build


@pytest.fixture(scope="session")
def older_setup(small_build, pack, tmp_path_factory):
    return pack(small_build, OLDER_VERSION, tmp_path_factory.mktemp("older"))[1]


@pytest.fixture
def installation():
    """The user's system without Quarn, before the test and after it."""
    system = Installation()
    system.clear()
    yield system
    system.clear()
