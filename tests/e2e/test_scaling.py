"""A window that moves between screens of different scales."""

import pytest

from harness.places import wait_until
from harness.quarn import write_settings

# Twice as large it still fits on the screen.
SIZE = (600, 480)
PARTS = ["trvGames", "lvwServers", "lvwPlayers", "lvwServVars", "tbMain", "sbMain"]


@pytest.fixture
def quarn(folder, start):
    place = folder()
    write_settings(place, 1, General__MinToTray=0)
    program = start(place)
    program.wait_until_usable()
    program.do("move", 0, 0, *SIZE)
    return program


def sizes(quarn):
    rectangles = {part: quarn.do.text("rectangle", quarn.control(part)) for part in PARTS}
    rectangles["window"] = quarn.do.text("rectangle")
    return {part: [int(number) for number in text.split()[2:]] for part, text in rectangles.items()}


def misfits(quarn, before, dpi):
    """The parts that have not grown with the scale. The window manager delays changes of the size, so parts may
    have intermediate sizes for a moment."""
    scaled = sizes(quarn)
    expected = {"window": [side * dpi // 96 for side in SIZE]}
    for bar in "tbMain", "sbMain":
        # Fonts and pictures have sizes of their own, which are near the scale.
        height = pytest.approx(before[bar][1] * dpi / 96, rel=0.15)
        expected[bar] = [scaled[bar][0], height]
    # The window's caption, menu and edges keep their size here, and leave that much more to the lists.
    for part in PARTS[:4]:
        expected[part] = pytest.approx([side * dpi / 96 for side in before[part]], abs=40)
    return {part: scaled[part] for part in expected if scaled[part] != expected[part]}


def restore(quarn, size):
    """The window manager moves a window that has grown onto the screen, and may shrink it."""
    if sizes(quarn)["window"] != size:
        quarn.do("move", 0, 0, *size)


def sizes_at_rest(quarn):
    def unchanged():
        restore(quarn, list(SIZE))
        first = sizes(quarn)
        fits = first["trvGames"][0] + first["lvwServers"][0] <= SIZE[0]
        return first if fits and first == sizes(quarn) else None

    return wait_until(unchanged, "the window has its size")


@pytest.mark.parametrize("dpi", [120, 144, 192])
def test_everything_grows_with_the_scale_and_back(quarn, dpi):
    before = sizes_at_rest(quarn)
    grown = [side * dpi // 96 for side in SIZE]

    def has_grown():
        restore(quarn, grown)
        return not misfits(quarn, before, dpi)

    def is_as_before():
        restore(quarn, list(SIZE))
        return sizes(quarn) == before

    quarn.do("change-dpi", 96, dpi)
    assert sizes(quarn)["window"] == grown
    wait_until(has_grown, "every part has grown")
    quarn.do("change-dpi", dpi, 96)
    wait_until(is_as_before, "every part has its old size")
    assert quarn.close() == 0
