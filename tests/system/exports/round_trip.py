# SPDX-License-Identifier: MIT
"""Makes random tables of nasty texts, exports them in each format, reads the exports back with Python's own modules, and
compares what comes back with what was put in. Prints the first difference, with its seed, and ends with status 1.

usage: round_trip.py PROGRAM FOLDER FIRST_SEED CASES
"""

import csv
import io
import json
import os
import random
import sqlite3
import subprocess
import sys

sys.path.insert(0, os.path.dirname(__file__) + "/../../support")
sys.dont_write_bytecode = True

import workbook

NASTY = [b"", b" ", b"  a ", b"=1+2", b"+1", b"-1", b"@x", b"00123", b"1e5", b"\"", b"a\"b", b"a,b", b"a;b", b"'q", b"\t",
         b"\rx", b"a\rb", b"\x01", b"\x00", b"a\x00b", b"\x1f", b"\x7f", b"caf\xc3\xa9", b"caf\xe9", b"\xff\xfe", b"\xed\xa0\x80",
         b"\xc0\xaf", b"\xf4\x90\x80\x80", b"\xf0\x9f\x94\xa7", b"\xef\xbf\xbe", b"\xef\xbf\xbf", b"\xef\xbf\xbd", b"_x0041_",
         b"_x005F_", b"_x00e9_", b"__x0001_", b"<b>&amp;</b>", b"]]>", b"<!--", b"NULL", b"#N/A", b"TRUE", b"2026-11-21",
         b"21/11/2026", b"<0.5", b"\xe2\x80\xa8", b"\xc2\x85", b"%", b"\\n"]
NUMBERS = [("23.40", 23.4), ("-0.5", -0.5), ("1e5", 100000.0), ("0", 0), ("1000000", 1000000), ("0.000001", 0.000001),
           ("123456789012345", 123456789012345), ("9007199254740993", None), ("0.12345678901234567", None), ("1e400", None),
           ("2.5E-3", 0.0025), ("99999999999999999999", None)]
UNITS = ["", "%", "°C", "mm/s"]


class Difference(Exception):
    pass


def text_of(chance):
    return b"".join(chance.choice(NASTY) for _ in range(chance.choice([1, 1, 1, 2, 3])))


def cell_of(chance):
    """Returns a field, its number (None for none that is exact) and its unit; (field, None, None) if it is a text."""
    if chance.random() < 0.25:
        return chance.choice([(b"", None, None), (b"dry", None, None), (b"00123", None, None), (b"<0.5", None, None)])
    number, value = chance.choice(NUMBERS)
    unit = chance.choice(UNITS)
    return (number + " " + unit).strip().encode(), (number, value), unit


def table_of(seed):
    """Returns rows of (text, number cell, text); each row ends in a field that no line end is part of."""
    chance = random.Random(seed)
    return [(text_of(chance), cell_of(chance), text_of(chance)) for _ in range(chance.randint(0, 12))]


def bytes_of(rows):
    lines = [b"A|N|B|End"] + [b"|".join((first, cell[0], last, b"e")) for first, cell, last in rows]
    return b"\n".join(lines) + b"\n"


def readable(text):
    """What stands for a text where there are only characters: U+FFFD for each byte that is no UTF-8."""
    made = ""
    while text:
        for length in range(4, 0, -1):
            try:
                made += text[:length].decode()
                text = text[length:]
                break
            except UnicodeDecodeError:
                continue
        else:
            made += "\ufffd"
            text = text[1:]
    return made


def same(what, expected, found):
    if expected != found:
        raise Difference("%s: expected %r, found %r" % (what, expected, found))


def compare_csv(rows, data):
    found = list(csv.reader(io.StringIO(data.decode("latin-1"), newline="")))
    same("columns", ["A", "N", "N_unit", "B", "End"], found[0])
    same("rows", len(rows), len(found) - 1)
    for (first, (field, number, unit), last), row in zip(rows, found[1:]):
        cells = [field, b""] if number is None else [number[0].encode(), unit.encode()]
        same("row", [each.decode("latin-1") for each in (first, *cells, last, b"e")], row)


