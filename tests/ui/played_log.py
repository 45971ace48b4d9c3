"""A log of a job that was recorded long ago, played back by the real program on a display."""

import contextlib
import os
import pty
import sqlite3
import tty
import unittest

from desktop import Desktop
from mouse import Seen

DAY = 46095  # 14 March 2026

# The rows stand in "number", from 0 on.
TABLES = """
PRAGMA synchronous=OFF;
CREATE TABLE logData (ID INTEGER PRIMARY KEY, Date DATE, Time DATE, %(columns)s);
CREATE INDEX logDataTimes ON logData (Date, Time);
CREATE TABLE GraphSettings (ParameterName VARCHAR(50), units VARCHAR(50), Minimum DOUBLE, Maximum DOUBLE,
                            NumberFormat VARCHAR(50), GraphNumber INTEGER, CurveColor INTEGER);
CREATE TEMP VIEW number AS
  WITH RECURSIVE upTo(n) AS (SELECT 0 UNION ALL SELECT n + 1 FROM upTo WHERE n + 1 < %(rows)d) SELECT n FROM upTo;
"""


class PlayedLog(unittest.TestCase):
    """A desktop, and a log that the program on it looks into."""

    def make_log(self, columns, rows, sql):
        """A log with these columns behind the time, filled by statements."""
        self.desktop = Desktop()
        self.addCleanup(self.desktop.close)
        self.log = self.desktop.path / "job.mdb"
        with contextlib.closing(sqlite3.connect(self.log)) as database:
            database.executescript(TABLES % {"columns": columns, "rows": rows} + sql)

    def write_settings(self, lines=""):
        """Of a program that speaks English, and these lines of its section General. Of its own, too, is its port: programs
        that run side by side would find the machine's in use."""
        master, slave = pty.openpty()
        self.addCleanup(os.close, master)
        self.addCleanup(os.close, slave)
        tty.setraw(slave)
        folder = self.desktop.path / "config" / "VELK"
        folder.mkdir(parents=True)
        (folder / "VELK2.ini").write_text(
            "[General]\nCurrent_language=English\n%s[Protocol]\nSerialData=KESTA version 5\n"
            "PortDevice1=%s\n" % (lines, os.ttyname(slave)), encoding="utf-8")

    def play_back(self):
        """The program is ready to play the log."""
        self.seen = Seen(self.desktop, os.environ["VELK_PROGRAM"])
        self.addCleanup(self.seen.close)
        self.seen.choose("mnuFile", "mnuFilePlayback")
        self.seen.choose_file(self.log)
        self.seen.wait_for("MainForm/StatusBar1_1", "text", "Ready to Playback")

    def query(self, sql):
        with contextlib.closing(sqlite3.connect("file:%s?mode=ro" % self.log, uri=True)) as database:
            return database.execute(sql).fetchall()

    def print_to_pdf(self, pdf):
        """Answers what is asked behind the window's own key: the PDF is the last one in the list of printers."""
        self.seen.click("frmPrinterSelect/List1")
        self.desktop.press("End")
        self.seen.click("frmPrinterSelect/Command1")
        self.seen.choose_file(pdf)
