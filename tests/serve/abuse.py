#!/usr/bin/env python3
"""Starts the viewer's server and treats it badly.

usage: abuse.py PROGRAM DATA.mdf

Whatever is sent, an answer with the right status comes or the connection is closed, others are
served in the meantime, and the server neither grows nor ends.
"""

import json
import os
import random
import re
import signal
import socket
import subprocess
import sys
import time

PROGRAM, DATA = sys.argv[1:3]
SET = os.path.splitext(os.path.basename(DATA))[0]
# Sanitizers keep what was freed, and are slow.
SANITIZED = re.search(b"__[at]san_init", open(PROGRAM, "rb").read()) is not None
# A server that hangs takes longer than a machine that is busy.
MOST_SECONDS = 5
MOST_GROWTH = (400 if SANITIZED else 40) << 20
failures = []


def check(holds, what):
    if not holds:
        failures.append(what)
        print("FAILED:", what, file=sys.stderr)


class Server:
    def __init__(self, *options):
        self.log = open(os.environ.get("ABUSE_LOG", os.devnull), "ab")
        self.process = subprocess.Popen(
            [PROGRAM, DATA, "--port", "0", *options], stdout=subprocess.PIPE, stderr=self.log)
        self.address = self.process.stdout.readline().decode().strip()
        match = re.match(r"http://127\.0\.0\.1:(\d+)/", self.address)
        if not match:
            sys.exit("no address: " + self.address)
        self.port = int(match.group(1))

    def memory(self):
        with open(f"/proc/{self.process.pid}/status") as status:
            return int(re.search(r"VmRSS:\s+(\d+)", status.read()).group(1)) << 10

    def descriptors(self):
        return len(os.listdir(f"/proc/{self.process.pid}/fd"))

    def connect(self):
        connection = socket.create_connection(("127.0.0.1", self.port), timeout=15)
        connection.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        return connection

    def stop(self, number=signal.SIGTERM):
        begin = time.monotonic()
        self.process.send_signal(number)
        try:
            status = self.process.wait(10)
        except subprocess.TimeoutExpired:
            self.process.kill()
            status = None
        return status, time.monotonic() - begin


def request(target, method="GET", host="localhost", extra=""):
    return f"{method} {target} HTTP/1.1\r\nHost: {host}\r\n{extra}\r\n".encode("utf-8", "surrogateescape")


def answer(server, data, closes=True):
    """What comes for some bytes until the server closes: the statuses, and all of it."""
    got = b""
    with server.connect() as connection:
        try:
            connection.sendall(data)
            if closes:
                connection.shutdown(socket.SHUT_WR)
            while piece := connection.recv(1 << 16):
                got += piece
        except (ConnectionError, TimeoutError):
            pass
    return got


def status(server, data):
    match = re.match(rb"HTTP/1\.1 (\d{3}) ", answer(server, data))
    return int(match.group(1)) if match else None


def is_served(server, within=0.5):
    begin = time.monotonic()
    return status(server, request("/health")) == 200 and time.monotonic() - begin <= within * (
        MOST_SECONDS)


def statuses(server):
    page = "/" + SET
    for data, wanted in [
            (request("/"), 200),
            (request(page), 200),
            (request(page, "HEAD"), 200),
            (request(page + "?groups=99&var=nothing"), 200),
            (request("/" + "a" * 9000), 414),
            (request(page + "?find=" + "a" * 100000), 414),
            (request("/", extra="X: " + "a" * 9000 + "\r\n"), 431),
            (request("/", extra="X: y\r\n" * 100000), 431),
            (request("/", "POST", extra="Content-Length: 5\r\n") + b"hello", 413),
            (request("/", "POST"), 405),
            (request("/", "OPTIONS"), 405),
            (request("/", "CONNECT"), 405),
            (request("/", extra="Content-Length: 5\r\n") + b"hello", 413),
            (request("/", extra="Transfer-Encoding: chunked\r\n") + b"5\r\nhello\r\n0\r\n\r\n", 413),
            (request("/", extra="Content-Length: 99999999999999999999\r\n"), 400),
            (request("/../etc/passwd"), 404),
            (request(page + "/../../etc/passwd"), 404),
            (request("/%2e%2e/etc/passwd"), 404),
            (request("/%2e%2e%2fetc%2fpasswd"), 404),
            (request("/assets/../../etc/passwd"), 404),
            (request("/assets/%2e%2e/main.cpp"), 404),
            (request("/a%00b"), 400),
            (request(page + "?var=%00"), 400),
            (request("/%ff"), 400),
            (request("/\udcff"), 400),
            (request("http://localhost/"), 400),
            (request("localhost"), 400),
            (request("*"), 400),
            (request("/", host="evil.example"), 403),
            (request("/", host="localhost.evil.example"), 403),
            (request("/", host=""), 400),
            (request("/", extra="Host: evil.example\r\n"), 400),
            (b"GET / HTTP/1.1\r\n\r\n", 400),
            (b"GET / HTTP/2.0\r\nHost: localhost\r\n\r\n", 505),
            (b"GET /\r\n\r\n", 400),
            (b"\x16\x03\x01\x02\x00\x01\x00\x01\xfc\x03\x03", 400),
            (b"GET / HTTP/1.1\nHost: localhost\n\n", 505),
            (b"GET  / HTTP/1.1\r\nHost: localhost\r\n\r\n", 400),
            (b"\0" * 100, 400),
    ]:
        got = status(server, data)
        # A method that is refused needs no look at what it brings.
        also = {405} if data.startswith(b"POST") else set()
        check(got in {wanted} | also, f"{data[:60]} gives {got}, not {wanted}")


