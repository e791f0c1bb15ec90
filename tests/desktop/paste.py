"""Has the real program paste into real applications, on a virtual display of its own. Exits with 1
if anything is not as it should be.

usage: paste.py BRIMLO SCREENSHOTS"""

import pathlib
import signal
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tour"))
from desk import play  # noqa: E402
from field import Browser, Field  # noqa: E402


def paste_newest(desk):
    desk.brimlo.send_signal(signal.SIGUSR2)


def expect_paste(desk, field, what, text):
    """Pastes the newest clip, which is `text`, and types a space behind it. What was pasted twice
    would stand before the space twice."""
    before = field.text()
    paste_newest(desk)
    desk.wait(lambda: field.text() == before + text)
    desk.keys("space")
    desk.expect(f"{what}: the text stands in it once", lambda: field.text() == before + text + " ")


def every_client(desk):
    for kind in ("gtk", "qt", "xterm", "VTE", "Chromium"):
        text = f"into {kind}: “é” ☃"
        desk.copy(text)
        field = Browser(desk) if kind == "Chromium" else Field(desk, kind)
        expect_paste(desk, field, kind, text)
        field.close()


def awkward_keyboards(desk):
    text = "whatever the keyboard"
    desk.copy(text)
    fields = [Field(desk, kind) for kind in ("gtk", "qt")]
    for layout, *options in (["us"], ["dvorak", "-layout", "us", "-variant", "dvorak"], ["us,ru"],
                             ["gr"]):
        desk.run("setxkbmap", *(options or [layout]))
        desk.lock_layout(1 if layout == "us,ru" else 0)
        for field in fields:
            desk.window(field.kind)
            expect_paste(desk, field, f"{field.kind}, layout {layout}", text)
    desk.run("setxkbmap", "us")
    desk.run("xdotool", "keydown", "Shift_L", "keydown", "Super_L", "keydown", "x")
    before = fields[1].text()
    paste_newest(desk)
    desk.expect("with Shift, Super and x held down", lambda: fields[1].text() == before + text)
    desk.run("xdotool", "keyup", "x", "keyup", "Super_L", "keyup", "Shift_L")
    for field in fields:
        field.close()


def large(desk):
    text = "a large text\n" * 800_000
    desk.copy(text)
    field = Field(desk, "gtk")
    paste_newest(desk)
    desk.expect("10 MB into a GTK text view", lambda: field.text() == text)
    desk.check("no paste was captured as a copy",
               desk.logged("captured") == len(desk.clips()))


def without_xtest(desk):
    desk.copy("by hand")
    paste_newest(desk)
    desk.expect("the text is on the clipboard, and the person is asked",
                lambda: desk.logged("AXIsProcessTrusted=false")
                and desk.logged("AX not trusted -> clipboard-only fallback")
                and desk.logged("prompted accessibility permission"))
    desk.check("it is left there", desk.paste() == "by hand")


if __name__ == "__main__":
    faults = play(every_client, awkward_keyboards, large)
    faults += play(without_xtest, server_options=("-extension", "XTEST"), onboarding=True)
    sys.exit(faults > 0)
