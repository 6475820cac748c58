# SPDX-License-Identifier: MIT
"""Exports a table of nasty texts for a spreadsheet, has LibreOffice read it under a German locale, and compares what it
shows with what was put in. Prints each difference and ends with status 1 if there is one.

usage: spreadsheet.py PROGRAM FOLDER
"""

import csv
import os
import re
import subprocess
import sys

HEADER = "Text|N|D|T|End"
DRIVER = """FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA
Text|1||||||
N|1||N||||
D|1|||||DATE|
T|1|||||TIME|
End|1||||||
"""
# A row of the table; what a German spreadsheet shows of it: text, number, unit, date, time, end, what is beyond.
ROWS = [
    ("=1+2|23.40 %|21/11/2026|9:30|e", ["=1+2", "23,40", "%", "2026-11-21", "09:30", "e", ""]),
    ("00123|24,5 °C|05/03/2007|18:00:05|e", ["00123", "24,5", "°C", "2007-03-05", "18:00:05", "e", ""]),
    ("+1|12e3|||e", ["+1", "1,2E+4", "", "", "", "e", ""]),
    ("-1|-0.04 mm|||e|f|g", ["-1", "-0,04", "mm", "", "", "e", "f|g"]),
    ("1,5|1234567.89|||e", ["1,5", "1234567,89", "", "", "", "e", ""]),
    ("1.5|0.000001|||e", ["1.5", "0,000001", "", "", "", "e", ""]),
    ("21.11.2026|dry|no day|noon|e", ["21.11.2026", "dry", "", "no day", "noon", "e", ""]),
    ("a\rb|9007199254740993|||e", ["a\nb", "9007199254740993", "", "", "", "e", ""]),
    ("\"q\";x|123456789012345|||e", ["\"q\";x", "123456789012345", "", "", "", "e", ""]),
    ("TRUE|-0.0|||e", ["TRUE", "-0,0", "", "", "", "e", ""]),
    ("1E5|5e-7|||e", ["1E5", "5E-7", "", "", "", "e", ""]),
    (" a |0|||e", [" a ", "0", "", "", "", "e", ""]),
]
UTF8 = "76"
# Separator, quotes, encoding, first line, kinds of columns (2: text, as a person chooses for it), language.
IMPORT = "59,34," + UTF8 + ",1,1/2/2/1/3/2/4/5/5/1/6/2/7/2,1031"
# The same, and: quotes where they are needed, cells as they are shown.
EXPORT = "59,34," + UTF8 + ",1,,1031,false,true,true,false"
MOST_DIGITS = 15  # of a number in a spreadsheet; of CSV it keeps no more


def run(words, **more):
    done = subprocess.run(words, capture_output=True, text=True, timeout=300, **more)
    return done.returncode, done.stdout + done.stderr


def convert(folder, name, read):
    """Has LibreOffice write the cells that it shows. Returns its rows."""
    out = os.path.join(folder, "shown")
    words = ["soffice", "-env:UserInstallation=file://" + os.path.join(folder, "profile"), "--headless"]
    words += ["--infilter=Text - txt - csv (StarCalc):" + IMPORT] if read else []
    words += ["--convert-to", "csv:Text - txt - csv (StarCalc):" + EXPORT, "--outdir", out, os.path.join(folder, name)]
    status, said = run(words, env=dict(os.environ, LC_ALL="de_DE.UTF-8", LANG="de_DE.UTF-8"))
    path = os.path.join(out, os.path.splitext(name)[0] + ".csv")
    if status != 0 or not os.path.exists(path):
        sys.exit("soffice could not read %s: %s" % (name, said))
    with open(path, encoding="utf-8-sig", newline="") as file:
        rows = [[cell.replace("\r\n", "\n").replace("\r", "\n") for cell in row] for row in csv.reader(file, delimiter=";")]
    os.remove(path)
    return rows


def value_of(text):
    """Returns a number, a day or a time, however a spreadsheet shows it; any other text as it is."""
    day = re.fullmatch(r"(\d\d)[./](\d\d)[./](\d\d(?:\d\d)?)", text)
    if day:
        return "20%s-%s-%s" % (day[3][-2:], day[2], day[1])
    if re.fullmatch(r"\d?\d:\d\d(:\d\d)?", text):
        return [int(part) for part in (text + ":0").split(":")[:3]]
    try:
        return float(text.replace(",", "."))
    except ValueError:
        return text


def is_same(wanted, shown, by_value):
    """CSV can't say how many places a number has, nor how a date looks: the spreadsheet chooses that itself."""
    if wanted == shown or not by_value:
        return wanted == shown
    return len(wanted) > MOST_DIGITS or value_of(wanted) == value_of(shown)


def differences(name, rows, by_value):
    found = ["%s: %d rows, not %d" % (name, len(rows) - 1, len(ROWS))] if len(rows) != len(ROWS) + 1 else []
    for number, (row, (_, wanted)) in enumerate(zip(rows[1:], ROWS), 1):
        row = row + [""] * (len(wanted) - len(row))
        for column, (one, other) in enumerate(zip(wanted, row)):
            if not is_same(one, other, by_value and column in (1, 3, 4)):
                found.append("%s, row %d, column %d: %r is shown as %r" % (name, number, column + 1, one, other))
    return found


def main(program, folder):
    data = os.path.join(folder, "root", "Quorin")
    os.makedirs(data)
    tables = {"drivers.txt": "NAME|INFFILE\nMeter|meter.txt\n", "meter.txt": DRIVER,
              "qrnctrl.txt": "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20261121|\n",
              "qrn0001.txt": "\n".join([HEADER] + [row for row, _ in ROWS]) + "\n"}
    for name, text in tables.items():
        with open(os.path.join(data, name), "w", encoding="utf-8", newline="") as file:
            file.write(text)
    found = []
    for name, more in (("book.xlsx", []), ("text.csv", ["--delimiter", ";", "--decimal-comma", "--bom"])):
        status, said = run([program, "--root", os.path.join(folder, "root"), "qrn0001.txt", "-o",
                            os.path.join(folder, name)] + more)
        if status not in (0, 5):
            sys.exit("%s: status %d: %s" % (name, status, said))
        is_csv = name.endswith(".csv")
        found += differences(name, convert(folder, name, is_csv), is_csv)
    print("\n".join(found) if found else "%d rows are as they were, in a workbook and in CSV" % len(ROWS))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
