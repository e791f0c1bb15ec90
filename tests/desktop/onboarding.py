"""The first minutes with the real program on a virtual display: the onboarding window, gone through
by keyboard and by mouse. Exits with 1 if anything is not as it should be.

usage: onboarding.py BRIMLO SCREENSHOTS"""

import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tour"))
from desk import play  # noqa: E402

TITLE = "Welcome to Brimlo"
SAMPLE = "The kettle is on, and there is cake for everyone."
NEXT, BACK, COPY = (420, 514), (48, 514), (418, 208)  # in the window


def expect_logged(desk, line):
    desk.expect(line, lambda: desk.logged(f"[BrimloMac] {line}\n"))


def first_start(desk):
    expect_logged(desk, "onboarding presented (step=0, axTrusted=true) "
                        "frame={{400, 120}, {480, 560}}")
    window = desk.wait(lambda: desk.windows(TITLE))[0]
    x, y, *size = desk.place(window)
    desk.check(f"480 by 560 in the middle: {x}, {y}, {size}",
               size == [480, 560] and abs(x - 400) < 5 and abs(y - 120) < 30)
    desk.expect("it is in front", lambda: desk.ask("getactivewindow") == [window]
                and desk.has_keyboard([window]))

    desk.keys("Return", "Return")  # Next has the keyboard
    desk.click(*COPY, window)
    expect_logged(desk, "onboarding practice: sample copied to pasteboard")
    expect_logged(desk, "onboarding practice: sample captured into history")
    # The field has the keyboard now. Copying its text shows what stands in it.
    desk.keys("less")
    desk.open_palette()
    desk.keys("1")
    expect_logged(desk, "posted Cmd-V")
    desk.keys("ctrl+v", "ctrl+a", "ctrl+c")
    desk.expect("the palette and Ctrl+V both paste it into the field",
                lambda: desk.texts()[0] == "<" + SAMPLE * 2)
    for place in BACK, NEXT, NEXT:
        desk.click(*place, window)
    desk.keys("space")
    expect_logged(desk, "onboarding finished")
    desk.expect("the window has closed", lambda: not desk.windows(TITLE))
    desk.expect("the setting says that it was seen",
                lambda: "macOnboardingDone=true" in desk.settings.read_text())


def chosen_step(desk):
    desk.stop()
    desk.settings.unlink()
    desk.env["BRIMLO_OB_STEP"] = "2"
    desk.start()
    expect_logged(desk, "onboarding presented (step=2, axTrusted=true) "
                        "frame={{400, 120}, {480, 560}}")
    window = desk.window(TITLE)
    desk.expect("it floats", lambda: b"_NET_WM_STATE_ABOVE" in desk.run(
        "xprop", "-id", window, "_NET_WM_STATE").stdout)


if __name__ == "__main__":
    sys.exit(play(first_start, chosen_step, onboarding=True) > 0)
