"""The real program on a display, worked by the mouse: a job is looked back into while it runs, commented and read, its
log is played back, and the next job follows in the same process."""

import contextlib
import csv
import datetime
import math
import os
import pathlib
import re
import sqlite3
import subprocess
import unittest

from desktop import Desktop, wait_for
from mouse import Seen

VELK = os.environ["VELK_PROGRAM"]
SIMULATOR = os.environ["VELK_SIM_UNIT"]
MESSAGES = pathlib.Path(os.environ["VELK_MESSAGES"])
EPOCH = datetime.datetime(1899, 12, 30)

# With this distance of rows the page of history stands open with the first sample.
SAMPLING_SECONDS = 5
ROWS_OF_A_PAGE = 240

CHANNELS = [("Treating Pressure", "psi", 10000, 1), ("Slurry Rate", "bbl/min", 10, 2), ("Slurry Density", "lb/gal", 20, 2)]
VALUES_OF_A_LINE = 22


def settings(device, language):
    lines = ["[General]", "SensitivityCriterion=0", "SamplingRate=%.17g" % (SAMPLING_SECONDS / 86400),
             "Current_language=" + language,
             "[Protocol]", "SerialData=KESTA version 5", "PortNumber=1", "PortDevice1=%s" % device,
             "[Parameters]", "NumberOfParameters=%d" % VALUES_OF_A_LINE]
    for number in range(1, VALUES_OF_A_LINE + 1):
        name, units, most, graph = CHANNELS[number - 1] if number <= len(CHANNELS) else ("BLANK", "", 100, 0)
        lines += ["[Parameter%d]" % number, "name=" + name, "units=" + units, "max=%d" % most, "format=#0.00",
                  "FormIndex=%d" % graph, "GraphVisible=%s" % (graph > 0)]
    return "\n".join(lines) + "\n"


def russian():
    words = {}
    for table in MESSAGES.glob("*.tsv"):
        with open(table, encoding="utf-8", newline="") as rows:
            for row in csv.reader(rows, delimiter="\t", quoting=csv.QUOTE_NONE):
                if len(row) == 3:
                    words[row[1]] = row[2]
    return words


