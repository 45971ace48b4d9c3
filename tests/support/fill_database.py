#!/usr/bin/env python3
"""Fills a table of a database as another program would: a row a transaction, ten rows to a second of their own time.

usage: fill_database.py FILE TABLE COUNT DAY SECOND PAUSE_MS
"""

import sqlite3
import sys
import time


def main(path, table, count, day, second, pause):
    connection = sqlite3.connect(path, timeout=30, isolation_level=None)
    for number in range(int(count)):
        moment = int(second) + number // 10
        connection.execute('INSERT INTO "{}" VALUES (?, ?, ?)'.format(table),
                           (int(day) + moment // 86400, (moment % 86400) / 86400.0, number + 1))
        time.sleep(float(pause) / 1000)


if __name__ == "__main__":
    main(*sys.argv[1:])
