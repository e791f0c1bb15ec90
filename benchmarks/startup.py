"""How long the program takes from its start to the hotkey, with 1,000 and with 100,000 clips.

usage: startup.py BRIMLO"""

import contextlib
import pathlib
import statistics
import subprocess
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "tour"))
from desk import Desk, made_up_clips  # noqa: E402

ROUNDS = 10


def start(desk):
    begin = time.monotonic()
    process = subprocess.Popen([desk.brimlo_path], env=desk.env, stderr=subprocess.PIPE)
    for line in process.stderr:
        if b"registered=true" in line:
            break
    spent = (time.monotonic() - begin) * 1000
    process.terminate()
    process.stderr.close()
    process.wait()
    return spent


def main():
    for count in (1000, 100_000):
        with contextlib.ExitStack() as stack:
            desk = Desk(stack, sys.argv[1], None, clips=made_up_clips(count))
            desk.stop()
            times = [start(desk) for _ in range(ROUNDS)]
            print(f"start to hotkey, {count:,} clips: median {statistics.median(times):.0f} ms, "
                  f"longest {max(times):.0f} ms (to stay under: 250)", flush=True)


if __name__ == "__main__":
    main()