def compare_jsonl(rows, lines):
    same("rows", len(rows), len(lines))
    for (first, (field, number, unit), last), line in zip(rows, lines):
        row = json.loads(line, parse_float=str, parse_int=str)
        same("text", readable(first) or None, row["A"])
        same("text", readable(last) or None, row["B"])
        same("number", number[0] if number else field.decode() or None, row["N"])
        same("unit", unit or None, row["N_unit"])


def compare_sheet(rows, found):
    same("rows", len(rows) + 1, len(found))
    same("columns", {"A": "A", "B": "N", "C": "N_unit", "D": "B", "E": "End"}, found[0])
    for (first, (field, number, unit), last), row in zip(rows, found[1:]):
        same("text", readable(first) or None, row.get("A"))
        same("text", readable(last) or None, row.get("D"))
        same("unit", unit or None, row.get("C"))
        if number is None or number[1] is None:
            same("text", (number[0] if number else field.decode()) or None, row.get("B"))
        else:
            value, shown = row["B"]
            same("number", number[1], value)
            mantissa, _, exponent = number[0].lower().partition("e")
            places = len(mantissa.partition(".")[2])
            same("number format", ("0." + "0" * places).rstrip(".") + ("E+0" if exponent else ""), shown)


def compare_table(rows, found):
    same("rows", len(rows), len(found))
    for (first, (field, number, unit), last), row in zip(rows, found):
        for text, cell in ((first, row[0]), (last, row[3])):
            whole = "\ufffd" not in readable(text).replace("\ufffd", "", text.count(b"\xef\xbf\xbd")) and b"\0" not in text
            same("text", text.decode() if whole else text, cell)
        same("unit", unit, row[2])
        if number is None:
            same("text", field.decode() or None, row[1])
        elif number[0].isdigit() and int(number[0]) < 2 ** 63:
            same("number", int(number[0]), row[1])
        else:
            same("number", number[0] if number[1] is None else number[1], row[1])


def main():
    program, folder, first_seed, cases = sys.argv[1], sys.argv[2], int(sys.argv[3]), int(sys.argv[4])
    seeds = range(first_seed, first_seed + cases)
    tables = {seed: table_of(seed) for seed in seeds}
    for seed in seeds:
        with open("%s/t%d.txt" % (folder, seed), "wb") as file:
            file.write(bytes_of(tables[seed]))

    out, root = folder + "/out", folder + "/root"
    os.mkdir(out)
    os.mkdir(root)

    def export(*words):
        done = subprocess.run([program, "--root", root, "--numbers", "N", *words], capture_output=True)
        if done.returncode not in (0, 5):
            raise Difference("%s ended with %d: %s" % (words[:2], done.returncode, done.stderr[-1000:]))
        return done.stdout

    seed = first_seed
    try:
        sources = ["%s/t%d.txt" % (folder, each) for each in seeds]
        lines = export("--format", "jsonl", *sources).split(b"\n")
        export("--format", "csv", "-o", out, *sources)
        export("--format", "xlsx", "-o", out + "/all.xlsx", *sources)
        export("--format", "sqlite", "-o", out + "/all.sqlite", *sources)
        sheets = [rows for _, rows in workbook.sheets_of(out + "/all.xlsx")]
        same("sheets", cases, len(sheets))
        database = sqlite3.connect(out + "/all.sqlite")
        same("downloads", cases, database.execute("SELECT count(*) FROM downloads").fetchone()[0])
        for place, seed in enumerate(seeds):
            rows = tables[seed]
            with open("%s/t%d.csv" % (out, seed), "rb") as file:
                compare_csv(rows, file.read())
            compare_jsonl(rows, lines[:len(rows)])
            lines = lines[len(rows):]
            compare_sheet(rows, sheets[place])
            compare_table(rows, database.execute("SELECT * FROM t%d" % seed).fetchall())
    except Difference as difference:
        print("QUORIN_SEED=%d: %s" % (seed, difference))
        sys.exit(1)


main()
