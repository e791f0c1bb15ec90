"""A text field in some application, for the program to paste into. At every change it prints the
whole text, as a line of JSON.

usage: field.py gtk|qt|terminal"""

import json
import os
import sys

APPLICATIONS = {
    "xterm": ("xterm", "-T", "xterm", "-e"),
    "VTE": ("xfce4-terminal", "--disable-server", "-T", "VTE", "-e")}


class Field:
    """A field in front, with the keyboard. Its window's title is its kind."""

    def __init__(self, desk, kind):
        self.desk = desk
        self.kind = kind
        self.output = desk.home / kind
        self.output.unlink(missing_ok=True)
        self.output.touch()
        if kind in APPLICATIONS:
            desk.env["FIELD_OUTPUT"] = str(self.output)
            self.process = desk.spawn(*APPLICATIONS[kind],
                                      f"/usr/bin/python3 {__file__} terminal")
        else:
            self.process = desk.spawn("/usr/bin/python3", __file__, kind,
                                      stdout=self.output.open("w"))
        desk.window(kind)
        desk.wait(lambda: self.text() is not None)

    def text(self):
        lines = self.output.read_text().split("\n")[:-1]  # whole ones
        return json.loads(lines[-1]) if lines else None

    def close(self):
        self.desk.end(self.process)


class Browser(Field):
    """The text area of a page in a browser."""

    def __init__(self, desk):
        self.desk = desk
        self.process = desk.browse("")
        self.window = desk.window("browser")

    def text(self):
        title = self.desk.run("xdotool", "getwindowname", self.window).stdout.decode()
        return json.loads(title.rsplit(" - ", 1)[0].partition(" ")[2])


def say(text):
    print(json.dumps(text), flush=True)


def gtk():
    import gi
    gi.require_version("Gtk", "3.0")
    from gi.repository import Gtk
    window = Gtk.Window(title=sys.argv[1])
    window.set_default_size(400, 80)
    view = Gtk.TextView()
    view.get_buffer().connect("changed", lambda buffer: say(buffer.get_property("text")))
    window.add(view)
    window.show_all()
    say("")
    Gtk.main()


def qt():
    from PyQt5.QtWidgets import QApplication, QLineEdit
    application = QApplication(["field"])
    line = QLineEdit()
    line.setWindowTitle(sys.argv[1])
    line.textChanged.connect(say)
    line.show()
    say("")
    application.exec_()


def terminal():
    """Runs in a terminal, so it says what it was typed into a file."""
    import tty
    tty.setraw(0)
    text = b""
    sys.stdout = open(os.environ["FIELD_OUTPUT"], "w")
    say("")
    while data := os.read(0, 65536):
        text += data
        say(text.decode(errors="replace"))


if __name__ == "__main__":
    {"gtk": gtk, "qt": qt, "terminal": terminal}[sys.argv[1]]()
