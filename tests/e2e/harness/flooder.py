"""Hostile hosts, each as a process of its own. A flooder never answers a request. It floods whoever asked last
with datagrams of four bytes, fewer than any reply has. A flooding master answers one request with many replies,
each nearly as large as a datagram can be."""

import select
import socket
import subprocess
import sys
import time

DATAGRAM = b"\xff\xff\xff\xff"
BURST = 20  # datagrams between two looks at the clock
PATIENCE_SECONDS = 15

REPLY_HEADER = b"\xff\xff\xff\xffgetserversResponse"
REPLY_RECORD = b"\\\x7f\x01\x02\x03\x69\x78"
SERVERS_OF_A_REPLY = 9280  # 65 kB


class HostileProcess:
    """Leaving the `with` block ends it. `first_line` holds the words that it prints when it can be asked."""

    def __init__(self, *arguments):
        command = [sys.executable, "-B", __file__, *map(str, arguments)]
        self._process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, bufsize=0)
        self.first_line = self._process.stdout.readline().split()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._process.kill()
        self._process.wait()
        self._process.stdin.close()
        self._process.stdout.close()

    def has_line(self, seconds=0):
        """Whether it has printed another line, or prints one within this time."""
        return bool(select.select([self._process.stdout], [], [], seconds)[0])

    def next_line(self, what):
        if not self.has_line(PATIENCE_SECONDS):
            raise TimeoutError(f"waited in vain for {what}")
        return self._process.stdout.readline().split()


class Flooder(HostileProcess):
    """`ports` are those of its servers, at 127.0.0.1."""

    def __init__(self, servers, datagrams_per_second):
        super().__init__("servers", servers, datagrams_per_second)
        self.ports = [int(word) for word in self.first_line]

    def next_request(self):
        """Waits until another server is asked; returns the time in seconds, its port, and how many datagrams have
        been sent until then."""
        when, port, sent = self.next_line("a request")
        return float(when), int(port), int(sent)


class FloodingMaster(HostileProcess):
    """`port` is that of the master, at 127.0.0.1. It answers one request."""

    def __init__(self, replies, replies_per_second):
        super().__init__("master", replies, replies_per_second)
        self.port = int(self.first_line[0])

    def wait_for_request(self):
        self.next_line("a request to the master")

    def has_finished(self):
        return self.has_line()

    def wait_for_end(self):
        self.next_line("the end of the master's replies")


def bound_socket():
    own = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
    own.bind(("127.0.0.1", 0))
    return own


def flood(servers, datagrams_per_second):
    sockets = [bound_socket() for _ in range(servers)]
    print(*(own.getsockname()[1] for own in sockets), flush=True)
    victim, due, sent = None, time.monotonic(), 0
    while True:
        ready, _, _ = select.select(sockets, [], [], 0 if victim else None)
        for own in ready:
            _, asker = own.recvfrom(65535)
            if victim != (own, asker):
                print(time.monotonic(), own.getsockname()[1], sent, flush=True)
            if victim is None:
                due = time.monotonic()
            victim = (own, asker)
        if victim and time.monotonic() >= due:
            own, asker = victim
            for _ in range(BURST):
                own.sendto(DATAGRAM, asker)
            sent += BURST
            due += BURST / datagrams_per_second


def answer_once(replies, replies_per_second):
    master = bound_socket()
    print(master.getsockname()[1], flush=True)
    _, asker = master.recvfrom(65535)
    print("asked", flush=True)
    reply = REPLY_HEADER + REPLY_RECORD * SERVERS_OF_A_REPLY
    start = time.monotonic()
    for number in range(replies):
        time.sleep(max(0, start + number / replies_per_second - time.monotonic()))
        master.sendto(reply, asker)
    print("finished", flush=True)
    sys.stdin.read()  # until the test ends


def main():
    attack = {"servers": flood, "master": answer_once}[sys.argv[1]]
    attack(*map(int, sys.argv[2:]))


if __name__ == "__main__":
    main()
