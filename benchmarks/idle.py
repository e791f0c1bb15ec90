"""What the program costs while nobody copies: a minute of it on a virtual display, with 1,000
clips. The limit is a process that does nothing but sleep through the same half-second ticks.

usage: idle.py BRIMLO"""

import contextlib
import os
import pathlib
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "tour"))
from desk import Desk, made_up_clips  # noqa: E402

SECONDS = 60
LIMIT = "import time\nwhile True: time.sleep(0.5)"


def cpu_milliseconds(pid):
    fields = pathlib.Path(f"/proc/{pid}/stat").read_text().rsplit(")", 1)[1].split()
    ticks = int(fields[11]) + int(fields[12])
    return ticks * 1000 / os.sysconf("SC_CLK_TCK")


def pss_megabytes(pid):
    for line in pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text().splitlines():
        if line.startswith("Pss:"):
            return int(line.split()[1]) / 1024
    return float("nan")


def main():
    with contextlib.ExitStack() as stack:
        desk = Desk(stack, sys.argv[1], None, clips=made_up_clips(1000),
                    manager=())
        desk.settle()
        limit = desk.spawn(sys.executable, "-c", LIMIT)
        processes = desk.brimlo.pid, limit.pid
        time.sleep(3)
        before = [cpu_milliseconds(pid) for pid in processes]
        time.sleep(SECONDS)
        spent = [cpu_milliseconds(pid) - start for pid, start in zip(processes, before)]
        print(f"\nidle for {SECONDS} s with 1,000 clips")
        print(f"CPU: ours {spent[0]:.0f} ms, limit {spent[1]:.0f} ms; "
              f"PSS: {pss_megabytes(desk.brimlo.pid):.1f} MB (to stay under: 30)")


if __name__ == "__main__":
    main()
