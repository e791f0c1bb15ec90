"""Drives the real program on a virtual display, as a person would: other programs copy, the
palette is opened and pastes into an editor, and the history is looked at. Prints what it sees,
leaves screenshots, and exits with 1 if anything is not as it should be.

usage: tour.py BRIMLO SCREENSHOTS"""

import contextlib
import os
import pathlib
import sys
import time

from desk import SHOWN, Desk


TEMPLATES = [{"id": "1", "title": "Copied", "body": " (copied: {clipboard})", "createdAt": 2},
             {"id": "2", "title": "Signature", "body": "Kind regards,\nAda, {date}",
              "createdAt": 1}]


def programs_copy(desk):
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
        desk.keys("ctrl+a")
        desk.keys("ctrl+c")
        desk.expect_newest(program, text)
        desk.screenshot(program)
        desk.end(editor)
        desk.check(f"{program} has ended, its text can still be pasted",
                   desk.wait(lambda: desk.paste() == text, 2))

    page = desk.home / "page.html"
    page.write_text("<meta charset=utf-8><title>browser</title>"
                    "<textarea autofocus>from Chromium: 😀 text</textarea>")
    browser = desk.spawn("chromium", "--no-sandbox", "--disable-gpu", "--no-first-run",
                         "--disable-background-networking", "--disable-component-update",
                         "--disable-sync", "--disable-dev-shm-usage", "--password-store=basic",
                         f"--user-data-dir={desk.home}/chromium", f"file://{page}")
    desk.window("browser")
    time.sleep(1)
    desk.keys("ctrl+a")
    desk.keys("ctrl+c")
    desk.expect_newest("chromium", "from Chromium: 😀 text")
    desk.screenshot("chromium")
    desk.end(browser)


def palette_pastes(desk):
    note = desk.home / "note.txt"
    note.write_text("Notes\n")
    editor = desk.spawn("mousepad", str(note))
    desk.window("note.txt")
    desk.keys("ctrl+End")
    desk.run("xdotool", "mousemove", "640", "150")

    def saved(text):
        desk.keys("ctrl+s")
        return desk.wait(lambda: note.read_text() == text, 3)

    def open_palette():
        desk.run("xdotool", "key", "shift+super+v")
        time.sleep(0.5)

    open_palette()
    desk.screenshot("palette")
    desk.run("xdotool", "type", "--delay", "30", "xsel")
    time.sleep(0.5)
    desk.screenshot("palette-filtered")
    desk.run("xdotool", "key", "Return")
    time.sleep(1)
    desk.check("hotkey, four letters, Return: the text stands in the editor",
               saved("Notes\nfrom xsel: 日本語"))
    open_palette()
    desk.run("xdotool", "key", "Tab")
    time.sleep(0.3)
    desk.screenshot("palette-templates")
    desk.run("xdotool", "key", "1")
    time.sleep(1)
    desk.check("Tab, 1: a template, filled in, stands behind it",
               saved("Notes\nfrom xsel: 日本語 (copied: from xsel: 日本語)"))
    desk.screenshot("pasted")
    desk.end(editor)


def rules_hold(desk):
    before = desk.clips()
    desk.xclip(b" \n\t ")
    desk.xclip(b"\x89PNG\r\n\x1a\n", "-t", "image/png")
    time.sleep(1.2)
    desk.check("blank text and an image leave nothing", desk.clips() == before)

    oldest = before[-1]
    desk.xclip(oldest["text"].replace("é", "e\u0301").encode())
    desk.wait(lambda: desk.clips()[0]["id"] == oldest["id"], 2)
    desk.check("an older text, copied again in another spelling, moves up and keeps its id",
               desk.clips()[0]["id"] == oldest["id"] and len(desk.clips()) == len(before))

    desk.run("pkill", "-9", "xclip")
    time.sleep(0.3)
    desk.check("its owner was killed, another program can still paste it",
               desk.paste() == desk.clips()[0]["text"])

    second = desk.run(desk.brimlo_path)
    desk.check("a second start says so and exits with 0",
               second.returncode == 0 and b"already running for" in second.stderr)


def restarts(desk):
    before = desk.clips()
    desk.brimlo.kill()
    desk.brimlo.wait()
    desk.xclip(b"copied while nothing ran")
    with desk.settings.open("a") as settings:
        settings.write("excludePasswords=true\n")
    desk.start()
    desk.xclip(b"Passw0rd!")
    time.sleep(1)
    desk.check("after kill -9 the history is as it was; what was on the clipboard at the start and "
               "a password stay out", desk.clips() == before)
    desk.xclip(b"the first copy after the restart")
    desk.expect_newest("xclip", "the first copy after the restart")

    large = "large " * 2_000_000
    desk.xclip(large.encode())
    desk.check("12 MB are captured whole",
               desk.wait(lambda: desk.clips()[0]["text"] == large, 10))
    desk.brimlo.terminate()
    desk.check("SIGTERM ends it with 0", desk.brimlo.wait(10) == 0)


def main():
    screenshots = pathlib.Path(sys.argv[2])
    screenshots.mkdir(parents=True, exist_ok=True)
    with contextlib.ExitStack() as stack:
        desk = Desk(stack, os.path.abspath(sys.argv[1]), screenshots, templates=TEMPLATES)
        desk.spawn("picom", "--backend", "xrender", "--config", "/dev/null")
        print("Other programs copy:")
        programs_copy(desk)
        print("The palette:")
        palette_pastes(desk)
        print("The rules:")
        rules_hold(desk)
        print("The process ends and starts again:")
        restarts(desk)
        print("The history, newest first:")
        for clip in desk.clips():
            print(f"  {clip['id']}  {clip['source']}  {clip['text'][:SHOWN]!r}")
        print("The log:")
        log = desk.log.read_text()
        print("".join(f"  {line}\n" for line in log.splitlines()), end="")
        # One more may be there: the word that the second of three clicks in xterm selects.
        desk.check("the log has the expected lines",
                   log.count("captured local clip (") in (9, 10)
                   and "[BrimloMac] skipped password-like text (9 chars)\n" in log)
        print(f"{desk.faults} faults; screenshots in {screenshots}")
        return 1 if desk.faults else 0


if __name__ == "__main__":
    sys.exit(main())
