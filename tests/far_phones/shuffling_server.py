#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""A real SFTP server whose answers come in another order: `shuffling_server.py SERVER SEED FILE`.

Answers are held back until everything that has been asked is answered, or some dozens are there, and then go out
shuffled. How many of each go out at another place than they came at is added to FILE, a line each time.
"""
import os
import random
import struct
import subprocess
import sys
import threading

MOST_HELD = 36

server, seed, log = sys.argv[1:]
shuffled = random.Random(int(seed))
process = subprocess.Popen([server], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
lock = threading.Lock()
unanswered = 0


class Packets:
    """Cuts a stream of bytes into the packets that are whole, lengths included."""

    def __init__(self):
        self.rest = b""

    def of(self, came):
        self.rest += came
        packets = []
        while len(self.rest) >= 4:
            end = 4 + struct.unpack(">I", self.rest[:4])[0]
            if len(self.rest) < end:
                break
            packets.append(self.rest[:end])
            self.rest = self.rest[end:]
        return packets


def ask():
    """What has been asked is counted before the server can answer it."""
    global unanswered
    packets = Packets()
    while came := os.read(0, 1 << 20):
        with lock:
            unanswered += len(packets.of(came))
        process.stdin.write(came)
        process.stdin.flush()
    process.stdin.close()


def send(held):
    order = list(range(len(held)))
    shuffled.shuffle(order)
    if order == sorted(order):
        order.reverse()
    moved = sum(place != number for place, number in enumerate(order))
    with open(log, "a") as file:
        file.write(f"{moved}\n")
    answers = b"".join(held[number] for number in order)
    while answers:
        answers = answers[os.write(1, answers):]


threading.Thread(target=ask, daemon=True).start()
held = []
packets = Packets()
while came := os.read(process.stdout.fileno(), 1 << 20):
    for packet in packets.of(came):
        held.append(packet)
        with lock:
            isAll = len(held) == unanswered
            if not isAll and len(held) < MOST_HELD:
                continue
            unanswered -= len(held)
        send(held)
        held = []