class LookingBack(unittest.TestCase):
    def begin(self, language):
        self.language = language
        self.words = russian() if language == "Russian" else {}
        self.desktop = Desktop()
        self.addCleanup(self.desktop.close)
        device = self.desktop.path / "unit"
        unit = subprocess.Popen([SIMULATOR, "--unit", "kesta5", "--interval", "0.2", "--baud", "0", "--link", device],
                                stdout=subprocess.PIPE, text=True)
        self.desktop.running.append(unit)
        unit.stdout.readline()
        unit.stdout.close()
        folder = self.desktop.path / "config" / "VELK"
        folder.mkdir(parents=True)
        (folder / "VELK2.ini").write_text(settings(device, language), encoding="utf-8")
        self.seen = Seen(self.desktop, VELK)
        self.addCleanup(self.seen.close)
        self.addCleanup(self.picture, "end")

    def said(self, english):
        """A text of the program in its language."""
        return self.words.get(english, english)

    def picture(self, name):
        self.seen.picture("%s-%s" % (name, self.language))

    def wait_for_status(self, english):
        self.seen.wait_for("MainForm/StatusBar1_1", "text", self.said(english))

    def put_away_box(self, english):
        wait_for(lambda: self.said(english) in self.seen.text("QMessageBox"), "the box " + english)
        self.desktop.press("Return")
        wait_for(lambda: not self.seen.is_seen("QMessageBox"), "the box to go")

    # --- The log ---

    def query(self, log, sql):
        with contextlib.closing(sqlite3.connect("file:%s?mode=ro" % log, uri=True)) as database:
            return database.execute(sql).fetchall()

    def report(self, log):
        return self.query(log, "SELECT * FROM SummaryReport ORDER BY Date, Time, rowid")

    def rows(self, log):
        """Times and values of the first channel."""
        try:
            rows = self.query(log, "SELECT Date + Time, [%s] FROM logData ORDER BY ID" % CHANNELS[0][0])
        except sqlite3.Error:
            return []
        return [(EPOCH + datetime.timedelta(seconds=round(time * 86400)), value) for time, value in rows]

    def wait_for_rows(self, log, count):
        wait_for(lambda: len(self.rows(log)) >= count, lambda: "%d rows, of %d" % (count, len(self.rows(log))))

    # --- Steps of the walk ---

    def record(self, log):
        """Connect, a file, Start."""
        self.seen.click("MainForm/Acquire")
        self.wait_for_status("Ready to Acquire")
        self.seen.click("MainForm/Record")
        self.seen.choose_file(log)
        # The page begins with the minute of Start, which is told here by the first row.
        wait_for(lambda: datetime.datetime.now().second < 45, "the next minute")
        self.seen.click("MainForm/Pause")
        self.seen.place("frmIncParamInSum")
        if self.seen.property("frmIncParamInSum/chk_1", "checked") == "false":  # else as the job before had it
            self.seen.tick("frmIncParamInSum/chk_1")
            self.seen.click("frmIncParamInSum/Text1_0")
            self.desktop.write("Tank")
        self.seen.click("frmIncParamInSum/cmdClose")
        self.wait_for_status("Acquiring Data")

    def look_back(self, log):
        """The bar of the first graph is dragged back and returns, while rows go on."""
        bar = "GraphFormNew:1/VScroll1"
        self.seen.wait_for(bar, "enabled", "true")
        most = self.seen.property(bar, "maximum")
        live = self.seen.look("GraphFormNew:1/Picture3")
        self.seen.drag_handle(bar, 0)
        self.seen.wait_for(bar, "value", "0")
        wait_for(lambda: self.seen.look("GraphFormNew:1/Picture3") != live, "the axis of the page")
        self.wait_for_rows(log, len(self.rows(log)) + 5)
        self.assertEqual(self.seen.property(bar, "value"), "0")
        self.assertEqual(self.seen.property("GraphFormNew:2/VScroll1", "value"), most, "each window is at its own place")
        self.read_value(log)
        self.picture("history")
        self.seen.drag_handle(bar, 1)
        self.seen.wait_for(bar, "value", most)
        wait_for(lambda: self.seen.look("GraphFormNew:1/Picture3") == live, "the axis of the live page")
        self.read_value(log)

    def read_value(self, log):
        """The caption tells what the log holds at the time under the mouse, in history as live."""
        rows = self.rows(log)
        start = rows[0][0].replace(second=0)
        y = int((rows[len(rows) // 2][0] - start).total_seconds()) // SAMPLING_SECONDS
        under = start + datetime.timedelta(seconds=y * SAMPLING_SECONDS)
        time, value = next(row for row in rows if row[0] >= under)
        name = CHANNELS[0][0]
        self.seen.click("GraphFormNew:1/ReadValue")
        left, top, width, height = self.seen.place("GraphFormNew:1/Pic2")
        # The first dot of the row, however high the page is shown.
        below = math.ceil(y * height / ROWS_OF_A_PAGE)
        self.seen.point(left + width // 2, top + below + 1)
        self.seen.point(left + width // 2, top + below)
        self.seen.wait_for("GraphFormNew:1", "windowTitle",
                           "%s%s%s : %.2f" % (name, self.said(" at "), time.strftime("%H:%M:%S"), value))
        self.picture("read_value")
        self.seen.click("GraphFormNew:1/ReadValue")
        self.seen.wait_for("GraphFormNew:1", "windowTitle", name)

    def comment(self, log, *comments):
        """F7 on the one graph, the key on the other; both stand in the report."""
        self.desktop.use_keyboard_layout("ru" if self.language == "Russian" else "us")
        self.seen.click("GraphFormNew:1/Pic2")
        self.desktop.press("F7")
        self.seen.place("GraphFormNew:1/Text1")
        self.desktop.write(comments[0])
        self.picture("comment")
        self.desktop.press("Return")
        self.seen.click("GraphFormNew:2/AddComment")
        self.seen.place("GraphFormNew:2/Text1")
        self.desktop.write(comments[1])
        self.desktop.press("Return")
        self.desktop.use_keyboard_layout("us")
        wait_for(lambda: [line[-1] for line in self.report(log)] == list(comments),
                 lambda: "the comments in %r" % self.report(log))
        values = ["%.3f" % value for _, value in self.rows(log)]
        for line in self.report(log):
            self.assertIn("%.3f" % line[2], values, "the first channel as it was then")
        self.seen.choose("mnuView", "mnuViewSummaryReport")
        self.seen.click("frmRTSumRep/DataGrid1")
        # The last line is the present one; its fourth field is the one for entries.
        self.desktop.press("Home", "Right", "Right", "Right")
        self.desktop.write("12.5")
        self.desktop.press("Return")
        wait_for(lambda: [line[3] for line in self.report(log)] == [None, 12.5],
                 lambda: "the entry in %r" % self.report(log))
        self.picture("report")
        self.seen.click("frmRTSumRep/cmdClose")
        wait_for(lambda: not self.seen.is_seen("frmRTSumRep"), "the report to go")

    def tile(self):
        """The windows in another order, drawn again from the log."""
        before = self.seen.place("GraphFormNew:1")
        self.seen.choose("mnuWindow", "mnuWindowTileVertically")
        wait_for(lambda: self.seen.place("GraphFormNew:1") != before, "the windows side by side")
        self.picture("tiled")

    def stop(self, log):
        self.seen.click("MainForm/Stop")
        self.wait_for_status("Ready")
        self.assertFalse(log.with_name(log.name + "-wal").exists(), "one file is left")

    def open_log(self, log):
        self.seen.click("MainForm/PlayBack")
        self.seen.choose_file(log)
        self.wait_for_status("Ready to Playback")

    def row_played(self):
        """The row that the status bar tells, and how many there are; none before the first."""
        numbers = re.findall(r"\d+", re.sub(r"(?<=\d)\s(?=\d)", "", self.seen.text("MainForm/StatusBar1_6")))
        return [int(number) for number in numbers]

    def play_pause_and_stop(self, log):
        rows = len(self.rows(log))
        self.open_log(log)
        self.seen.click("MainForm/Pause")
        self.wait_for_status("Playing Back")
        # Row 2 is told first, for a second, which a busy machine may miss.
        wait_for(lambda: self.row_played() in [[row, rows] for row in range(2, rows + 1)],
                 lambda: "row 2 of %d or one behind it, at %r" % (rows, self.row_played()))
        self.seen.click("MainForm/Pause")
        self.wait_for_status("Playing Back Paused")
        self.picture("playback")
        self.seen.drag_handle("MainForm/HScroll1", 0.02)
        wait_for(lambda: 1 < int(self.seen.property("MainForm/HScroll1", "value")) < 50, "another speed")
        self.seen.click("MainForm/Pause")
        wait_for(lambda: self.row_played()[0] > 4, "the next rows")
        self.seen.click("MainForm/Stop")
        self.put_away_box("Playback is Stopped")
        self.wait_for_status("Ready")

    def play_to_the_end(self, log):
        self.open_log(log)
        self.seen.drag_handle("MainForm/HScroll1", 1)
        self.seen.wait_for("MainForm/HScroll1", "value", "1000")
        self.seen.click("MainForm/Pause")
        self.put_away_box("End of playback")
        self.wait_for_status("Ready")

    def leave(self):
        self.seen.choose("mnuFile", "mnuFileExit")
        self.desktop.wait_for_window("VELK")
        self.desktop.press("Tab", "Return")  # the box begins on the safe answer
        wait_for(lambda: self.seen.process.poll() is not None, "the program's end")
        self.assertEqual(self.seen.process.returncode, 0)

    def walk(self, language, comments):
        self.begin(language)
        job, next_job = self.desktop.path / "job.mdb", self.desktop.path / "next.mdb"
        self.record(job)
        self.wait_for_rows(job, 30)
        self.look_back(job)
        self.comment(job, *comments)
        self.tile()
        self.stop(job)
        before = job.read_bytes()
        self.play_pause_and_stop(job)
        self.play_to_the_end(job)
        self.assertEqual(job.read_bytes(), before, "a playback only reads")
        self.record(next_job)
        self.wait_for_rows(next_job, 5)
        self.stop(next_job)
        self.leave()

    def test_a_job_is_seen_again_by_mouse(self):
        self.walk("English", ["Pump 2 on line", "Pressure steady"])

    def test_a_job_is_seen_again_by_mouse_in_russian(self):
        self.walk("Russian", ["Насос 2", "Давление"])


if __name__ == "__main__":
    unittest.main()
