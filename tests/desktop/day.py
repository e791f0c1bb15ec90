"""A day's use of the real program in about a minute, on a virtual display of its own: 2,000 copies,
200 pastes, 50 openings of the menu window, 10 clearings, and syncs all the while. After it the
program has no more memory, no more descriptors, and nothing to complain of. Exits with 1 if not.

usage: day.py BRIMLO SCREENSHOTS"""

import contextlib
import os
import pathlib
import re
import signal
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tour"))
from desk import Desk  # noqa: E402
from menu import CLEAR, lines, press_item, second_start, shows, texts  # noqa: E402
from paste import Field  # noqa: E402

ROUNDS, COPIES, PASTES, OPENINGS = 10, 200, 20, 4  # the clearing is one more opening
PATIENCE = 30
MEGABYTES = 4  # what may come and go
SANITIZER = 24  # and what its allocator keeps of where memory came from
USUAL = re.compile("|".join((
    "hotkey ", "sync ok: ", "captured local clip ", "SIGUSR2 -> exercise paste path", "paste \\(",
    "AX trusted -> auto-paste", "posted Cmd-V", "history cleared", "copied clip to pasteboard",
    "quickPasteEnabled=")))


class Program:
    def __init__(self, desk):
        self.folder = pathlib.Path(f"/proc/{desk.brimlo.pid}")

    def descriptors(self):
        return len(list((self.folder / "fd").iterdir()))

    def is_sanitized(self):
        return "libasan" in (self.folder / "maps").read_text()

    def memory(self):
        """In megabytes, once it has settled."""
        time.sleep(2)
        said = (self.folder / "smaps_rollup").read_text()
        return int(re.search(r"^Pss:\s+(\d+)", said, re.M)[1]) / 1024


def spend_round(desk, number):
    for copy in range(COPIES):
        desk.xclip(f"round {number}, copy {copy}: {'text ' * (copy % 60)}".encode())
    desk.wait(lambda: texts(desk) and texts(desk)[0].startswith(f"round {number}, copy 199"),
              PATIENCE)
    for _ in range(PASTES):
        before = lines(desk, "posted Cmd-V")
        desk.brimlo.send_signal(signal.SIGUSR2)
        desk.wait(lambda before=before: lines(desk, "posted Cmd-V") > before, PATIENCE)
    for row in range(OPENINGS):
        second_start(desk)
        shows(desk, True)
        desk.keys(f"ctrl+{row + 1}", "Escape")
        shows(desk, False)
    press_item(desk, CLEAR if len(texts(desk)) > 25 else CLEAR - 1)  # there may be no pager
    desk.keys("Tab", "Return")
    desk.wait(lambda: not texts(desk), PATIENCE)
    desk.keys("Escape")
    shows(desk, False)


def main():
    # Memory that is freed is to be seen as free at once.
    os.environ["ASAN_OPTIONS"] = os.environ.get("ASAN_OPTIONS", "") + ":quarantine_size_mb=1"
    screenshots = pathlib.Path(sys.argv[2])
    screenshots.mkdir(parents=True, exist_ok=True)
    with contextlib.ExitStack() as stack:
        desk = Desk(stack, os.path.abspath(sys.argv[1]), screenshots, clips=[], bus=True)
        field = Field(desk, "gtk-entry")
        program = Program(desk)
        begin = time.monotonic()
        for number in range(2):  # what is made at first use is there after this
            spend_round(desk, number)
        memory, descriptors = program.memory(), program.descriptors()
        for number in range(2, ROUNDS):
            spend_round(desk, number)
        print(f"  ({time.monotonic() - begin:.0f} s)")
        after = program.memory()
        desk.check(f"memory is back where it was: {memory:.1f}, {after:.1f} MB",
                   after < memory + (SANITIZER if program.is_sanitized() else MEGABYTES))
        desk.check(f"so are the descriptors: {descriptors}, {program.descriptors()}",
                   program.descriptors() <= descriptors)
        said = [line.removeprefix("[BrimloMac] ") for line in desk.log.read_text().splitlines()]
        desk.check(f"all was pasted: {lines(desk, 'posted Cmd-V')}",
                   lines(desk, "posted Cmd-V") == ROUNDS * PASTES and field.lines())
        desk.check(f"all was cleared: {lines(desk, 'history cleared')}",
                   lines(desk, "history cleared") == ROUNDS)
        desk.check(f"it was synced: {lines(desk, 'sync ok')}", lines(desk, "sync ok") > 1)
        unusual = [line for line in said if line and not USUAL.match(line)]
        desk.check(f"nothing else is in the log: {unusual[:5]}", not unusual)
        desk.brimlo.send_signal(signal.SIGTERM)
        desk.check("it ends with 0", desk.brimlo.wait(PATIENCE) == 0)
        return 1 if desk.faults else 0


if __name__ == "__main__":
    sys.exit(main())
