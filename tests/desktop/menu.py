"""Uses the menu window of the real program as a person would, on a virtual display of its own: with
a tray that embeds icons, with one on the session bus, and with none. Exits with 1 if anything is
not as it should be.

usage: menu.py BRIMLO SCREENSHOTS"""

import pathlib
import signal
import subprocess
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tour"))
from desk import CARD, made_up_clips, near, play  # noqa: E402

TRAY_HOST = str(pathlib.Path(__file__).with_name("tray_host.py"))
# How often Tab takes the keyboard from the list to each of them, with one button of the pager.
QUICK_PASTE, PASSWORDS, AUTO_APPLY, SYNC, CLEAR, INTRODUCTION, UPDATES, QUIT = range(2, 10)


def windows(desk):
    return desk.windows("^Brimlo$")


def opens(desk):
    """Waits until the window is open and has the keyboard."""
    return desk.wait(lambda: desk.has_keyboard(windows(desk)))


def closes(desk):
    return desk.wait(lambda: not windows(desk))


def second_start(desk, *arguments):
    return desk.run(desk.brimlo_path, *arguments).returncode


def press_item(desk, tabs):
    """Opens the window anew and presses what is so many tabs away."""
    if windows(desk):
        desk.keys("Escape")
        closes(desk)
    second_start(desk)
    opens(desk)
    desk.keys(*["Tab"] * tabs, "space")


def expect_dark(desk, what, dark):
    x, y, *_ = desk.place(windows(desk)[0])
    desk.expect(what, lambda: near(desk.pixels((x + 160, y + 20))[0], CARD) == dark)


def embedded_icon(desk):
    def icon():
        """Its middle, once it is in the corner; none before."""
        for x, y, width, height in map(desk.place, desk.windows()):
            if width == 22 and x > 1250 and y + height in (25, 799):
                return x + width // 2, y + height // 2

    for edge in ("top", "bottom"):
        tray = desk.spawn("trayer", "--edge", edge, "--align", "right", "--widthtype", "request",
                          "--height", "26", "--SetPartialStrut", "true")
        desk.expect(f"a tray that comes up on the {edge} gets the icon", icon)
        desk.click(*icon())
        desk.check("a click on it opens the window", opens(desk))
        x, y, width, height = desk.place(windows(desk)[0])
        desk.check(f"beside it: {x}, {y}, {width} by {height}",
                   x + width == 1280 and (y == 26 if edge == "top" else y + height == 774))
        desk.click(*(icon() if edge == "top" else (300, 400)))
        desk.check("another click closes it, on the icon or elsewhere", closes(desk))
        # A click so soon after the one that closed the window would count as the same.
        time.sleep(0.5)
        desk.end(tray)
        desk.wait(lambda: not icon())


def item_on_the_session_bus(desk):
    def ask(what):
        host.stdin.write(what + "\n")
        host.stdin.flush()
        return host.stdout.readline().strip()

    for what in ("a tray on the session bus gets the item", "one that is started again, too"):
        host = desk.spawn("/usr/bin/python3", TRAY_HOST, stdin=subprocess.PIPE,
                          stdout=subprocess.PIPE, text=True)
        desk.expect(what, lambda: ask("items") == "1")
        said = ask("properties")
        desk.check(f"it says what it is: {said}", said.startswith(
            "ApplicationStatus brimlo Brimlo Active False [(16, 16, 1024)"))
        ask("click 100 8")
        desk.check("a click on it opens the window", opens(desk))
        for scheme in ("dark", "plain"):
            ask(scheme)
            expect_dark(desk, f"the window is {scheme} when the desktop is", scheme == "dark")
        ask("click 100 8")
        desk.check("a click closes it", closes(desk))
        desk.end(host)


