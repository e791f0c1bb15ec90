"""Uses the menu window of the real program as a person would, on virtual displays of its own: with
a tray that embeds icons, with one on the session bus, and with none. Exits with 1 if anything is
not as it should be.

usage: menu.py BRIMLO SCREENSHOTS"""

import contextlib
import json
import os
import pathlib
import re
import signal
import subprocess
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tour"))
from desk import Desk, made_up_clips  # noqa: E402
from palette import CARD, near, pixels  # noqa: E402

TRAY_HOST = str(pathlib.Path(__file__).with_name("tray_host.py"))
PATIENCE = 30
# In the window: from its edge to the middle of the first row.
FIRST_ROW = (160, 88)
# How often Tab takes the keyboard from the list to each of them, with one button of the pager.
QUICK_PASTE, PASSWORDS, AUTO_APPLY, SYNC, CLEAR, INTRODUCTION, UPDATES, QUIT = range(2, 10)


def windows(desk, name="^Brimlo$"):
    return desk.run("xdotool", "search", "--all", "--onlyvisible", "--pid", str(desk.brimlo.pid),
                    "--name", name).stdout.decode().split()


def is_open(desk):
    return bool(windows(desk))


def shows(desk, opened):
    """Waits until the window is open, and has the keyboard, or is closed."""
    def holds():
        found = windows(desk)
        has_keyboard = desk.run("xdotool", "getwindowfocus").stdout.decode().strip() in found
        return has_keyboard if opened else not found
    there = desk.wait(holds, PATIENCE)
    time.sleep(0.3)  # it has been drawn
    return there


def geometry(desk, window):
    said = desk.run("xdotool", "getwindowgeometry", "--shell", window).stdout.decode()
    values = dict(line.split("=") for line in said.split())
    return [int(values[name]) for name in ("X", "Y", "WIDTH", "HEIGHT")]


def click(desk, x, y):
    desk.run("xdotool", "mousemove", str(x), str(y), "sleep", "0.1", "click", "1", "sleep", "0.3")


def second_start(desk, *arguments):
    return desk.run(str(desk.brimlo_path), *arguments).returncode


def press_item(desk, tabs):
    """Opens the window anew and presses what is so many tabs away."""
    if is_open(desk):
        desk.keys("Escape")
        shows(desk, False)
    second_start(desk)
    shows(desk, True)
    desk.keys(*["Tab"] * tabs, "space")
    time.sleep(0.5)


def texts(desk):
    return [clip["text"] for clip in desk.clips()]


def lines(desk, part):
    return desk.log.read_text().count(part)


