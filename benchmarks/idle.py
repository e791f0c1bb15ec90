"""What the program costs while nobody copies: a minute of it on a virtual display, with 1,000
clips. The limit is a process that does nothing but sleep through the same half-second ticks.

usage: idle.py BRIMLO"""

import json
import os
import pathlib
import subprocess
import sys
import tempfile
import time

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
    with tempfile.TemporaryDirectory() as home:
        data = pathlib.Path(home) / "data/BrimloMac"
        data.mkdir(parents=True)
        clips = [{"id": str(i), "text": f"clip {i} " + "x" * (20 + i % 360),
                  "savedAt": 1.7e12 - i, "source": "manual"} for i in range(1000)]
        (data / "clips.json").write_text(json.dumps(clips))
        reader, writer = os.pipe()
        server = subprocess.Popen(["Xvfb", "-displayfd", str(writer), "-noreset"],
                                  pass_fds=[writer], stderr=subprocess.DEVNULL)
        display = ":" + os.read(reader, 16).decode().strip()
        env = dict(os.environ, DISPLAY=display, HOME=home, XDG_DATA_HOME=f"{home}/data",
                   XDG_CONFIG_HOME=f"{home}/config")
        ours = subprocess.Popen([sys.argv[1]], env=env)
        limit = subprocess.Popen([sys.executable, "-c", LIMIT])
        try:
            time.sleep(3)
            before = cpu_milliseconds(ours.pid), cpu_milliseconds(limit.pid)
            time.sleep(SECONDS)
            spent = [cpu_milliseconds(process.pid) - start
                     for process, start in zip((ours, limit), before)]
            print(f"\nidle for {SECONDS} s with 1,000 clips")
            print(f"CPU: ours {spent[0]:.0f} ms, limit {spent[1]:.0f} ms; "
                  f"PSS: {pss_megabytes(ours.pid):.1f} MB (to stay under: 30)")
        finally:
            for process in (ours, limit, server):
                process.terminate()
                process.wait()


if __name__ == "__main__":
    main()