def history(desk):
    second_start(desk)
    desk.check("without a tray, a second start opens the window", opens(desk))
    x, y, *_ = desk.place(windows(desk)[0])
    third = desk.texts()[2]
    desk.click(x + 160, y + 88 + 2 * 28)  # the middle of the first row, two heights further down
    desk.expect("a click on the third row makes it the newest", lambda: desk.texts()[0] == third)
    desk.check("and copies it; the window stays open", desk.paste() == third and windows(desk))
    expected = desk.texts()[25]
    desk.keys("Tab", "space", "ctrl+1")
    desk.expect("on the second page Control+1 copies its first row",
                lambda: desk.texts()[0] == expected)
    expected = desk.texts()[26]
    desk.keys("shift+Tab", "shift+Tab", "Home", "Down", "Return")
    desk.expect("arrows and Return copy too", lambda: desk.texts()[0] == expected)
    desk.keys("Escape")
    desk.check("Escape closes the window", closes(desk))


def footer(desk):
    for tabs, key, value in ((QUICK_PASTE, "quickPasteEnabled", "false"),
                             (PASSWORDS, "excludePasswords", "true"),
                             (AUTO_APPLY, "autoApplyFromiPhone", "false"),
                             (QUICK_PASTE, "quickPasteEnabled", "true")):
        press_item(desk, tabs)
        desk.expect(f"the switch writes {key}={value}",
                    lambda line=f"{key}={value}": line in desk.settings.read_text())
    for tabs, title, way_out in ((INTRODUCTION, "^Welcome to Brimlo$", "alt+F4"),
                                 (UPDATES, "^Brimlo Updates$", "Escape")):
        press_item(desk, tabs)
        desk.expect(f"{title} comes up", lambda title=title: desk.has_keyboard(desk.windows(title)))
        desk.keys(way_out)
        desk.expect(f"{way_out} closes it", lambda title=title: not desk.windows(title))


def signals_and_second_starts(desk):
    desk.brimlo.send_signal(signal.SIGWINCH)
    desk.expect("SIGWINCH shows a preview", lambda: desk.has_keyboard(windows(desk)) and
                desk.logged("SIGWINCH -> popover preview shown (size={320, "))
    desk.keys("alt+F4")
    desk.check("its frame closes it", closes(desk))
    desk.brimlo.send_signal(signal.SIGSTOP)
    desk.check("a second start does not wait for ever for one that hangs", second_start(desk) == 1)
    desk.brimlo.send_signal(signal.SIGCONT)
    desk.check("which catches up", opens(desk))
    desk.check("what it does not know it refuses", second_start(desk, "--nonsense") == 2)
    before = desk.logged("palette presented")
    second_start(desk, "--quick-paste")
    desk.expect("--quick-paste opens the palette",
                lambda: desk.logged("palette presented") > before)
    desk.check("in the menu window's place", closes(desk))
    desk.keys("Escape")
    desk.expect("Escape closes it", lambda: not desk.windows())
    desk.check("started in the background once more, nothing opens",
               second_start(desk, "--background") == 0 and not desk.windows())


def quitting(desk):
    desk.spawn("xfsettingsd", "--no-daemon", "--disable-wm-check")
    second_start(desk)
    opens(desk)
    desk.run("xfconf-query", "-c", "xsettings", "-p", "/Net/ThemeName", "-n", "-t", "string", "-s",
             "Adwaita-dark")
    expect_dark(desk, "the window is dark when the desktop's theme is", True)
    desk.copy("to be kept")
    desk.keys("ctrl+1")
    desk.wait(lambda: desk.logged("copied clip to pasteboard") == 4)
    desk.wait(lambda: desk.owner("CLIPBOARD_MANAGER"))
    press_item(desk, QUIT)
    status = desk.wait_for_end()
    desk.check(f"Quit ends it with 0: {status}", status == 0)
    desk.check("the clipboard's text is still there", desk.paste() == "to be kept")


if __name__ == "__main__":
    sys.exit(play(embedded_icon, item_on_the_session_bus, history, footer,
                  signals_and_second_starts, quitting, clips=made_up_clips(60), bus=True) > 0)