def use_embedded_icon(desk):
    def start_tray(edge):
        tray = desk.spawn("trayer", "--edge", edge, "--align", "right", "--widthtype", "request",
                          "--height", "26", "--SetPartialStrut", "true")
        return tray, desk.wait(lambda: icon() is not None, PATIENCE)

    def icon():
        """The middle of the icon; none while there is none."""
        tree = desk.run("xwininfo", "-root", "-tree").stdout.decode()
        at = re.search(r'"Brimlo"|brimlo.*?(\d+)x\1\+\d+\+\d+ +\+(\d+)\+(\d+)', tree)
        at = at and re.search(r'\("brimlo".*?(2\d)x(2\d)\+\d+\+\d+ +\+(\d+)\+(\d+)', tree)
        return at and (int(at[3]) + int(at[1]) // 2, int(at[4]) + int(at[2]) // 2)

    for edge in ("top", "bottom"):
        tray, there = start_tray(edge)
        desk.check(f"a tray that comes up on the {edge} gets the icon", there)
        time.sleep(0.5)
        click(desk, *icon())
        desk.check("a click on it opens the window", shows(desk, True))
        x, y, width, height = geometry(desk, windows(desk)[0])
        beside = y in range(20, 30) if edge == "top" else y + height in range(770, 781)
        desk.check(f"beside it: {x}, {y}, {width} by {height}", beside and x + width == 1280)
        desk.screenshot(f"menu-{edge}")
        click(desk, *icon())
        desk.check("another click closes it", shows(desk, False))
        click(desk, *icon())
        shows(desk, True)
        click(desk, 300, 400)
        desk.check("so does a click elsewhere", shows(desk, False))
        desk.end(tray)


def use_history(desk):
    second_start(desk)
    desk.check("without a tray, a second start opens the window", shows(desk, True))
    x, y, *_ = geometry(desk, windows(desk)[0])
    oldest_first = texts(desk)
    click(desk, x + FIRST_ROW[0], y + FIRST_ROW[1] + 2 * 28)
    desk.check("a click on the third row copies it", desk.paste() == oldest_first[2])
    desk.check("it is the newest now, and the window still open",
               texts(desk)[0] == oldest_first[2] and is_open(desk)
               and lines(desk, "copied clip to pasteboard") == 1)
    desk.keys("Tab", "space")
    expected = texts(desk)[25]
    time.sleep(0.3)
    desk.keys("ctrl+1")
    desk.check("on the second page Control+1 copies its first row",
               desk.wait(lambda: texts(desk)[0] == expected, PATIENCE))
    desk.xclip(b"copied meanwhile")
    desk.check("a copy made meanwhile is captured", desk.wait(
        lambda: texts(desk)[0] == "copied meanwhile", PATIENCE))
    expected = texts(desk)[26]
    desk.keys("shift+Tab", "shift+Tab", "Home", "Down", "Return")
    desk.check("arrows and Return copy too",
               desk.wait(lambda: texts(desk)[0] == expected, PATIENCE))
    desk.keys("Escape")
    desk.check("Escape closes the window", shows(desk, False))


def passed_through(desk, watcher):
    """Whether the application in front sees what is typed."""
    before = watcher.read_text().count("(keysym 0x71, q)")
    desk.keys("q")
    return desk.wait(lambda: watcher.read_text().count("(keysym 0x71, q)") > before, PATIENCE)


def use_switches(desk):
    watcher = desk.home / "xev"
    desk.spawn("xev", "-event", "keyboard", "-name", "xev", stdout=watcher.open("w"))
    desk.window("xev")

    def presses():
        return len(re.findall(r"KeyPress event[^\n]*\n[^\n]*\n[^\n]*keysym 0x56, V",
                              watcher.read_text()))

    def passed():
        before = presses()
        desk.run("xdotool", "keydown", "50", "keydown", "133", "key", "55", "keyup", "133",
                 "keyup", "50", "sleep", "0.7")
        return presses() > before

    desk.check("the hotkey opens the palette, and the application in front does not see it",
               not passed() and lines(desk, "palette presented") == 1)
    desk.keys("Escape")
    second_start(desk)
    shows(desk, True)
    passed()
    desk.check("the palette takes the place of the menu window",
               not is_open(desk) and lines(desk, "palette presented") == 2)
    desk.keys("Escape")
    time.sleep(0.5)
    desk.check("and gives the keyboard back to the application", passed_through(desk, watcher))
    for tabs, key, value in ((QUICK_PASTE, "quickPasteEnabled", "false"),
                             (PASSWORDS, "excludePasswords", "true"),
                             (AUTO_APPLY, "autoApplyFromiPhone", "false")):
        press_item(desk, tabs)
        desk.check(f"the switch {key} is written", f"{key}={value}" in desk.settings.read_text())
    desk.keys("Escape")
    shows(desk, False)
    desk.window("xev")
    desk.check("with quick paste off, the hotkey belongs to the application in front", passed())
    press_item(desk, QUICK_PASTE)
    before = lines(desk, "sync ok")
    press_item(desk, SYNC)
    desk.check("Sync syncs", desk.wait(lambda: lines(desk, "sync ok") > before, PATIENCE))


def use_commands(desk):
    press_item(desk, INTRODUCTION)
    desk.check("the introduction comes up again", desk.wait(
        lambda: windows(desk, "^Welcome to Brimlo$"), PATIENCE))
    desk.keys("alt+F4")
    press_item(desk, UPDATES)
    desk.check("without a feed, updates come with the packages", desk.wait(
        lambda: windows(desk, "^Brimlo Updates$"), PATIENCE))
    time.sleep(0.5)
    desk.screenshot("updates")
    desk.keys("Escape")
    desk.check("Escape closes that", desk.wait(
        lambda: not windows(desk, "^Brimlo Updates$"), PATIENCE))
    count = len(texts(desk))
    press_item(desk, CLEAR)
    desk.screenshot("menu-clear")
    desk.keys("Escape")
    desk.check("clearing asks first", len(texts(desk)) == count and is_open(desk))
    press_item(desk, CLEAR)
    desk.keys("Return")
    time.sleep(0.5)
    desk.check("Return takes the harmless answer", len(texts(desk)) == count)
    press_item(desk, CLEAR)
    desk.keys("Tab", "Return")
    desk.check("the other one empties the history", desk.wait(lambda: not texts(desk), PATIENCE))
    tombstones = json.loads((desk.data / "deletedClipIds.json").read_text())
    synced = lines(desk, "sync ok")
    desk.check(f"what was deleted is remembered until it is synced ({len(tombstones)})",
               len(tombstones) == count or lines(desk, "sync ok") > synced)
    desk.check("and it is logged", lines(desk, "history cleared") == 1)
    desk.screenshot("menu-empty")


def use_signal(desk):
    for number in (1, 2):
        desk.brimlo.send_signal(signal.SIGWINCH)
        desk.check(f"SIGWINCH shows preview {number}", desk.wait(
            lambda number=number: len(windows(desk)) == number
            and lines(desk, "SIGWINCH -> popover preview shown (size={320, ") == number,
            PATIENCE))
    desk.screenshot("menu-preview")
    desk.keys("Escape")
    desk.check("Escape closes one of them", desk.wait(lambda: len(windows(desk)) == 1, PATIENCE))
    desk.keys("alt+F4")
    desk.check("and its frame the other", desk.wait(lambda: not is_open(desk), PATIENCE))


def use_second_starts(desk):
    desk.check("started in the background once more, nothing opens",
               second_start(desk, "--background") == 0 and not is_open(desk))
    before = lines(desk, "palette presented")
    second_start(desk, "--quick-paste")
    desk.check("--quick-paste opens the palette",
               desk.wait(lambda: lines(desk, "palette presented") > before, PATIENCE))
    desk.keys("Escape")
    desk.check("what it does not know it refuses", second_start(desk, "--nonsense") == 2)
    desk.brimlo.send_signal(signal.SIGSTOP)
    desk.check("one that hangs is not waited for for ever", second_start(desk) == 1)
    desk.brimlo.send_signal(signal.SIGCONT)
    desk.check("it catches up", shows(desk, True))
    desk.keys("Escape")
    shows(desk, False)


def quit_by_menu(desk):
    desk.spawn("xfsettingsd", "--no-daemon", "--disable-wm-check")
    time.sleep(3)
    desk.xclip(b"x")  # so that there is a row
    second_start(desk)
    shows(desk, True)
    desk.run("xfconf-query", "-c", "xsettings", "-p", "/Net/ThemeName", "-n", "-t", "string", "-s",
             "Adwaita-dark")
    x, y, *_ = geometry(desk, windows(desk)[0])
    desk.check("it is dark when the desktop's theme is", desk.wait(
        lambda: near(pixels(desk, (x + 160, y + 20))[0], CARD), PATIENCE))
    desk.xclip(b"to be kept")
    desk.wait(lambda: "to be kept" in texts(desk), PATIENCE)
    desk.keys("ctrl+1")
    time.sleep(0.5)
    desk.keys("Escape")
    shows(desk, False)
    press_item(desk, QUIT - 1)  # there is no pager
    try:
        status = desk.brimlo.wait(PATIENCE)
    except subprocess.TimeoutExpired:
        status = "none"
    desk.check(f"Quit ends it with 0: {status}", status == 0)
    desk.check("the clipboard's text is still there", desk.paste() == "to be kept")


def use_notifier(desk):
    def start_host():
        host = desk.spawn("/usr/bin/python3", TRAY_HOST, stdin=subprocess.PIPE,
                          stdout=subprocess.PIPE, text=True)
        said = ""
        for _ in range(PATIENCE):
            said = ask(host, "items")
            if said != "0":
                break
            time.sleep(0.5)
        return host, said

    def ask(host, what):
        host.stdin.write(what + "\n")
        host.stdin.flush()
        return host.stdout.readline().strip()

    host, registered = start_host()
    desk.check("a tray on the session bus gets the item", registered == "1")
    said = ask(host, "properties")
    desk.check(f"it says what it is: {said}", said.startswith(
        "ApplicationStatus brimlo Brimlo Active False [(16, 16, 1024)"))
    ask(host, "click 100 8")
    desk.check("a click on it opens the window", shows(desk, True))
    ask(host, "dark")
    time.sleep(1)
    desk.screenshot("menu-dark")
    x, y, *_ = geometry(desk, windows(desk)[0])
    desk.check("it is dark when the desktop is", near(pixels(desk, (x + 160, y + 20))[0], CARD))
    ask(host, "click 100 8")
    desk.check("a click closes it", shows(desk, False))
    desk.end(host)
    host, registered = start_host()
    desk.check("a tray that is started again gets it again", registered == "1")


def main():
    screenshots = pathlib.Path(sys.argv[2])
    screenshots.mkdir(parents=True, exist_ok=True)
    brimlo = os.path.abspath(sys.argv[1])
    with contextlib.ExitStack() as stack:
        desk = Desk(stack, brimlo, screenshots, clips=made_up_clips(60), bus=True)
        for part in (use_embedded_icon, use_history, use_switches, use_commands, use_signal,
                     use_second_starts, quit_by_menu):
            print(part.__name__)
            part(desk)
        faults = desk.faults
        for fault in ("Error", "runtime error"):
            if fault in desk.log.read_text():
                print(desk.log.read_text())
                faults += 1
    with contextlib.ExitStack() as stack:
        desk = Desk(stack, brimlo, screenshots, clips=made_up_clips(3), bus=True)
        print(use_notifier.__name__)
        use_notifier(desk)
        faults += desk.faults
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
