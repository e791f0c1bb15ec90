"""Drives the real program on a virtual display, as a person would: other programs copy, the
palette is opened and pastes into an editor, and the history is looked at. Prints what it sees,
leaves screenshots, and exits with 1 if anything is not as it should be.

usage: tour.py BRIMLO SCREENSHOTS"""

import subprocess
import sys
import time

from desk import SHOWN, play

TEMPLATES = [{"id": "1", "title": "Copied", "body": " (copied: {clipboard})", "createdAt": 2},
             {"id": "2", "title": "Signature", "body": "Kind regards,\nAda, {date}",
              "createdAt": 1}]


def other_programs_copy(desk):
    desk.spawn("picom", "--backend", "xrender", "--config", "/dev/null")
    desk.xclip("from xclip: naïve café".encode())
    desk.expect_newest("xclip", "from xclip: naïve café")

    desk.feed("from xsel: 日本語".encode(), "xsel", "-b", "-i")
    desk.expect_newest("xsel", "from xsel: 日本語")

    terminal = desk.spawn("xterm", "-T", "terminal", "-xrm", "XTerm*selectToClipboard: true", "-e",
                          "printf 'from xterm: a line\\n'; sleep 60")
    window = desk.window("terminal")
    desk.run("xdotool", "mousemove", "--window", window, "60", "10", "click", "--repeat", "3",
             "--delay", "60", "1")
    desk.expect_newest("xterm", "from xterm: a line\n")
    desk.screenshot("xterm")
    desk.end(terminal)

    for program, toolkit in (("mousepad", "GTK"), ("featherpad", "Qt")):
        text = f"from a {toolkit} editor: “quoted” ☃\nand a second line"
        file = desk.home / f"{program}.txt"
        file.write_text(text)
        editor = desk.spawn(program, str(file))
        desk.window(f"{program}.txt")
        desk.keys("ctrl+a", "ctrl+c")
        desk.expect_newest(program, text)
        desk.screenshot(program)
        desk.end(editor)
        desk.expect(f"{program} has ended, its text can still be pasted",
                    lambda text=text: desk.paste() == text)

    browser = desk.browse("from Chromium: 😀 text")
    desk.window("browser")
    desk.keys("ctrl+a", "ctrl+c")
    desk.expect_newest("chromium", "from Chromium: 😀 text")
    desk.screenshot("chromium")
    desk.end(browser)


def the_palette_pastes(desk):
    note = desk.home / "note.txt"
    note.write_text("Notes\n")
    editor = desk.spawn("mousepad", str(note))
    window = desk.window("note.txt")
    desk.keys("ctrl+End")
    desk.run("xdotool", "mousemove", "640", "150")

    def expect_saved(what, text):
        # The title tells with a star that there is something to save.
        desk.wait(lambda: desk.ask("getwindowname", window)[0].startswith("*"))
        desk.keys("ctrl+s")
        desk.expect(what, lambda: note.read_text() == text)

    desk.open_palette()
    desk.screenshot("palette")
    desk.type("xsel")
    desk.screenshot("palette-filtered")
    desk.keys("Return")
    expect_saved("hotkey, four letters, Return: the text stands in the editor",
                 "Notes\nfrom xsel: 日本語")
    desk.open_palette()
    desk.keys("Tab")
    desk.screenshot("palette-templates")
    desk.keys("1")
    expect_saved("Tab, 1: a template, filled in, stands behind it",
                 "Notes\nfrom xsel: 日本語 (copied: from xsel: 日本語)")
    desk.screenshot("pasted")
    desk.end(editor)


def the_rules_hold(desk):
    before = desk.clips()
    desk.xclip(b" \n\t ")
    time.sleep(1.2)  # nothing tells that it was looked at, which happens every half second
    desk.xclip(b"\x89PNG\r\n\x1a\n", "-t", "image/png")
    time.sleep(1.2)
    desk.check("blank text and an image leave nothing", desk.clips() == before)

    oldest = before[-1]
    owner = desk.spawn("xclip", "-quiet", "-selection", "clipboard", stdin=subprocess.PIPE)
    owner.stdin.write(oldest["text"].replace("é", "e\u0301").encode())
    owner.stdin.close()
    desk.wait(lambda: desk.clips()[0]["id"] == oldest["id"])
    desk.check("an older text, copied again in another spelling, moves up and keeps its id",
               desk.clips()[0]["id"] == oldest["id"] and len(desk.clips()) == len(before))

    desk.end(owner)
    desk.expect("its owner was killed, another program can still paste it",
                lambda: desk.paste() == desk.texts()[0])

    second = desk.run(desk.brimlo_path)
    desk.check("a second start says so and exits with 0",
               second.returncode == 0 and b"already running for" in second.stderr)


def the_process_ends_and_starts_again(desk):
    before = desk.clips()
    desk.end(desk.brimlo)
    desk.xclip(b"copied while nothing ran")
    with desk.settings.open("a") as settings:
        settings.write("excludePasswords=true\n")
    desk.start()
    desk.xclip(b"Passw0rd!")
    desk.expect("a password is skipped",
                lambda: desk.logged("skipped password-like text (9 chars)\n"))
    desk.check("after kill -9 the history is as it was; what was on the clipboard at the start "
               "stays out", desk.clips() == before)
    desk.xclip(b"the first copy after the restart")
    desk.expect_newest("xclip", "the first copy after the restart")

    large = "large " * 2_000_000
    desk.xclip(large.encode())
    desk.expect("12 MB are captured whole", lambda: desk.texts()[0] == large)
    desk.check("SIGTERM ends it with 0", desk.stop() == 0)


def what_is_left(desk):
    print("  the history, newest first:")
    for clip in desk.clips():
        print(f"    {clip['id']}  {clip['source']}  {clip['text'][:SHOWN]!r}")
    print("  the log:")
    for line in desk.log.read_text().splitlines():
        print(f"    {line}")
    # One more may be there: the word that the second of three clicks in xterm selects.
    desk.check("every copy was captured once", desk.logged("captured local clip (") in (9, 10))


def main():
    faults = play(other_programs_copy, the_palette_pastes, the_rules_hold,
                  the_process_ends_and_starts_again, what_is_left, templates=TEMPLATES)
    print(f"{faults} faults; screenshots in {sys.argv[2]}")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
