#!/usr/bin/env python3
"""Grows the log of 1,000 rows in tests/data/jet: its data pages COUNT times, with numbers and times moved on.

usage: bench/grow_jet_log.py COUNT FILE        1000 makes a million rows, 180 MB
"""

import gzip
import pathlib
import struct
import sys

PAGE = 4096
ROWS = 1000  # a second apart
SOURCE = pathlib.Path(__file__).resolve().parent.parent / "tests" / "data" / "jet" / "log_1000.mdb.gz"
BITS = (PAGE - 4) * 8  # pages that one page of a usage map tells of
LOG_COLUMNS = 21


def number(form, page, place):
    return struct.unpack_from(form, page, place)[0]


def columns_of(table):
    """The names of a table's columns, and where their values stand in a row."""
    count = number("<H", table, 45)
    first = 63 + number("<I", table, 51) * 12
    places, at = {}, first + 25 * count
    for i in range(count):
        size = number("<H", table, at)
        places[table[at + 2:at + 2 + size].decode("utf-16le")] = number("<H", table, first + 25 * i + 21)
        at += 2 + size
    return places


def rows_of(page):
    """Where the rows of a data page begin."""
    for row in range(number("<H", page, 12)):
        place = number("<H", page, 14 + 2 * row)
        if not place & 0xC000:
            yield place & 0x1FFF


def move_on(page, places, copy):
    for row in rows_of(page):
        at = {name: row + 2 + place for name, place in places.items()}
        struct.pack_into("<i", page, at["ID"], number("<i", page, at["ID"]) + ROWS * copy)
        moment = round((number("<d", page, at["Date"]) + number("<d", page, at["Time"])) * 86400) + ROWS * copy
        struct.pack_into("<d", page, at["Date"], float(moment // 86400))
        struct.pack_into("<d", page, at["Time"], moment % 86400 / 86400)


def main(copies, path):
    file = gzip.open(SOURCE).read()
    pages = [bytearray(file[at:at + PAGE]) for at in range(0, len(file), PAGE)]
    log = next(i for i, page in enumerate(pages) if page[0] == 2 and number("<H", page, 45) == LOG_COLUMNS)
    places = columns_of(pages[log])
    data = [i for i, page in enumerate(pages) if page[0] == 1 and number("<I", page, 4) == log]
    maps_at = len(pages) + (copies - 1) * len(data)
    owned = data + list(range(len(pages), maps_at))
    maps = [bytearray(b"\5\1" + bytes(PAGE - 2)) for _ in range(maps_at // BITS + 1)]
    for page in owned:
        maps[page // BITS][4 + page % BITS // 8] |= 1 << page % 8
    # The map of the table's pages stands in a row of another page, and leads to pages of bits.
    usage = number("<I", pages[log], 55)
    row = number("<H", pages[usage >> 8], 14 + 2 * (usage & 0xFF)) & 0x1FFF
    struct.pack_into("<B17I", pages[usage >> 8], row, 1, *(maps_at + i if i < len(maps) else 0 for i in range(17)))
    struct.pack_into("<I", pages[log], 16, ROWS * copies)
    with open(path, "wb") as out:
        out.writelines(pages)
        for copy in range(1, copies):
            for i in data:
                page = bytearray(pages[i])
                move_on(page, places, copy)
                out.write(page)
        out.writelines(maps)


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main(int(sys.argv[1]), sys.argv[2])
