"""A window that moves between screens of different scales."""

import pytest

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


@pytest.mark.parametrize("dpi", [120, 144, 192])
def test_everything_grows_with_the_scale_and_back(quarn, dpi):
    before = sizes(quarn)
    quarn.do("change-dpi", 96, dpi)
    scaled = sizes(quarn)
    assert scaled["window"] == [side * dpi // 96 for side in SIZE]
    for bar in "tbMain", "sbMain":
        # Fonts and pictures have sizes of their own, which are near the scale.
        assert scaled[bar][1] == pytest.approx(before[bar][1] * dpi / 96, rel=0.15), bar
    # The window's caption, menu and edges keep their size here, and leave that much more to the lists.
    for part in PARTS[:4]:
        assert scaled[part] == pytest.approx([side * dpi / 96 for side in before[part]], abs=40), part
    quarn.do("change-dpi", dpi, 96)
    assert sizes(quarn) == before
    assert quarn.close() == 0
