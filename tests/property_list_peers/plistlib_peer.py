# SPDX-License-Identifier: MIT
"""Reads property lists with plistlib, for a program at the other end of the standard streams.

A line of hexadecimal digits is a property list. The answer is a line too: "-" when plistlib does not
read it; else the value, what plistlib writes of it as XML and what as a binary property list, in
hexadecimal digits, with blanks between them. "-" stands for what it cannot write.

A value is a letter for its kind, a length or count in four bytes, and then so many bytes or members.
"""
import datetime
import plistlib
import struct
import sys

EPOCH = datetime.datetime(2001, 1, 1)

# Property lists nest up to 512 deep.
sys.setrecursionlimit(10000)


def encoded(value):
    def tagged(kind, content):
        return kind + struct.pack(">I", len(content)) + content

    def members(kind, values):
        values = list(values)
        return kind + struct.pack(">I", len(values)) + b"".join(encoded(each) for each in values)

    if value is None:
        return tagged(b"n", b"")
    if isinstance(value, bool):
        return tagged(b"b", b"\1" if value else b"\0")
    if isinstance(value, int):
        return tagged(b"i", str(value).encode())
    if isinstance(value, float):
        return tagged(b"r", struct.pack(">d", value))
    if isinstance(value, str):
        return tagged(b"s", value.encode(errors="replace"))
    if isinstance(value, datetime.datetime):
        return tagged(b"t", struct.pack(">d", (value - EPOCH).total_seconds()))
    if isinstance(value, plistlib.UID):
        return tagged(b"u", str(value.data).encode())
    if isinstance(value, bytes):
        return tagged(b"x", value)
    if isinstance(value, list):
        return members(b"a", value)
    return members(b"d", (part for entry in value.items() for part in entry))


def written(value, form):
    try:
        return plistlib.dumps(value, fmt=form).hex()
    except Exception:
        return "-"


def answer(data):
    try:
        value = plistlib.loads(data)
        # It reads containers that hold themselves; going through one of these comes to no end.
        read = encoded(value).hex()
    except Exception:
        return "-"
    return " ".join([read, written(value, plistlib.FMT_XML), written(value, plistlib.FMT_BINARY)])


for line in sys.stdin:
    print(answer(bytes.fromhex(line)), flush=True)
