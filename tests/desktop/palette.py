"""Uses the palette of the real program as a person would, on virtual displays of its own: under two
window managers and under none. Exits with 1 if anything is not as it should be.

usage: palette.py BRIMLO SCREENSHOTS"""

import contextlib
import os
import pathlib
import re
import signal
import subprocess
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tour"))
from desk import Desk  # noqa: E402
from paste import Field  # noqa: E402

CARD, WHITE_OVER_CARD = (0x26, 0x2E, 0x28), 8 / 100
MOSS = (0x3E, 0x8E, 0x63)
HUGE = 64 << 20
PATIENCE = 30  # seconds: sanitizers on a busy machine; a wait ends as soon as it has happened
TEXTS = ["the first text", "the second text", "the third text", "שלום עולם",
         "👩‍👩‍👧\tand\x01controls",
         "many\n" * 100_000, "a" * 1_000_000, "é" * (HUGE // 2)]
CLIPS = [{"id": str(i), "text": text, "savedAt": 1.7e12 - i,
          "source": "action" if i == 1 else "manual"} for i, text in enumerate(TEXTS)]
TEMPLATES = [{"id": "t1", "title": "Greeting", "body": "Dear {clipboard},", "createdAt": 2},
             {"id": "t2", "title": "", "body": "untitled\nbody", "createdAt": 1}]


def palette_windows(desk):
    """The windows of the program that are in sight."""
    return desk.run("xdotool", "search", "--all", "--onlyvisible", "--pid", str(desk.brimlo.pid),
                    "--name", ".*").stdout.decode().split()


def is_open(desk):
    return bool(palette_windows(desk))


def presentations(desk):
    return desk.log.read_text().count("quick-paste palette presented")


def press_hotkey(desk):
    before = presentations(desk)
    # Shift, Super and V by their key codes, which are the same in every layout.
    desk.run("xdotool", "keydown", "50", "keydown", "133", "key", "55", "keyup", "133", "keyup",
             "50")
    shown = desk.wait(lambda: presentations(desk) > before and is_open(desk), PATIENCE)
    # What is typed before it has the keyboard is the editor's.
    desk.wait(lambda: desk.run("xdotool", "getwindowfocus").stdout.decode().strip()
              in palette_windows(desk), PATIENCE)
    time.sleep(0.15)  # it has been drawn
    return shown


def type_text(desk, text):
    desk.run("xdotool", "type", "--delay", "5", text)


def key(desk, *keys):
    desk.run("xdotool", "key", *keys)
    time.sleep(0.05)


def pixels(desk, *points):
    """The colours of points of the screen."""
    image = subprocess.run(["import", "-window", "root", "-depth", "8", "rgb:-"], env=desk.env,
                           capture_output=True, timeout=30).stdout
    return [tuple(image[3 * (y * 1280 + x):][:3]) for x, y in points]


def over_card(opacity):
    return tuple(round(c + (255 - c) * opacity) for c in CARD)


def near(a, b):
    return all(abs(x - y) <= 1 for x, y in zip(a, b))


def frame(desk):
    """Where the panel was last put, its top left corner first, y downwards."""
    found = re.findall(r"frame=\{\{(.*?), (.*?)\}, \{(.*?), (.*?)\}\}", desk.log.read_text())[-1]
    x, y, width, height = map(float, found)
    return int(x), int(800 - y - height), int(width), int(height)


def look(desk, field):
    desk.run("xdotool", "mousemove", "700", "150")
    press_hotkey(desk)
    x, y, width, height = frame(desk)
    desk.check(f"the panel is 500 wide, centred on the pointer, its top 40 above it: {frame(desk)}",
               (x, y, width) == (450, 110, 500))
    card = (x + 20, y + 20)
    row = card[1] + 76 + 1 + 6
    colors = pixels(desk, (card[0] + 230, card[1] + 70), (card[0] + 459, card[1] + 200),
                    (card[0] + 460, card[1] + 200), (card[0] + 300, row + 18),
                    (card[0] + 20, row + 3))
    desk.check("the card, its border and the selected row have their colours, 460 wide: "
               f"{colors}", near(colors[0], CARD) and near(colors[1], over_card(0.1))
               and not near(colors[2], over_card(0.1)) and near(colors[3], MOSS))
    desk.screenshot("palette")
    type_text(desk, "zzz")
    time.sleep(0.3)
    desk.screenshot("palette-no-match")
    key(desk, "Escape")
    desk.check("Escape closes it", desk.wait(lambda: not is_open(desk), PATIENCE))


def main_job(desk, field):
    press_hotkey(desk)
    type_text(desk, "SECOND")
    key(desk, "Return")
    desk.check("hotkey, letters, Return: the text stands in the editor",
               desk.wait(lambda: field.lines() and field.text() == "the second text", PATIENCE))
    desk.check("the palette is gone", not is_open(desk))
    type_text(desk, "!")
    desk.check("the keyboard is the editor's again",
               desk.wait(lambda: field.text() == "the second text!", PATIENCE))
    # The second text is the newest now.
    press_hotkey(desk)
    key(desk, "3")
    desk.check("3 pastes the third row",
               desk.wait(lambda: field.text() == "the second text!the third text", PATIENCE))
    log = desk.log.read_text()
    name = re.search(r"hotkey pressed, target=(.*)", log).group(1)
    expected = [f"[BrimloMac] hotkey pressed, target={name}",
                "[BrimloMac] quick-paste palette presented (8 items) frame=",
                "[BrimloMac] paste (15 chars, src=action)",
                f"[BrimloMac] AX trusted -> auto-paste to {name}", "[BrimloMac] posted Cmd-V"]
    places = [log.find(line) for line in expected]
    desk.check(f"the log says so, in order: {places}", -1 not in places
               and places == sorted(places))


def keys_and_pointer(desk, field):
    before = field.text()
    press_hotkey(desk)
    type_text(desk, " text")
    key(desk, "Home")
    type_text(desk, "first")
    key(desk, "Return")
    desk.check("Home moves the caret in the filter",
               desk.wait(lambda: field.text() == before + "the first text", PATIENCE))
    desk.feed(b"third", "xclip", "-selection", "clipboard")
    desk.wait(lambda: desk.clips()[0]["text"] == "third", PATIENCE)
    before = field.text()
    press_hotkey(desk)
    type_text(desk, "nothing has this")
    key(desk, "ctrl+a")
    key(desk, "ctrl+v")
    key(desk, "Down", "Return")
    desk.check("Control+A and Control+V work in the filter",
               desk.wait(lambda: field.text() == before + "the third text", PATIENCE))
    desk.run("xdotool", "mousemove", "700", "150")
    before = field.text()
    press_hotkey(desk)
    x, y, _, _ = frame(desk)
    desk.run("xdotool", "mousemove", str(x + 200), str(y + 180))
    time.sleep(0.2)
    desk.run("xdotool", "click", "1")
    desk.check("a click on a row pastes it", desk.wait(lambda: field.text() != before, PATIENCE)
               and not is_open(desk))
    key(desk, "BackSpace")
    desk.run("xdotool", "mousemove", "700", "150")
    press_hotkey(desk)
    desk.run("xdotool", "mousemove", "20", "780", "click", "1")
    desk.check("a click elsewhere closes it", desk.wait(lambda: not is_open(desk), PATIENCE))
    desk.window("field")  # the click was for the desktop
    desk.run("xdotool", "mousemove", "700", "150")


def again(desk, field):
    press_hotkey(desk)
    type_text(desk, "zzz")
    desk.check("a second press while it is open starts over", press_hotkey(desk))
    before = field.text()
    key(desk, "1")
    desk.check("and still pastes into the editor",
               desk.wait(lambda: field.text() != before, PATIENCE))


def debug_signal(desk, field):
    desk.feed(b"Ada", "xclip", "-selection", "clipboard")
    desk.wait(lambda: desk.clips()[0]["text"] == "Ada", PATIENCE)
    before = field.text()
    shown = presentations(desk)
    desk.brimlo.send_signal(signal.SIGUSR1)
    desk.wait(lambda: presentations(desk) > shown, PATIENCE)
    time.sleep(0.3)
    desk.screenshot("palette-templates")
    x, y, width, height = frame(desk)
    desk.check(f"SIGUSR1 opens it in the middle of the screen: {frame(desk)}",
               abs(x + width / 2 - 640) <= 1)
    key(desk, "Return")
    desk.check("a template's placeholders are filled in the editor",
               desk.wait(lambda: field.text() == before + "Dear Ada,", PATIENCE))


def scroll(desk):
    press_hotkey(desk)
    begin = time.monotonic()
    desk.run("xdotool", "key", "--delay", "5", *["Down"] * 6, *["Page_Down", "Page_Up"] * 3)
    key(desk, "Escape")
    closed = desk.wait(lambda: not is_open(desk), PATIENCE)
    desk.check("rows of 64 MiB, of a million characters, of 100,000 lines hold nothing up: "
               f"{(time.monotonic() - begin) * 1000:.0f} ms", closed)
    press_hotkey(desk)
    begin = time.monotonic()
    type_text(desk, "abcdefghij" * 100)
    typed = time.monotonic() - begin
    key(desk, "Escape")
    closed = desk.wait(lambda: not is_open(desk), PATIENCE)
    desk.check(f"nor does a filter of a thousand characters: typed in {typed:.1f} s, "
               f"closed after {time.monotonic() - begin:.1f} s", closed)


def main():
    screenshots = pathlib.Path(sys.argv[2])
    screenshots.mkdir(parents=True, exist_ok=True)
    faults = 0
    for manager in ("openbox",), ("xfwm4", "--compositor=off"), None:
        with contextlib.ExitStack() as stack:
            print("Under " + (manager[0] if manager else "no window manager") + ":")
            os.environ["BRIMLO_QP_SECTION"] = ""
            desk = Desk(stack, os.path.abspath(sys.argv[1]), screenshots, clips=CLIPS,
                        templates=TEMPLATES, manager=manager)
            field = Field(desk, "gtk-entry")
            desk.run("xdotool", "mousemove", "700", "150")
            look(desk, field)
            main_job(desk, field)
            keys_and_pointer(desk, field)
            again(desk, field)
            scroll(desk)
            desk.brimlo.terminate()
            desk.check("it ends in order", desk.brimlo.wait(10) == 0)
            desk.env["BRIMLO_QP_SECTION"] = "templates"
            desk.env["BRIMLO_QP_QUERY"] = "dear"
            desk.start()
            debug_signal(desk, field)
            if desk.faults:
                print(desk.log.read_text()[-4000:])
            faults += desk.faults
    print(f"{faults} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
