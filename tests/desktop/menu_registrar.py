#!/usr/bin/python3 -B
"""A fake global menu bar: appends the owner and path of each exported menu as a line to a file.

    menu_registrar.py FILE
"""

import sys

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

NAME = "com.canonical.AppMenu.Registrar"
INTERFACE = f"""<node><interface name="{NAME}">
<method name="RegisterWindow"><arg type="u" direction="in"/><arg type="o" direction="in"/></method>
<method name="UnregisterWindow"><arg type="u" direction="in"/></method>
</interface></node>"""


def main():
    def call(_bus, sender, _path, _interface, method, arguments, invocation):
        if method == "RegisterWindow":
            with open(sys.argv[1], "a") as notes:
                notes.write(f"{sender} {arguments[1]}\n")
        invocation.return_value(None)

    def own(bus, _name):
        interface = Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0]
        bus.register_object("/com/canonical/AppMenu/Registrar", interface, call, None, None)

    Gio.bus_own_name(Gio.BusType.SESSION, NAME, 0, own, None, None)
    GLib.MainLoop().run()


if __name__ == "__main__":
    main()
