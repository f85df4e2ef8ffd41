"""A hostile host as a process of its own: it never answers, and floods whoever asked last with datagrams of four
bytes, fewer than any reply has."""

import select
import socket
import subprocess
import sys
import time

DATAGRAM = b"\xff\xff\xff\xff"
BURST = 20  # datagrams between two looks at the clock
PATIENCE_SECONDS = 15


class Flooder:
    """Leaving the `with` block ends it. `ports` are those of its servers, at 127.0.0.1."""

    def __init__(self, servers, datagrams_per_second):
        command = [sys.executable, "-B", __file__, str(servers), str(datagrams_per_second)]
        self._process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, bufsize=0)
        self.ports = [int(word) for word in self._process.stdout.readline().split()]

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._process.kill()
        self._process.wait()
        self._process.stdin.close()
        self._process.stdout.close()

    def next_request(self):
        """Waits until another server is asked; returns the time in seconds, its port, and how many datagrams have
        been sent until then."""
        ready, _, _ = select.select([self._process.stdout], [], [], PATIENCE_SECONDS)
        if not ready:
            raise TimeoutError("waited in vain for a request")
        when, port, sent = self._process.stdout.readline().split()
        return float(when), int(port), int(sent)


def flood(sockets, datagrams_per_second):
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


def main():
    servers, datagrams_per_second = map(int, sys.argv[1:])
    sockets = []
    for _ in range(servers):
        sockets.append(socket.socket(socket.AF_INET, socket.SOCK_DGRAM))
        sockets[-1].bind(("127.0.0.1", 0))
    print(*(own.getsockname()[1] for own in sockets), flush=True)
    flood(sockets, datagrams_per_second)


if __name__ == "__main__":
    main()
