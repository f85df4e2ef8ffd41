"""A network that no other program shares: one loopback interface, which can go away and come back."""

import ctypes
import fcntl
import os
import socket
import struct
from pathlib import Path

CLONE_NEWNET = 0x40000000
SIOCSIFFLAGS = 0x8914
IFF_UP = 1

_libc = ctypes.CDLL(None, use_errno=True)


def _check(result):
    if result != 0:
        error = ctypes.get_errno()
        raise OSError(error, os.strerror(error))


class IsolatedNetwork:
    """Programs join it by `join` in their process, before they begin. It lasts as long as one of them, or this."""

    def __init__(self):
        """Raises OSError where this process may not make networks."""
        self._own = os.open("/proc/self/ns/net", os.O_RDONLY)
        _check(_libc.unshare(CLONE_NEWNET))
        self._isolated = os.open("/proc/self/ns/net", os.O_RDONLY)
        # A socket stays in the network that it was made in, so the interface is reached from everywhere.
        self._socket = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        self._enter(self._own)
        self.set_up(True)

    def set_up(self, is_up):
        """Brings the interface up or takes it down."""
        fcntl.ioctl(self._socket, SIOCSIFFLAGS, struct.pack("16sH14x", b"lo", IFF_UP if is_up else 0))

    def limit_ports(self, count):
        """From now on the system has this number of ports for sockets that do not name one."""
        first = 50000
        self._enter(self._isolated)
        try:
            Path("/proc/sys/net/ipv4/ip_local_port_range").write_text(f"{first} {first + count - 1}")
        finally:
            self._enter(self._own)

    def join(self):
        self._enter(self._isolated)

    def close(self):
        self._socket.close()
        os.close(self._isolated)
        os.close(self._own)

    @staticmethod
    def _enter(network):
        _check(_libc.setns(network, CLONE_NEWNET))
