"""A text field that says what stands in it: at every change a line with the time and the text.

usage: field.py gtk-entry|gtk-view|qt-line|terminal"""

import json
import os
import sys
import time


def say(text):
    print(time.monotonic(), json.dumps(text), flush=True)


def gtk(make):
    import gi
    gi.require_version("Gtk", "3.0")
    from gi.repository import Gtk
    window = Gtk.Window(title="field")
    window.set_default_size(400, 80)
    window.add(make(Gtk))
    window.show_all()
    window.connect("destroy", Gtk.main_quit)
    say("")
    Gtk.main()


def gtk_entry(toolkit):
    entry = toolkit.Entry()
    entry.connect("changed", lambda changed: say(changed.get_text()))
    return entry


def gtk_view(toolkit):
    view = toolkit.TextView()
    view.get_buffer().connect("changed", lambda buffer: say(
        buffer.get_text(buffer.get_start_iter(), buffer.get_end_iter(), False)))
    return view


def qt_line():
    from PyQt5.QtWidgets import QApplication, QLineEdit
    application = QApplication(["field"])
    line = QLineEdit()
    line.setMaxLength(100_000_000)
    line.setWindowTitle("field")
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
    {"gtk-entry": lambda: gtk(gtk_entry), "gtk-view": lambda: gtk(gtk_view), "qt-line": qt_line,
     "terminal": terminal}[sys.argv[1]]()
