"""A private network in which the tests can serve a website."""

import contextlib
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


def prepare_http_port():
    """Enters a new network namespace if possible, which child processes inherit. Returns whether
    port 80 of the loopback interface can be served. Call before starting threads."""
    # Root needs no user namespace, and cannot create one in a chroot.
    for namespaces in (CLONE_NEWNET, CLONE_NEWUSER | CLONE_NEWNET):
        if _succeeds_in_a_child(lambda: _enter(namespaces)):
            _enter(namespaces)
            return True
    return _can_bind_http_port()


def _succeeds_in_a_child(action):
    """Tries in a child process, because a process cannot leave a namespace."""
    child = os.fork()
    if child == 0:
        is_usable = False
        with contextlib.suppress(OSError):
            action()
            is_usable = _can_bind_http_port()
        os._exit(0 if is_usable else 1)
    return os.waitpid(child, 0)[1] == 0


def _enter(namespaces):
    user, group = os.geteuid(), os.getegid()
    if ctypes.CDLL(None, use_errno=True).unshare(namespaces):
        raise OSError(ctypes.get_errno(), "no new namespace")
    if namespaces & CLONE_NEWUSER:
        for file, text in (("setgroups", "deny"), ("uid_map", f"{user} {user} 1"),
                           ("gid_map", f"{group} {group} 1")):
            pathlib.Path("/proc/self", file).write_text(text)
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as handle:
        fcntl.ioctl(handle, SIOCSIFFLAGS, struct.pack("16sh14x", b"lo", IFF_UP))


def _can_bind_http_port():
    with socket.socket() as server:
        server.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
        try:
            server.bind(("127.0.0.1", HTTP_PORT))
            return True
        except OSError:
            return False