def huge_heads(server):
    before = server.memory()
    with server.connect() as connection:
        sent = 0
        try:
            connection.sendall(b"GET / HTTP/1.1\r\nX: ")
            while sent < 96 << 20:
                connection.sendall(b"a" * (1 << 16))
                sent += 1 << 16
        except OSError:
            pass
    check(sent < 16 << 20, f"{sent >> 20} MB of a head are taken")
    check(server.memory() - before < MOST_GROWTH, "the server holds a huge head")


def stalled_clients(server):
    stalled = []
    for i in range(500):
        connection = server.connect()
        connection.sendall(request("/" + SET)[:i % 40])
        stalled.append(connection)
    check(is_served(server), "stalled clients keep others waiting")
    # One who asks for much and takes nothing of it.
    for _ in range(20):
        connection = server.connect()
        connection.sendall(request("/" + SET + "/map.svg?level=2") * 200)
        stalled.append(connection)
    check(is_served(server, 1), "clients that do not read keep others waiting")
    for connection in stalled:
        connection.close()
    time.sleep(0.3)
    check(server.descriptors() < 60, f"{server.descriptors()} descriptors stay open")


def cut_requests(server):
    whole = request("/" + SET + "/1?var=2&groups=3", extra="Accept-Encoding: gzip\r\n")
    for i in range(len(whole)):
        got = status(server, whole[:i])
        check(got in (None, 400), f"a request cut after {i} bytes gives {got}")
    # In two pieces it is one request all the same.
    for i in range(1, len(whole), 7):
        with server.connect() as connection:
            connection.sendall(whole[:i])
            time.sleep(0.002)
            connection.sendall(whole[i:])
            check(connection.recv(15) == b"HTTP/1.1 200 OK", f"in two pieces, cut at {i}")


def pipelined_requests(server):
    got = answer(server, request("/health") * 100 + request("/" + SET) * 50 + request("/none"))
    check(got.count(b"HTTP/1.1 200 OK") == 150 and got.count(b"HTTP/1.1 404 ") == 1,
          "requests sent one behind the other have their answers")


def mutated_requests(server, count):
    seeds = [
        request("/" + SET + "?var=2&groups=4&palette=viridis&intervals=natural&level=2"),
        request("/" + SET + "/48/map.gif?level=2&size=300x200&box=48,1&outline=48,3"),
        request("/" + SET + "/48/at.json?x=20&y=30&key=48,1&way=left"),
        request("/" + SET + "/areas.csv?bounds=1,2,3&calc=ratio&var2=1", "HEAD",
                extra="If-None-Match: \"a\"\r\nAccept-Encoding: gzip;q=0.5\r\n"),
        request("/assets/style.css?v=1", extra="Connection: close\r\n"),
    ]
    words = [b"%", b"%00", b"%2e%2e/", b"/", b"?", b"&", b"=", b",", b"-", b"99999999999", b"\r\n",
             b"\0", b"\xff", b" ", b"Content-Length: 1\r\n", b"HTTP/1.1", b"nan", b"1e308", b":"]
    generator = random.Random(7)
    before = None
    begin = time.monotonic()
    for i in range(count):
        data = bytearray(generator.choice(seeds))
        for _ in range(generator.randint(1, 4)):
            at = generator.randrange(len(data) + 1)
            kind = generator.randrange(4)
            if kind == 0 and at < len(data):
                data[at] = generator.randrange(256)
            elif kind == 1:
                data[at:at] = generator.choice(words)
            elif kind == 2:
                del data[at:at + generator.randint(1, 8)]
            else:
                other = generator.choice(seeds)
                data[at:] = other[generator.randrange(len(other)):]
            if not data:
                break
        got = status(server, bytes(data))
        check(got is None or got < 500 or got in (501, 505), f"{bytes(data)} gives {got}")
        check(server.process.poll() is None, f"the server ends after {bytes(data)}")
        if server.process.poll() is not None:
            return
        if i == count // 10:
            before = server.memory()
    print(f"{count} mutated requests in {time.monotonic() - begin:.1f} s", file=sys.stderr)
    check(server.memory() - before < MOST_GROWTH,
          f"the server grows from {before >> 20} to {server.memory() >> 20} MB")


