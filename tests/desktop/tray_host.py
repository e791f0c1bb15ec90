"""What a desktop with StatusNotifierItems has on the session bus: their watcher, and a host, which
is told on standard input what to do and answers on standard output. It is the settings portal too.

  items        the items that are registered
  properties   what the first item says of itself, in one line
  click X Y    clicks it there
  dark, plain  the desktop's appearance changes: to a dark one, or to none in particular

usage: tray_host.py"""

import sys

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

WATCHER = "org.kde.StatusNotifierWatcher"
ITEM = "org.kde.StatusNotifierItem"
PORTAL = "org.freedesktop.portal.Settings"
INTERFACES = Gio.DBusNodeInfo.new_for_xml(f"""<node>
  <interface name="{WATCHER}">
    <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
    <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
  </interface>
  <interface name="{PORTAL}">
    <method name="Read"><arg type="s" direction="in"/><arg type="s" direction="in"/>
      <arg type="v" direction="out"/></method>
    <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
  </interface>
</node>""")

bus = Gio.bus_get_sync(Gio.BusType.SESSION)
items = []
scheme = 0


def on_call(_bus, _sender, _path, _interface, method, parameters, invocation):
    if method == "RegisterStatusNotifierItem":
        items.append(parameters[0])
        invocation.return_value(None)
    else:
        inner = GLib.Variant("v", GLib.Variant("u", scheme))
        invocation.return_value(GLib.Variant.new_tuple(GLib.Variant("v", inner)))


def on_get(*_):
    return GLib.Variant("b", True)


def ask_item(interface, method, parameters):
    return bus.call_sync(items[-1], "/StatusNotifierItem", interface, method, parameters, None,
                         Gio.DBusCallFlags.NONE, 5000, None)


def on_line(source, _condition):
    global scheme
    words = source.readline().split()
    if not words:
        loop.quit()
        return False
    if words[0] == "items":
        print(len(items), flush=True)
    elif words[0] == "properties":
        said = ask_item("org.freedesktop.DBus.Properties", "GetAll",
                        GLib.Variant("(s)", (ITEM,)))[0]
        sizes = [(*size, len(bytes(pixels))) for *size, pixels in said["IconPixmap"]]
        print(*(said[name] for name in ("Category", "Id", "Title", "Status", "ItemIsMenu")), sizes,
              flush=True)
    elif words[0] == "click":
        ask_item(ITEM, "Activate", GLib.Variant("(ii)", tuple(map(int, words[1:3]))))
        print("clicked", flush=True)
    else:
        scheme = {"dark": 1, "plain": 0}[words[0]]
        bus.emit_signal(None, "/org/freedesktop/portal/desktop", PORTAL, "SettingChanged",
                        GLib.Variant("(ssv)", ("org.freedesktop.appearance", "color-scheme",
                                               GLib.Variant("u", scheme))))
        print(words[0], flush=True)
    return True


bus.register_object("/StatusNotifierWatcher", INTERFACES.interfaces[0], on_call, on_get, None)
bus.register_object("/org/freedesktop/portal/desktop", INTERFACES.interfaces[1], on_call, None,
                    None)
for service in (WATCHER, "org.freedesktop.portal.Desktop"):
    Gio.bus_own_name_on_connection(bus, service, Gio.BusNameOwnerFlags.NONE, None, None)
GLib.io_add_watch(sys.stdin, GLib.IO_IN | GLib.IO_HUP, on_line)
loop = GLib.MainLoop()
loop.run()
