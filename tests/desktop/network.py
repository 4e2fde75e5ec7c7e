"""A network of the tests' own where the machine's does not let them be a website."""

import ctypes
import fcntl
import os
import pathlib
import socket
import struct

HTTP_PORT = 80
CLONE_NEWUSER = 0x10000000
CLONE_NEWNET = 0x40000000
SIOCSIFFLAGS = 0x8914
IFF_UP = 1


def prepare_for_a_website():
    """Leaves this process, and all that it starts from now on, with port 80 of the loopback free
    for it, if need be in a network namespace of its own. To be called before there are threads."""
    if _can_be_a_website():
        return
    user, group = os.geteuid(), os.getegid()
    if ctypes.CDLL(None, use_errno=True).unshare(CLONE_NEWUSER | CLONE_NEWNET):
        raise OSError(ctypes.get_errno(), "neither port 80 nor a network namespace can be had")
    for file, text in (("setgroups", "deny"), ("uid_map", f"{user} {user} 1"),
                       ("gid_map", f"{group} {group} 1")):
        pathlib.Path("/proc/self", file).write_text(text)
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as handle:
        fcntl.ioctl(handle, SIOCSIFFLAGS, struct.pack("16sh14x", b"lo", IFF_UP))


def _can_be_a_website():
    with socket.socket() as server:
        server.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
        try:
            server.bind(("127.0.0.1", HTTP_PORT))
            return True
        except OSError:
            return False
