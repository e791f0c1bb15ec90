"""Has the real program paste into real applications, on a virtual display of its own, and says how
long each took. Exits with 1 if anything is not as it should be.

usage: paste.py BRIMLO SCREENSHOTS"""

import contextlib
import ctypes
import json
import os
import pathlib
import re
import signal
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tour"))
from desk import Desk  # noqa: E402

FIELD = str(pathlib.Path(__file__).with_name("field.py"))


class Field:
    """A text field of some application, in front."""

    def __init__(self, desk, kind, *command):
        self.desk = desk
        self.output = desk.home / f"{kind}-{time.monotonic()}"
        self.output.touch()
        desk.env["FIELD_OUTPUT"] = str(self.output)
        if command:
            self.process = desk.spawn(*command)
        else:
            self.process = desk.spawn("/usr/bin/python3", FIELD, kind, stdout=self.output.open("w"))
        desk.window("field")
        desk.wait(self.lines, 10)

    def lines(self):
        return self.output.read_text().split("\n")[:-1]  # whole ones

    def text(self):
        return json.loads(self.lines()[-1].split(" ", 1)[1])

    def time(self):
        return float(self.lines()[-1].split(" ", 1)[0])

    def close(self):
        self.desk.end(self.process)


class Browser(Field):
    """A browser's text area, which shows what stands in it in the title of the window."""

    def __init__(self, desk):
        page = desk.home / "page.html"
        page.write_text("<meta charset=utf-8><title>field</title><textarea autofocus "
                        "oninput='document.title=\"field \"+JSON.stringify([value, Date.now()])'>"
                        "</textarea>")
        self.desk = desk
        self.process = desk.spawn(
            "chromium", "--no-sandbox", "--disable-gpu", "--no-first-run",
            "--disable-background-networking", "--disable-component-update", "--disable-sync",
            "--disable-dev-shm-usage", "--password-store=basic",
            f"--user-data-dir={desk.home}/chromium", f"file://{page}")
        self.window = desk.window("field")
        time.sleep(1)

    def shown(self):
        title = self.desk.run("xdotool", "getwindowname", self.window).stdout.decode()
        shown = title.rsplit(" - ", 1)[0].strip().partition(" ")[2]
        return json.loads(shown) if shown else ["", 0]

    def text(self):
        return self.shown()[0]

    def time(self):
        return self.shown()[1] / 1000 - time.time() + time.monotonic()


def paste(desk):
    """Sends the signal; says when."""
    begin = time.monotonic()
    desk.brimlo.send_signal(signal.SIGUSR2)
    return begin


def copy(desk, text):
    count = len(desk.clips())
    desk.xclip(text.encode())
    desk.wait(lambda: len(desk.clips()) > count and desk.clips()[0]["text"] == text, 3)


def expect(desk, field, what, text, begin):
    there = desk.wait(lambda: field.text() == text, 5)
    took = f" {(field.time() - begin) * 1000:.0f} ms after the signal" if there else ""
    time.sleep(0.4)  # once, not twice
    desk.check(f"{what}: the text stands in it{took}", field.text() == text)


def every_client(desk):
    terminal = f"/usr/bin/python3 {FIELD} terminal"
    clients = {
        "GTK entry": lambda: Field(desk, "gtk-entry"),
        "GTK text view": lambda: Field(desk, "gtk-view"),
        "Qt line edit": lambda: Field(desk, "qt-line"),
        "xterm": lambda: Field(desk, "terminal", "xterm", "-T", "field", "-e", terminal),
        "VTE terminal": lambda: Field(desk, "terminal", "xfce4-terminal", "--disable-server", "-T",
                                      "field", "-e", terminal),
        "Chromium": lambda: Browser(desk),
    }
    for number, (name, make) in enumerate(clients.items()):
        text = f"paste {number}: “é” ☃"
        copy(desk, text)
        field = make()
        expect(desk, field, name, text, paste(desk))
        desk.screenshot("paste-" + name.replace(" ", "-"))
        field.close()


