#!/usr/bin/env python3
"""Draws what commands print on a terminal, as SVG: terminal_picture.py COMMAND... >PICTURE

Each COMMAND is run by bash on a terminal of its own, so that it colours its output, and shown behind
a prompt.
"""

import html
import itertools
import os
import pty
import re
import sys
import unicodedata

CELL_WIDTH, LINE_HEIGHT, MARGIN = 8.4, 20, 18
COLOURS = {"": "#d8dee9", "1": "#ffffff", "2": "#8792a2", "31": "#ff8a80", "32": "#a5d6a7",
           "33": "#ffd180", "36": "#80deea"}
ESCAPE = re.compile(r"\x1b\[([0-9;]*)m")


def output_of(command):
    """What `command` writes to a terminal. A failure that was not asked for would be drawn too."""
    child, terminal = pty.fork()
    if child == 0:
        os.execvp("bash", ["bash", "-c", command])
    written = b""
    try:
        while block := os.read(terminal, 4096):
            written += block
    except OSError:
        pass  # how a terminal says that its last program has ended
    os.waitpid(child, 0)
    return written.decode().replace("\r\n", "\n").rstrip("\n").split("\n")


def cells(text):
    """How many columns of a terminal `text` takes."""
    return sum(0 if unicodedata.combining(unit) else
               2 if unicodedata.east_asian_width(unit) in "WF" else 1 for unit in text)


def drawn(line, y):
    """The elements of one line. Each word stands in its own columns, whatever the fonts."""
    column, colour, found = 0, "", []
    for index, piece in enumerate(ESCAPE.split(line)):
        if index % 2 == 1:
            colour = "" if piece in ("", "0") else piece
            continue
        weight = ' font-weight="bold"' if colour == "1" else ""
        for _, units in itertools.groupby(piece, lambda unit: (unit.isspace(), cells(unit))):
            word = "".join(units)
            if not word.isspace():
                found.append(f'<text x="{MARGIN + column * CELL_WIDTH:.1f}" y="{y}" '
                             f'textLength="{cells(word) * CELL_WIDTH:.1f}" '
                             f'fill="{COLOURS[colour]}"{weight}>{html.escape(word)}</text>')
            column += cells(word)
    return found


def main(commands):
    lines = []
    for command in commands:
        lines += ([""] if lines else []) + [f"\x1b[32m$\x1b[0m \x1b[1m{command}\x1b[0m"]
        lines += output_of(command)
    width = 2 * MARGIN + CELL_WIDTH * max(cells(ESCAPE.sub("", line)) for line in lines)
    height = 2 * MARGIN + LINE_HEIGHT * len(lines)
    print(f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width:.0f} {height}" '
          f'width="{width:.0f}" height="{height}" role="img" aria-label="A terminal">')
    print('<rect width="100%" height="100%" rx="8" fill="#1f2733"/>')
    print('<g font-family="DejaVu Sans Mono, Menlo, Consolas, monospace" font-size="14">')
    for number, line in enumerate(lines):
        print("\n".join(drawn(line, MARGIN + LINE_HEIGHT * number + 14)))
    print("</g>\n</svg>")


main(sys.argv[1:])
