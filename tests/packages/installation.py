"""The user's system under Wine as far as an installer changes it."""

import os
import re
import shutil
import subprocess
from pathlib import Path

from harness.places import windows_path

UNINSTALL_KEY = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Quarn"


def wine(*words):
    """Runs a program to its end; returns its exit code and what it printed."""
    done = subprocess.run(
        ["wine", *words],
        stdout=subprocess.PIPE,
        stderr=subprocess.DEVNULL,
        # No entries in this machine's menus.
        env={**os.environ, "WINEDLLOVERRIDES": "mscoree,mshtml=;winedbg.exe,winemenubuilder.exe=d"},
    )
    return done.returncode, done.stdout.decode("latin-1")


class Installation:
    """Quarn in the folder where it is installed unless the user chooses another."""

    def __init__(self):
        (self._profile,) = (
            path
            for path in (Path(os.environ["WINEPREFIX"]) / "drive_c" / "users").iterdir()
            if path.name != "Public"
        )
        self.folder = self._profile / "AppData" / "Local" / "Programs" / "Quarn"
        start_menu = self._profile / "AppData" / "Roaming" / "Microsoft" / "Windows" / "Start Menu"
        self.shortcut = start_menu / "Programs" / "Quarn.lnk"

    @property
    def windows_folder(self):
        return f"C:\\users\\{self._profile.name}\\AppData\\Local\\Programs\\Quarn"

    @staticmethod
    def run(setup):
        """Runs an installer silently; returns its exit code."""
        return wine(windows_path(setup), "/S")[0]

    def remove(self):
        """Runs the uninstaller silently. Left alone it would work on as a copy of itself, which nobody could
        wait for; told its folder it stays, and so does its file."""
        code, _ = wine(windows_path(self.folder / "Uninstall.exe"), "/S", "_?=" + self.windows_folder)
        if code == 0:
            (self.folder / "Uninstall.exe").unlink()
            if not any(self.folder.iterdir()):
                self.folder.rmdir()
        return code

    def entry(self):
        """The values of the entry in the list of installed programs."""
        code, output = wine("reg", "query", UNINSTALL_KEY)
        if code != 0:
            return {}
        return dict(re.findall(r"^ {4}(.+?) {4}REG_\w+ {4}(.*?)\r?$", output, re.MULTILINE))

    def files(self):
        """Names and contents of all files in the program's folder."""
        return {
            str(path.relative_to(self.folder)): path.read_bytes()
            for path in self.folder.rglob("*")
            if path.is_file()
        }

    def clear(self):
        shutil.rmtree(self.folder, ignore_errors=True)
        self.shortcut.unlink(missing_ok=True)
        wine("reg", "delete", UNINSTALL_KEY, "/f")
