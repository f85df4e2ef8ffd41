"""The release that the packages are of."""

import re

from harness.places import ROOT

# The one place where the version stands.
VERSION = re.search(r"^project\(Quarn VERSION ([\d.]+)", (ROOT / "CMakeLists.txt").read_text(), re.MULTILINE)[
    1
]
