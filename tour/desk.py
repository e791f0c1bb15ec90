"""The program on a virtual display, for scripts that use it as a person would."""

import contextlib
import ctypes
import json
import os
import pathlib
import re
import subprocess
import sys
import time
import traceback

from display import PATIENCE, Display, end_in_order

SHOWN = 60  # characters of a text that are printed
CARD = (0x26, 0x2E, 0x28)  # of the palette, and of the menu window on a dark desktop
HOTKEY = 50, 133, 55  # Shift, Super and V by their key codes, which are the same in every layout


def made_up_clips(count):
    return [{"id": str(i), "text": f"clip {i} " + "x" * (20 + i % 360), "savedAt": 1.7e12 - i,
             "source": "manual"} for i in range(count)]


def near(a, b):
    """Whether two colours are the same but for rounding."""
    return all(abs(x - y) <= 1 for x, y in zip(a, b))


class Desk(Display):
    """A virtual display with a window manager, a home of its own, and the program."""

    def __init__(self, stack, brimlo, screenshots, server_options=(), clips=None, templates=None,
                 manager=("openbox",), onboarding=False, bus=False):
        """`onboarding`: whether it is still to be shown. `bus`: whether there is a session bus."""
        super().__init__(stack, server_options, manager=manager, bus=bus)
        self.brimlo_path = os.path.abspath(brimlo)
        self.screenshots = screenshots
        self.data = self.home / "data/BrimloMac"
        self.faults = 0
        self.log = self.home / "log"
        self.log.touch()
        for name, content in (("clips", clips), ("templates", templates)):
            if content is not None:
                self.data.mkdir(parents=True, exist_ok=True)
                (self.data / f"{name}.json").write_text(json.dumps(content))
        self.settings = self.home / "config/BrimloMac/defaults.ini"
        self.settings.parent.mkdir(parents=True)
        if not onboarding:
            self.settings.write_text("[General]\nmacOnboardingDone=true\n")
        self.start()

    def start(self):
        """Starts the program. It is up when it tells how its first sync run went."""
        before = self.logged("sync ok", "sync unavailable")
        self.brimlo = self.spawn(self.brimlo_path, stderr=self.log.open("a"))
        self.require("sync run", lambda: self.logged("sync ok", "sync unavailable") > before)

    def settle(self):
        """Waits until the program has nothing more to do."""
        stat = pathlib.Path(f"/proc/{self.brimlo.pid}/stat")
        spent = None
        for _ in range(40):
            time.sleep(0.5)
            fields = stat.read_text().rsplit(")", 1)[1].split()
            now = int(fields[11]) + int(fields[12])
            if fields[0] == "S" and now == spent:
                return
            spent = now

    def stop(self):
        """Ends the program; returns its exit status, or None if it does not end."""
        self.brimlo.terminate()
        return self.wait_for_end()

    def wait_for_end(self):
        with contextlib.suppress(subprocess.TimeoutExpired):
            return self.brimlo.wait(PATIENCE)

    def logged(self, *parts):
        """How often any of the parts is in the log."""
        log = self.log.read_text()
        return sum(log.count(part) for part in parts)

    def clips(self):
        try:
            return json.loads((self.data / "clips.json").read_text())
        except FileNotFoundError:
            return []

    def texts(self):
        """The history, newest first. There is always a first one to look at."""
        return [clip["text"] for clip in self.clips()] or [""]

    def check(self, what, holds):
        print(("  ok    " if holds else "  FAULT ") + what, flush=True)
        if not holds:
            self.faults += 1
            self.patience = 5  # what follows from it is not to take long
            self.screenshot(f"fault-{self.faults}")

    def expect(self, what, holds):
        """Waits until it holds."""
        self.check(what, self.wait(holds))

    def expect_newest(self, who, text):
        begin = time.monotonic()
        there = self.wait(lambda: self.texts()[0] == text)
        self.check(f"{who}: {text[:SHOWN]!r} in the history after "
                   f"{(time.monotonic() - begin) * 1000:.0f} ms", there)

    def feed(self, text, *command):
        """Runs a program that goes on in the background and owns the clipboard."""
        subprocess.run(command, env=self.env, input=text, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, timeout=PATIENCE)

    def xclip(self, text, *options):
        self.feed(text, "xclip", "-selection", "clipboard", *options)

    def copy(self, text):
        """Copies in another program and waits until the text is in the history."""
        self.xclip(text.encode())
        return self.wait(lambda: self.texts()[0] == text)

    def paste(self):
        return self.run("xsel", "-b", "-o").stdout.decode()

    def browse(self, text):
        """Opens a page with a text area in Chromium. The window's title says what stands in it, once
        the page has been painted: keys before that are dropped."""
        file = self.home / "page.html"
        file.write_text(f"""<meta charset=utf-8><title>loading</title>
            <p>A page<p><textarea id=area autofocus>{text}</textarea>
            <script>
              const say = () => document.title = "browser " + JSON.stringify(area.value);
              area.oninput = say;
              new PerformanceObserver(say).observe({{type: "paint", buffered: true}});
            </script>""")
        return self.spawn("chromium", "--no-sandbox", "--disable-gpu", "--no-first-run",
                          "--disable-background-networking", "--disable-component-update",
                          "--disable-sync", "--disable-dev-shm-usage", "--password-store=basic",
                          f"--user-data-dir={self.home}/chromium", f"file://{file}")

    def ask(self, *command):
        return self.run("xdotool", *command).stdout.decode().split()

    def has_keyboard(self, windows):
        return bool(set(self.ask("getwindowfocus")) & set(windows))

    def window(self, title):
        """Waits for a window with this in its title, brings it to the front and gives it the
        keyboard."""
        def found():
            # Fails when some other window vanishes meanwhile, so it is asked again.
            return self.ask("search", "--onlyvisible", "--name", title)[-1:]

        def activated():
            self.ask("windowactivate" if self.manager else "windowfocus", *window)
            return self.wait(lambda: self.has_keyboard(window), 1)
        window = self.require(f"window {title!r}", found)
        self.require(f"keyboard for {title!r}", activated)
        return window[0]

    def windows(self, name=".*"):
        """Those of the program that are in sight."""
        return self.ask("search", "--all", "--onlyvisible", "--pid", str(self.brimlo.pid),
                        "--name", name)

    def place(self, window):
        """x, y, width, height"""
        values = dict(line.split("=") for line in self.ask("getwindowgeometry", "--shell", window))
        return [int(values[name]) for name in ("X", "Y", "WIDTH", "HEIGHT")]

    def keys(self, *keys):
        self.run("xdotool", "key", "--clearmodifiers", *keys)

    def type(self, text):
        self.run("xdotool", "type", "--delay", "5", text)

    def click(self, x, y, window=None):
        """On the screen, or in a window."""
        self.run("xdotool", "mousemove", *(("--window", window) if window else ()), str(x), str(y),
                 "click", "1")

    def open_palette(self):
        """With the hotkey. It is open when it has the keyboard."""
        before = self.logged("palette presented")
        down = [word for key in HOTKEY for word in ("keydown", str(key))]
        up = [word for key in HOTKEY for word in ("keyup", str(key))]
        self.run("xdotool", *down, *up)
        return self.wait(lambda: self.logged("palette presented") > before
                         and self.has_keyboard(self.windows()))

    def palette_place(self):
        """Where the palette was last put: x, y, width, height."""
        found = re.findall(r"palette presented.*frame=\{\{(.*?), (.*?)\}, \{(.*?), (.*?)\}\}",
                           self.log.read_text())[-1]
        x, y, width, height = map(float, found)
        return int(x), int(800 - y - height), int(width), int(height)

    @contextlib.contextmanager
    def x11(self):
        """A connection to the server: its library, and the display to pass to that."""
        library = ctypes.CDLL("libX11.so.6")
        library.XOpenDisplay.restype = ctypes.c_void_p
        display = ctypes.c_void_p(library.XOpenDisplay(self.env["DISPLAY"].encode()))
        yield library, display
        library.XCloseDisplay(display)

    def lock_layout(self, group):
        """Switches to another of the keyboard's layouts, as a person does who has two."""
        with self.x11() as (x11, display):
            x11.XkbLockGroup(display, 0x100, group)

    def owner(self, selection):
        with self.x11() as (x11, display):
            return x11.XGetSelectionOwner(display, x11.XInternAtom(display, selection.encode(), 0))

    def screen(self):
        return self.run("import", "-window", "root", "-depth", "8", "rgb:-").stdout

    def pixels(self, *points):
        """The colours of points of the screen."""
        image = self.screen()
        return [tuple(image[3 * (y * 1280 + x):][:3]) for x, y in points]

    def screenshot(self, name):
        """Of a screen that has come to rest, but for a caret that may blink."""
        before = None
        for _ in range(10):
            now = self.screen()
            if now == before:
                break
            before = now
        self.run("import", "-window", "root", str(self.screenshots / f"{name}.png"))


def play(*parts, **setting):
    """Runs the parts of a script, one after the other on one desk; returns the number of faults.
    The script's arguments are BRIMLO SCREENSHOTS."""
    folder = pathlib.Path(sys.argv[2])
    folder.mkdir(parents=True, exist_ok=True)
    end_in_order()
    with contextlib.ExitStack() as stack:
        desk = Desk(stack, sys.argv[1], folder, **setting)
        try:
            for part in parts:
                print(part.__name__.replace("_", " ") + ":", flush=True)
                part(desk)
        except Exception:  # the log tells why
            traceback.print_exc()
            desk.check("the script went to its end", False)
        desk.check("no sanitizer complains", not desk.logged("Sanitizer", "runtime error"))
        if desk.faults:
            print(desk.log.read_text()[-4000:])
        return desk.faults
