"""A virtual display with the program on it, for scripts that use it as a person would."""

import contextlib
import json
import os
import pathlib
import signal
import subprocess
import tempfile
import time

SHOWN = 60  # characters of a text that are printed


def made_up_clips(count):
    return [{"id": str(i), "text": f"clip {i} " + "x" * (20 + i % 360), "savedAt": 1.7e12 - i,
             "source": "manual"} for i in range(count)]


class Desk:
    """A virtual display with a window manager, a home of its own, and the program."""

    def __init__(self, stack, brimlo, screenshots, *server_options, clips=None, templates=None,
                 manager=("openbox",), prepare=lambda home: None, onboarding=False, bus=False):
        """`prepare` is given the home before the program starts in it. `onboarding`: whether that
        is still to be shown. `bus`: whether there is a session bus."""
        self.stack = stack
        self.brimlo_path = brimlo
        self.screenshots = screenshots
        self.home = pathlib.Path(self.stack.enter_context(tempfile.TemporaryDirectory(
            ignore_cleanup_errors=True)))
        self.data = self.home / "data/BrimloMac"
        self.faults = 0
        self.log = self.home / "log"
        self.env = dict(os.environ, HOME=str(self.home), LANG="C.UTF-8", NO_AT_BRIDGE="1",
                        GSETTINGS_BACKEND="memory", XDG_DATA_HOME=str(self.home / "data"),
                        XDG_CONFIG_HOME=str(self.home / "config"),
                        XDG_RUNTIME_DIR=str(self.home), QT_QPA_PLATFORM="xcb")
        for name in ("WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "QT_QPA_PLATFORMTHEME"):
            self.env.pop(name, None)
        reader, writer = os.pipe()
        self.spawn("Xvfb", "-displayfd", str(writer), "-screen", "0", "1280x800x24", "-noreset",
                   *server_options, pass_fds=[writer])
        self.env["DISPLAY"] = ":" + os.read(reader, 16).decode().strip()
        self.manager = manager
        if manager:
            self.spawn(*manager)
        if bus:
            address = f"unix:path={self.home}/session-bus"
            self.spawn("dbus-daemon", "--session", "--nofork", f"--address={address}")
            self.wait((self.home / "session-bus").exists, 10)
            self.env["DBUS_SESSION_BUS_ADDRESS"] = address
        for name, content in (("clips", clips), ("templates", templates)):
            if content is not None:
                self.data.mkdir(parents=True, exist_ok=True)
                (self.data / f"{name}.json").write_text(json.dumps(content))
        self.settings = self.home / "config/BrimloMac/defaults.ini"
        self.settings.parent.mkdir(parents=True)
        if not onboarding:
            self.settings.write_text("[General]\nmacOnboardingDone=true\n")
        prepare(self.home)
        self.start()

    def spawn(self, *command, **options):
        """Starts a program that ends with the desk."""
        options.setdefault("stderr", subprocess.DEVNULL)
        options.setdefault("stdout", subprocess.DEVNULL)
        process = subprocess.Popen(command, env=self.env,
                                   start_new_session=True, **options)
        self.stack.callback(self.end, process)
        return process

    @staticmethod
    def end(process):
        with contextlib.suppress(ProcessLookupError):
            os.killpg(process.pid, signal.SIGKILL)
        process.wait()

    def start(self):
        """Starts the program and waits until it has nothing more to do."""
        self.brimlo = self.spawn(self.brimlo_path, stderr=self.log.open("a"))
        stat = pathlib.Path(f"/proc/{self.brimlo.pid}/stat")
        spent = None
        for _ in range(40):
            time.sleep(0.5)
            fields = stat.read_text().rsplit(")", 1)[1].split()
            now = int(fields[11]) + int(fields[12])
            if fields[0] == "S" and now == spent:
                return
            spent = now

    def run(self, *command):
        return subprocess.run(command, env=self.env, capture_output=True, timeout=30)

    def feed(self, text, *command):
        """Runs a program that goes on in the background and owns the clipboard."""
        subprocess.run(command, env=self.env, input=text, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, timeout=20)

    def clips(self):
        try:
            return json.loads((self.data / "clips.json").read_text())
        except FileNotFoundError:
            return []

    def wait(self, holds, seconds):
        end = time.monotonic() + seconds
        while not holds() and time.monotonic() < end:
            time.sleep(0.02)
        return holds()

    def check(self, what, holds):
        print(("  ok    " if holds else "  FAULT ") + what, flush=True)
        self.faults += not holds

    def expect_newest(self, who, text):
        begin = time.monotonic()
        there = self.wait(lambda: self.clips() and self.clips()[0]["text"] == text, 2)
        self.check(f"{who}: {text[:SHOWN]!r} in the history after "
                   f"{(time.monotonic() - begin) * 1000:.0f} ms", there)

    def xclip(self, text, *options):
        self.feed(text, "xclip", "-selection", "clipboard", *options)

    def paste(self):
        return self.run("xsel", "-b", "-o").stdout.decode()

    def window(self, title):
        """Waits for a window with this in its title and brings it to the front."""
        def search():
            # Ends with an error when some other window vanishes under it, so it is asked again.
            return self.run("xdotool", "search", "--onlyvisible", "--name",
                            title).stdout.decode().split()
        self.wait(search, 20)
        found = search()
        self.run("xdotool", *(("windowactivate", "--sync") if self.manager else ("windowfocus",)),
                 found[-1])
        time.sleep(0.5)
        return found[-1]

    def keys(self, *keys):
        self.run("xdotool", "key", "--clearmodifiers", *keys)

    def screenshot(self, name):
        self.run("import", "-window", "root", str(self.screenshots / f"{name}.png"))
