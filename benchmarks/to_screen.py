"""How long the palette takes from the hotkey to the screen, and the menu window from a second
start's request, on a virtual display, with 100 and with 100,000 clips.

usage: to_screen.py BRIMLO TO_SCREEN [ROUNDS CLIPS]   other numbers than 20 rounds of each"""

import contextlib
import os
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "tour"))
from desk import Desk, made_up_clips  # noqa: E402


def main():
    brimlo, to_screen = (os.path.abspath(path) for path in sys.argv[1:3])
    rounds, *counts = map(int, sys.argv[3:] or (20, 100, 100_000))
    for count in counts:
        with contextlib.ExitStack() as stack:
            desk = Desk(stack, brimlo, None, clips=made_up_clips(count))
            desk.settle()
            desk.run("xdotool", "mousemove", "640", "300")
            for what, arguments in (("hotkey to palette", ()),
                                    ("request to menu window", (str(desk.data),))):
                result = desk.run(to_screen, str(rounds), *arguments)
                print(f"{what}, {count:,} clips: "
                      f"{(result.stdout + result.stderr).decode().strip()} (to stay under: 50)",
                      flush=True)
                if result.returncode:
                    return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
