#!/usr/bin/python3 -B
"""A fake clipboard manager of Plasma: writes the text that it is given to a file.

    klipper.py FILE
"""

import pathlib
import sys

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

INTERFACE = """<node><interface name="org.kde.klipper.klipper">
<method name="setClipboardContents"><arg type="s" direction="in"/></method>
</interface></node>"""


def main():
    file = pathlib.Path(sys.argv[1])

    def call(_bus, _sender, _path, _interface, _method, arguments, invocation):
        file.write_text(arguments[0])
        invocation.return_value(None)

    def own(bus, _name):
        interface = Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0]
        bus.register_object("/klipper", interface, call, None, None)

    Gio.bus_own_name(Gio.BusType.SESSION, "org.kde.klipper", 0, own, None, None)
    GLib.MainLoop().run()


if __name__ == "__main__":
    main()
