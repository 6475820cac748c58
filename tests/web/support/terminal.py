#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""A pseudo terminal: prints the path of its end for a program, and writes what each line of its input says in hexadecimal.
Both ends are closed with the input."""

import os
import pty
import sys
import tty

ours, theirs = pty.openpty()
tty.setraw(theirs)
print(os.ttyname(theirs), flush=True)
os.close(theirs)
for line in sys.stdin:
    os.write(ours, bytes.fromhex(line))