def lock_group(desk, group):
    """Switches to another of the keyboard's layouts, as a person does who has two."""
    x11 = ctypes.CDLL("libX11.so.6")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    display = ctypes.c_void_p(x11.XOpenDisplay(desk.env["DISPLAY"].encode()))
    x11.XkbLockGroup(display, 0x100, group)
    x11.XCloseDisplay(display)


def awkward_keyboards(desk):
    copy(desk, "whatever the keyboard")
    layouts = (["us"], ["dvorak", "-layout", "us", "-variant", "dvorak"], ["us,ru"], ["gr"])
    for layout, *options in layouts:
        desk.run("setxkbmap", *(options or [layout]))
        for kind in ("gtk-entry", "qt-line"):
            field = Field(desk, kind)
            if layout == "us,ru":
                lock_group(desk, 1)
            expect(desk, field, f"{kind}, layout {layout}", "whatever the keyboard", paste(desk))
            field.close()
    desk.run("setxkbmap", "us")

    field = Field(desk, "gtk-entry")
    desk.run("xdotool", "keydown", "Shift_L", "keydown", "Super_L", "keydown", "x")
    time.sleep(0.1)
    before = field.text()
    begin = paste(desk)
    expect(desk, field, "with Shift, Super and x held down", before + "whatever the keyboard",
           begin)
    desk.run("xdotool", "keyup", "x", "keyup", "Super_L", "keyup", "Shift_L")
    field.close()


def in_order(desk):
    copy(desk, "second ")
    copy(desk, "first ")
    field = Field(desk, "gtk-entry")
    # The signal pastes the newest clip. A copy seen by the program in between changes which it is.
    paste(desk)
    time.sleep(0.03)
    paste(desk)
    desk.check("two pastes within 80 ms arrive both",
               desk.wait(lambda: field.text() == "first first ", 5))
    field.close()


def large(desk):
    text = "a large text\n" * 800_000
    copy(desk, text)
    field = Field(desk, "gtk-view")
    begin = paste(desk)
    expect(desk, field, "10 MB into a GTK text view", text, begin)
    field.close()


def log_tells(desk):
    log = desk.log.read_text().splitlines()
    at = next(i for i, line in enumerate(log) if "SIGUSR2" in line)
    expected = ["[BrimloMac] SIGUSR2 -> exercise paste path, AXIsProcessTrusted=true",
                "[BrimloMac] paste (14 chars, src=manual)",
                "[BrimloMac] AX trusted -> auto-paste to ?",
                "[BrimloMac] posted Cmd-V"]
    desk.check("the log has the lines of a paste, in order", log[at:at + 4] == expected)
    desk.check("no paste was captured as a copy",
               sum("captured" in line for line in log) == len(desk.clips()))


def without_xtest(stack, brimlo, screenshots):
    desk = Desk(stack, brimlo, screenshots, "-extension", "XTEST", onboarding=True)
    copy(desk, "by hand")
    for _ in range(2):
        paste(desk)
        time.sleep(0.3)
    log = [line.removeprefix("[BrimloMac] ") for line in desk.log.read_text().splitlines()
           if re.match(r".*(SIGUSR2|paste|AX not trusted|prompted)", line)]
    fallback = ["SIGUSR2 -> exercise paste path, AXIsProcessTrusted=false",
                "paste (7 chars, src=manual)", "AX not trusted -> clipboard-only fallback"]
    desk.check("without XTEST the text is on the clipboard, and the prompt comes once",
               log == fallback + ["prompted accessibility permission (first time only)"] + fallback
               and desk.paste() == "by hand")
    return desk.faults


def main():
    screenshots = pathlib.Path(sys.argv[2])
    screenshots.mkdir(parents=True, exist_ok=True)
    brimlo = os.path.abspath(sys.argv[1])
    with contextlib.ExitStack() as stack:
        desk = Desk(stack, brimlo, screenshots)
        every_client(desk)
        awkward_keyboards(desk)
        in_order(desk)
        large(desk)
        log_tells(desk)
        faults = desk.faults + without_xtest(stack, brimlo, screenshots)
        print(f"{faults} faults; screenshots in {screenshots}")
        return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
