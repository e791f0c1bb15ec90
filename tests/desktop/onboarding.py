"""The first minutes with the real program on a virtual display: the onboarding window, gone through
by keyboard and by mouse. Exits with 1 if anything is not as it should be.

usage: onboarding.py BRIMLO SCREENSHOTS"""

import contextlib
import pathlib
import re
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tour"))
from desk import Desk  # noqa: E402

PATIENCE = 30
TITLE = "Welcome to Brimlo"
SAMPLE = "The kettle is on, and there is cake for everyone."
NEXT, BACK, COPY, FIELD = (420, 514), (48, 514), (418, 208), (200, 311)  # in the window


class Window:
    def __init__(self, desk):
        self.desk = desk
        self.id = desk.window(TITLE)

    def geometry(self):
        shown = self.desk.run("xdotool", "getwindowgeometry", "--shell", self.id).stdout.decode()
        values = dict(line.split("=") for line in shown.split())
        return [int(values[name]) for name in ("X", "Y", "WIDTH", "HEIGHT")]

    def click(self, place):
        self.desk.run("xdotool", "mousemove", "--window", self.id, *map(str, place), "sleep", "0.1",
                      "click", "1", "sleep", "0.4")

    def field(self):
        """What stands in the practice field, which has the keyboard."""
        self.desk.keys("ctrl+a", "ctrl+c")
        time.sleep(0.5)
        return self.desk.paste()

    def visible(self):
        return bool(self.desk.run("xdotool", "search", "--onlyvisible", "--name",
                                  TITLE).stdout.strip())


def lines(desk, part="onboarding"):
    return [line.removeprefix("[BrimloMac] ") for line in desk.log.read_text().split("\n")
            if part in line]


def seen(desk):
    return desk.settings.exists() and "macOnboardingDone=true" in desk.settings.read_text()


def practise(desk, window):
    window.click(COPY)
    desk.check("the sample is captured within a second", desk.wait(
        lambda: lines(desk)[-2:] == ["onboarding practice: sample copied to pasteboard",
                                     "onboarding practice: sample captured into history"], 1.5))
    # The field has the keyboard now.
    desk.keys("less", "ctrl+v")
    desk.check("Ctrl+V pastes it into the field", window.field() == "<" + SAMPLE)
    desk.screenshot("onboarding-practised")
    desk.xclip(b"from another program")
    time.sleep(1)
    window.click(FIELD)
    desk.keys("ctrl+a", "Delete", "greater")
    desk.keys("shift+super+v")
    desk.wait(lambda: lines(desk, "palette presented"), PATIENCE)
    time.sleep(0.5)
    desk.run("xdotool", "type", "cake")
    time.sleep(0.5)
    desk.keys("Down", "Return")  # the first match is what the field was looked at by
    time.sleep(1)
    text = window.field()
    desk.check(f"and so does the palette: {text!r}", text == ">" + SAMPLE)


def first_start(brimlo, screenshots):
    with contextlib.ExitStack() as stack:
        desk = Desk(stack, brimlo, screenshots, onboarding=True)
        desk.wait(lambda: lines(desk), PATIENCE)
        window = Window(desk)
        x, y, *size = window.geometry()
        desk.check(f"480 by 560 in the middle: {x}, {y}, {size}",
                   size == [480, 560] and abs(x - 400) < 5 and abs(y - 120) < 30)
        desk.check("the log says so", re.fullmatch(
            r"onboarding presented \(step=0, axTrusted=true\) frame=\{\{400, 120\}, \{480, 560\}\}",
            lines(desk)[0]) is not None)
        active = desk.run("xdotool", "getactivewindow").stdout.decode().strip()
        desk.check("it is in front", active == window.id)
        for step in range(2):
            desk.screenshot(f"onboarding-{step}")
            desk.keys("Return")  # Next has the keyboard
            time.sleep(0.5)
        practise(desk, window)
        window.click(BACK)
        window.click(NEXT)
        window.click(NEXT)
        desk.screenshot("onboarding-3")
        desk.keys("space")
        desk.check("Start ends it", desk.wait(
            lambda: lines(desk)[-1] == "onboarding finished" and not window.visible(), PATIENCE))
        desk.check("the setting says so", seen(desk))
        desk.brimlo.terminate()
        desk.brimlo.wait()
        desk.log.write_text("")
        desk.start()
        desk.check("the next start does not show it", not window.visible() and not lines(desk))
        return desk.faults


def closing(brimlo, screenshots):
    with contextlib.ExitStack() as stack:
        desk = Desk(stack, brimlo, screenshots, onboarding=True)
        window = Window(desk)
        desk.keys("alt+F4")
        desk.check("closing it is enough", desk.wait(lambda: seen(desk), PATIENCE)
                   and not window.visible() and desk.brimlo.poll() is None)
        return desk.faults


def variables(brimlo, screenshots):
    faults = 0
    with contextlib.ExitStack() as stack:
        desk = Desk(stack, brimlo, screenshots, onboarding=True)
        for value, untrusted, shown in (("2", "", "step=2, axTrusted=true"),
                                        ("7", "true", "step=3, axTrusted=true"),
                                        ("-1", "1", "step=0, axTrusted=false"),
                                        ("abc", "1", "step=0, axTrusted=false"),
                                        ("", "0", "step=0, axTrusted=true")):
            desk.brimlo.kill()
            desk.brimlo.wait()
            desk.log.write_text("")
            desk.env.update(BRIMLO_OB_STEP=value, BRIMLO_OB_FORCE_UNTRUSTED=untrusted)
            desk.start()
            desk.check(f"BRIMLO_OB_STEP={value!r}, forced {untrusted!r}: {shown}", lines(desk) == [
                f"onboarding presented ({shown}) frame={{{{400, 120}}, {{480, 560}}}}"])
            above = desk.run("xprop", "-id", Window(desk).id, "_NET_WM_STATE").stdout
            desk.check("it floats", b"_NET_WM_STATE_ABOVE" in above)
        faults += desk.faults
    return faults


def main():
    brimlo = str(pathlib.Path(sys.argv[1]).resolve())
    screenshots = pathlib.Path(sys.argv[2]).resolve()
    screenshots.mkdir(parents=True, exist_ok=True)
    faults = sum(part(brimlo, screenshots) for part in (first_start, closing, variables))
    print("all is well" if not faults else f"{faults} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
