# SPDX-License-Identifier: MIT
"""Reads a workbook with nothing but Python's own modules.

usage: workbook.py FILE     prints each sheet: its name in brackets, then a line a row, its cells with their places
"""

import re
import sys
import xml.etree.ElementTree as ElementTree
import zipfile

SPACE = "{http://schemas.openxmlformats.org/spreadsheetml/2006/main}"
OWN_FORMATS = {"0": "General", "1": "0", "2": "0.00"}  # that a workbook does not list


def parts_of(path):
    """Returns the parts of a workbook by name. Fails if one is damaged or not well-formed."""
    with zipfile.ZipFile(path) as workbook:
        if workbook.testzip() is not None:
            raise ValueError("a part has another checksum")
        return {name: ElementTree.fromstring(workbook.read(name)) for name in workbook.namelist()}


def unescaped(text):
    return re.sub("_x([0-9A-Fa-f]{4})_", lambda found: chr(int(found[1], 16)), text)


def value_of(cell, shown):
    """Returns a text, or a number and its number format."""
    if cell.find(SPACE + "f") is not None:
        raise ValueError("a formula")
    if cell.get("t") == "inlineStr":
        return unescaped(cell.find(SPACE + "is").find(SPACE + "t").text)
    return float(cell.find(SPACE + "v").text), shown[int(cell.get("s"))]


def sheets_of(path):
    """Returns each sheet: its name, and its rows, of which each has its cells by their columns."""
    parts = parts_of(path)
    styles = parts["xl/styles.xml"]
    formats = dict(OWN_FORMATS)
    formats.update((each.get("numFmtId"), each.get("formatCode")) for each in styles.iter(SPACE + "numFmt"))
    shown = [formats.get(each.get("numFmtId")) for each in styles.find(SPACE + "cellXfs")]
    sheets = []
    for place, sheet in enumerate(parts["xl/workbook.xml"].iter(SPACE + "sheet")):
        rows = parts["xl/worksheets/sheet%d.xml" % (place + 1)].iter(SPACE + "row")
        sheets.append((sheet.get("name"), [{re.match("[A-Z]+", cell.get("r"))[0]: value_of(cell, shown) for cell in row}
                                           for row in rows]))
    return sheets


if __name__ == "__main__":
    for name, rows in sheets_of(sys.argv[1]):
        print("[%s]" % name)
        for row in rows:
            print(", ".join("%s=%s" % (column, repr(value)) for column, value in row.items()))
