"""A fake settings daemon that publishes XSETTINGS on the display."""

import ctypes
import ctypes.util
import os
import struct

_xlib = ctypes.CDLL(ctypes.util.find_library("X11") or "libX11.so.6")
for _function in (_xlib.XOpenDisplay, _xlib.XInternAtom, _xlib.XDefaultRootWindow,
                  _xlib.XCreateSimpleWindow):
    _function.restype = ctypes.c_void_p

CURRENT_TIME = 0
CLIENT_MESSAGE = 33
STRUCTURE_NOTIFY_MASK = 1 << 17
REPLACE = 0


class ClientMessage(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("window", ctypes.c_ulong),
                ("message_type", ctypes.c_ulong), ("format", ctypes.c_int),
                ("data", ctypes.c_long * 5), ("padding", ctypes.c_long * 12)]


class SettingsManager:
    """Owns the XSETTINGS selection of the display until `end`."""

    def __init__(self, **settings):
        self._display = ctypes.c_void_p(_xlib.XOpenDisplay(os.environ["DISPLAY"].encode()))
        self._root = ctypes.c_ulong(_xlib.XDefaultRootWindow(self._display))
        self._window = ctypes.c_ulong(_xlib.XCreateSimpleWindow(
            self._display, self._root, -1, -1, 1, 1, 0, 0, 0))
        self._serial = 0
        self._settings = {}
        self.set(settings)
        self._take_over()

    def set(self, settings):
        """Changes integer settings; None removes one."""
        self._settings = {name: value for name, value in (self._settings | settings).items()
                          if value is not None}
        self._serial += 1
        value = self._encode()
        name = self._atom("_XSETTINGS_SETTINGS")
        _xlib.XChangeProperty(self._display, self._window, name, name, 8, REPLACE, value,
                              len(value))
        self._finish_requests()

    def end(self):
        _xlib.XCloseDisplay(self._display)

    def _take_over(self):
        selection = self._atom("_XSETTINGS_S0")
        _xlib.XSetSelectionOwner(self._display, selection, self._window, CURRENT_TIME)
        message = ClientMessage(type=CLIENT_MESSAGE, window=self._root.value,
                                message_type=self._atom("MANAGER").value, format=32)
        message.data[:3] = [CURRENT_TIME, selection.value, self._window.value]
        _xlib.XSendEvent(self._display, self._root, 0, STRUCTURE_NOTIFY_MASK,
                         ctypes.byref(message))
        self._finish_requests()

    def _encode(self):
        """Little endian; each setting gets the serial number of the whole."""
        encoded = struct.pack("<BxxxII", 0, self._serial, len(self._settings))
        for name, value in self._settings.items():
            padding = -len(name) % 4
            encoded += struct.pack(f"<BxH{len(name)}s{padding}xIi", 0, len(name), name.encode(),
                                   self._serial, value)
        return encoded

    def _atom(self, name):
        return ctypes.c_ulong(_xlib.XInternAtom(self._display, name.encode(), 0))

    def _finish_requests(self):
        _xlib.XSync(self._display, 0)
