"""A virtual display and a home of its own for a program that needs a desktop.

usage: display.py [--manager NAME] [--bus] COMMAND…   runs the command there, with a window manager
and a session bus if they are asked for"""

import argparse
import contextlib
import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import time

PATIENCE = 60  # seconds, for sanitizers on a loaded machine


class Display:
    """An X server of its own, and if asked for a window manager and a session bus. Everything that
    is started here ends with the stack."""

    def __init__(self, stack, server_options=(), manager=(), bus=False):
        self.stack = stack
        self.manager = manager
        self.patience = PATIENCE
        self.home = pathlib.Path(stack.enter_context(tempfile.TemporaryDirectory(
            ignore_cleanup_errors=True)))
        self.env = dict(os.environ, HOME=str(self.home), LANG="C.UTF-8", NO_AT_BRIDGE="1",
                        GSETTINGS_BACKEND="memory", XDG_DATA_HOME=str(self.home / "data"),
                        XDG_CONFIG_HOME=str(self.home / "config"),
                        XDG_RUNTIME_DIR=str(self.home), QT_QPA_PLATFORM="xcb",
                        DBUS_SESSION_BUS_ADDRESS=f"unix:path={self.home}/session-bus")
        for name in ("WAYLAND_DISPLAY", "QT_QPA_PLATFORMTHEME"):
            self.env.pop(name, None)
        self.start_server(server_options)
        # Without a bus the address stays: where there is none, some programs start a bus of their
        # own, which outlives them.
        if bus:
            self.spawn("dbus-daemon", "--session", "--nofork",
                       f"--address={self.env['DBUS_SESSION_BUS_ADDRESS']}")
            self.require("a session bus", (self.home / "session-bus").exists)
        if manager:
            self.spawn(*manager)
            self.require(manager[0], lambda: b"window id" in self.run(
                "xprop", "-root", "_NET_SUPPORTING_WM_CHECK").stdout)

    def start_server(self, options):
        """The server itself chooses a free number, so several may be started at a time."""
        reader, writer = os.pipe()
        server = self.spawn("Xvfb", "-displayfd", str(writer), "-screen", "0", "1280x800x24",
                            "-noreset", *options, pass_fds=[writer])
        os.close(writer)
        with open(reader) as number:
            self.env["DISPLAY"] = ":" + number.readline().strip()
        # Only a server that is asked to end removes its lock file.
        self.stack.callback(lambda: server.terminate() or server.wait(10))

    def spawn(self, *command, **options):
        """Starts a program that ends with the display."""
        options.setdefault("stderr", subprocess.DEVNULL)
        options.setdefault("stdout", subprocess.DEVNULL)
        process = subprocess.Popen(command, env=self.env, start_new_session=True, **options)
        self.stack.callback(self.end, process)
        return process

    @staticmethod
    def end(process):
        with contextlib.suppress(ProcessLookupError):
            os.killpg(process.pid, signal.SIGKILL)
        process.wait()

    def run(self, *command):
        return subprocess.run(command, env=self.env, capture_output=True, timeout=PATIENCE)

    def wait(self, holds, seconds=None):
        """Waits until it holds; returns what it said last."""
        end = time.monotonic() + (seconds or self.patience)
        while not (held := holds()) and time.monotonic() < end:
            time.sleep(0.02)
        return held

    def require(self, what, holds):
        """Waits for what nothing can be done without."""
        held = self.wait(holds)
        if not held:
            raise TimeoutError(f"no {what}")
        return held


def end_in_order():
    """Has a script that is told to end run its exit stacks, so that nothing is left behind."""
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--manager", default="", help="a window manager and its options")
    parser.add_argument("--bus", action="store_true")
    parser.add_argument("command", nargs=argparse.REMAINDER)
    chosen = parser.parse_args()
    end_in_order()
    with contextlib.ExitStack() as stack:
        display = Display(stack, manager=chosen.manager.split(), bus=chosen.bus)
        return subprocess.run(chosen.command, env=display.env).returncode


if __name__ == "__main__":
    sys.exit(main())
