"""Uses the palette of the real program as a person would, on virtual displays of its own: under two
window managers and under none. Exits with 1 if anything is not as it should be.

usage: palette.py BRIMLO SCREENSHOTS"""

import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tour"))
from desk import CARD, near, play  # noqa: E402
from field import Field  # noqa: E402

BORDER = tuple(round(c + (255 - c) * 0.1) for c in CARD)
MOSS = (0x3E, 0x8E, 0x63)
POINTER = "700", "150"
TEXTS = ["the first text", "the second text", "the third text", "שלום עולם",
         "👩‍👩‍👧\tand\x01controls"]
LONG_TEXTS = ["many\n" * 100_000, "a" * 1_000_000, "é" * (32 << 20)]


def clips(texts):
    return [{"id": str(i), "text": text, "savedAt": 1.7e12 - i, "source": "manual"}
            for i, text in enumerate(texts)]


def expect_closed(desk, what):
    desk.expect(what, lambda: not desk.windows())


def hotkey_to_editor(desk):
    field = Field(desk, "gtk")
    desk.run("xdotool", "mousemove", *POINTER)
    desk.check("the hotkey opens it", desk.open_palette())
    desk.check(f"500 wide, centred on the pointer, its top 40 above it: {desk.palette_place()}",
               desk.palette_place()[:3] == (450, 110, 500))
    x, y = 470, 130  # of the card, which is 460 wide
    row = y + 76 + 1 + 6

    def looks():
        colors = desk.pixels((x + 230, y + 70), (x + 459, y + 200), (x + 460, y + 200),
                             (x + 300, row + 18))
        return (near(colors[0], CARD) and near(colors[1], BORDER) and not near(colors[2], BORDER)
                and near(colors[3], MOSS))
    desk.expect("the card, its border and the selected row have their colours", looks)
    desk.type("SECOND")
    desk.keys("Return")
    desk.expect("letters, Return: the text stands in the editor",
                lambda: field.text() == "the second text")
    desk.check("the palette is gone", not desk.windows())
    desk.open_palette()
    desk.keys("Escape")
    expect_closed(desk, "Escape closes it")
    desk.type("!")
    desk.expect("the keyboard is the editor's again", lambda: field.text() == "the second text!")
    field.close()


def keys_and_pointer(desk):
    field = Field(desk, "gtk")
    desk.copy("third")
    desk.open_palette()
    desk.type("nothing has this")
    desk.keys("ctrl+a", "ctrl+v", "Down", "Return")
    desk.expect("Control+A and Control+V work in the filter",
                lambda: field.text() == "the third text")
    desk.open_palette()
    desk.type("zzz")
    desk.check("the hotkey while it is open starts over", desk.open_palette())
    x, y, *_ = desk.palette_place()
    desk.click(x + 200, y + 120)
    desk.expect("a click on the first row pastes it, still into the editor",
                lambda: field.text() == "the third text" * 2)
    desk.open_palette()
    desk.click(20, 780)
    expect_closed(desk, "a click elsewhere closes it")
    field.close()


def long_texts(desk):
    desk.open_palette()
    desk.run("xdotool", "key", "--delay", "5", *["Down"] * 8, *["Page_Down", "Page_Up"] * 3,
             "Escape")
    expect_closed(desk, "Escape closes it with rows of 64 MiB and of 100,000 lines")
    desk.open_palette()
    desk.type("abcdefghij" * 100)
    desk.keys("Escape")
    expect_closed(desk, "so it does after a filter of a thousand characters")
    desk.check("the program ends in order", desk.stop() == 0)


if __name__ == "__main__":
    faults = play(hotkey_to_editor, keys_and_pointer, long_texts, clips=clips(TEXTS + LONG_TEXTS))
    for manager in ("xfwm4", "--compositor=off"), ():
        faults += play(hotkey_to_editor, clips=clips(TEXTS), manager=manager, bus=manager != ())
    sys.exit(faults > 0)
