#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""An SFTP server that lies, in the place of ssh: `false_server.py LIE …`, whatever else follows."""
import os
import struct
import sys

lie = sys.argv[1]
stdin, stdout = sys.stdin.buffer, sys.stdout.buffer


def send(kind, fields):
    stdout.write(struct.pack(">IB", len(fields) + 1, kind) + fields)
    stdout.flush()


def text(value):
    return struct.pack(">I", len(value)) + value


def receive():
    header = stdin.read(4)
    if len(header) < 4:
        sys.exit(0)
    packet = stdin.read(struct.unpack(">I", header)[0])
    return packet[0], packet[1:5], packet[5:]


FOLDER, FILE = 0o040755, 0o100644
STATUS, HANDLE, DATA, NAME, ATTRS = 101, 102, 103, 104, 105


def attributes(mode, size=10):
    return struct.pack(">IQII", 1 | 4, size, mode, 0)[:-4]


def status(code):
    return struct.pack(">I", code) + text(b"\x1b]0;owned\x07 refused\nby a liar") + text(b"en")


def answer(kind, number, fields):
    path = fields[4:4 + struct.unpack(">I", fields[:4])[0]] if len(fields) >= 4 else b""
    if kind in (7, 17):  # lstat, stat
        if lie == "huge" and path.endswith(b".plist"):
            return send(ATTRS, number + attributes(FILE, 1 << 62))
        isFile = path.endswith((b".plist", b".strings"))
        return send(ATTRS, number + attributes(FILE if isFile else FOLDER))
    if kind == 8:
        return send(ATTRS, number + attributes(FILE, 1 << 32 if lie == "growing" else 10))
    if kind in (3, 11):  # open, opendir
        return send(HANDLE, number + text(b"h"))
    if kind == 5:  # read
        if lie == "growing":
            return send(DATA, number + text(b"x" * 32768))
        if lie == "long-data":
            return send(DATA, number + text(b"x" * 200000))
        return send(DATA, number + text(b"\x1b[2Jnothing"))
    if kind == 12:  # readdir
        names = [b"../../etc", b"a/b", b"nul\0byte", b"\x1b[31m.app", b"", b".", b".."]
        if lie == "endless":
            names = [os.urandom(8).hex().encode() + b".app" for _ in range(1000)]
        entries = b"".join(text(name) + text(b"") + attributes(FOLDER) for name in names)
        if lie != "endless" and answer.listed:
            return send(STATUS, number + status(1))
        answer.listed = True
        return send(NAME, number + struct.pack(">I", len(names)) + entries)
    answer.listed = False
    send(STATUS, number + status(0 if kind == 4 else 4))


answer.listed = False

if "exec /bin/sh" in sys.argv:
    sys.exit("there is no shell here")
if lie == "silent":
    stdin.read()
    sys.exit(0)
if lie == "noise":
    while True:
        stdout.write(os.urandom(65536))
stdin.read(9)
send(2, struct.pack(">I", 3))
while True:
    kind, number, fields = receive()
    if lie == "wrong-ids":
        number = struct.pack(">I", struct.unpack(">I", number)[0] ^ 0x5A5A)
    if lie == "length":
        stdout.write(b"\xff\xff\xff\xff" + b"x" * 1000)
        stdout.flush()
        continue
    if lie == "cut-packet":
        stdout.write(struct.pack(">IB", 100, ATTRS))
        stdout.flush()
        sys.exit(0)
    if lie == "wrong-types":
        send(DATA, number + text(b"surprise"))
        continue
    answer(kind, number, fields)