def few_connections():
    server = Server("--connections", "20", "--log", "none")
    held = [server.connect() for _ in range(60)]
    check(is_served(server), "idle connections make room")
    for connection in held:
        connection.close()
    server.stop()


def endings():
    for number in (signal.SIGTERM, signal.SIGINT):
        server = Server("--log", "json")
        idle = server.connect()
        idle.sendall(b"GET / HT")
        under_way = server.connect()
        under_way.sendall(request("/" + SET + "/map.gif?size=1500x1500"))
        time.sleep(0.02)
        status, seconds = server.stop(number)
        check(status == 0, f"ended by a signal, the status is {status}")
        check(seconds < MOST_SECONDS, f"to end takes {seconds:.2f} s")
        got = under_way.recv(15)
        check(got == b"HTTP/1.1 200 OK", "what is under way is answered before the end")
    # Nobody waits for a long drawing.
    server = Server()
    long = server.connect()
    long.sendall(b"".join(request(f"/{SET}/map.svg?size={4000 - i}x4000&level=2") for i in range(99)))
    time.sleep(0.05)
    status, seconds = server.stop()
    check(status == 0 and seconds < MOST_SECONDS, f"{status} after {seconds:.2f} s")


def logs():
    read, write = os.pipe()
    process = subprocess.Popen([PROGRAM, DATA, "--port", "0", "--log", "json"],
                               stdout=subprocess.PIPE, stderr=write)
    os.close(write)
    address = process.stdout.readline().decode()
    with socket.create_connection(("127.0.0.1", int(address.rsplit(":", 1)[1].strip("/\n")))) as one:
        one.sendall(request("/a\"b\u202e%0a", extra="Connection: close\r\n"))
        while one.recv(1 << 16):
            pass
    process.terminate()
    process.wait(10)
    with os.fdopen(read, encoding="utf-8") as lines:
        entries = [json.loads(line) for line in lines]
    check(len(entries) == 1 and entries[0]["status"] == 400 and entries[0]["method"] == "GET" and
          "\u202e" not in entries[0]["target"], f"the log is {entries}")


def refusals():
    taken = socket.create_server(("127.0.0.1", 0))
    port = str(taken.getsockname()[1])
    for arguments, wanted, told in [([DATA, "--port", port], 1, port),
                                    (["/nowhere.mdf"], 1, "/nowhere.mdf"),
                                    ([], 2, "DATA"),
                                    ([DATA, "--host", "0.0.0.0"], 2, "--allow-remote"),
                                    ([DATA, "--host", "example.org"], 2, "--host"),
                                    ([DATA, "--port", "65536"], 2, "--port"),
                                    ([DATA, "--base-path", "/a/../b"], 2, "--base-path"),
                                    ([DATA, "--threads", "0"], 2, "--threads"),
                                    ([DATA, "--prot", "1"], 2, "--port")]:
        done = subprocess.run([PROGRAM, *arguments], capture_output=True, text=True, timeout=60)
        check(done.returncode == wanted and told in done.stderr and not done.stdout,
              f"{arguments}: {done}")
    shown = subprocess.run([PROGRAM, "--help"], capture_output=True, text=True, timeout=60)
    check(shown.returncode == 0 and "vexel serve counties.mdf" in shown.stdout, "--help")


def behind_a_base_path():
    server = Server("--base-path", "maps/", "--server-name", "maps.example.org", "--log", "none")
    check(server.address.endswith("/maps/"), server.address)
    for target, wanted in [("/maps", 200), ("/maps/", 200), (f"/maps/{SET}", 200), (f"/{SET}", 404),
                           ("/", 404), ("/mapsx", 404), ("/maps/health", 200)]:
        got = status(server, request(target, host="maps.example.org"))
        check(got == wanted, f"{target} gives {got}")
    server.stop()


def main():
    refusals()
    server = Server("--log", "text")
    statuses(server)
    huge_heads(server)
    stalled_clients(server)
    cut_requests(server)
    pipelined_requests(server)
    mutated_requests(server, 10_000)
    check(is_served(server), "the server still serves")
    ended = server.stop()
    check(ended[0] == 0, f"the server ends with {ended[0]}")
    few_connections()
    endings()
    logs()
    behind_a_base_path()
    sys.exit(1 if failures else 0)


main()
