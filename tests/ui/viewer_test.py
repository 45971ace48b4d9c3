"""The real program on a display, worked by the mouse: a recording of two weeks is worked through beside its report, with
every button of the viewer."""

import re
import subprocess
import time
import unittest

from desktop import wait_for
from played_log import DAY, PlayedLog

ROWS = 1_200_000
SPIKE = 301  # the row whose pressure jumps
DOUBLE_CLICK_SECONDS = 0.6
WINDOW = "frmSummaryReport/"

# A row a second from midnight on. The pressure is 100, with one jump; the rate rises too slowly to jump.
LOG = """
INSERT INTO GraphSettings VALUES ('Pressure', 'psi', 0, 1000, '#0.00', 1, 255), ('Rate', 'bbl/min', 0, 20, '#0.00', 1, 0);
CREATE TABLE SummaryReport (Date DATE, Time DATE, Pressure DOUBLE, Water DOUBLE, Comments LONGTEXT);
INSERT INTO SummaryReport VALUES (%(day)d, 0.5, 100, NULL, 'half of the first day');
INSERT INTO logData (Date, Time, Pressure, Rate)
  SELECT %(day)d + n / 86400, (n %% 86400) / 86400.0, CASE n + 1 WHEN %(spike)d THEN 900 ELSE 100 END, 5 + n / 1e6
  FROM number;
""" % {"day": DAY, "spike": SPIKE}


class Viewer(PlayedLog):
    def setUp(self):
        self.make_log("Pressure DOUBLE, Rate DOUBLE", ROWS, LOG)
        self.write_settings()

    def open(self):
        self.play_back()
        self.addCleanup(self.seen.picture, "viewer")
        self.seen.choose("mnuView", "mnuViewSummaryReport")
        self.seen.place(WINDOW + "logDataGrid")

    def press(self, key):
        self.seen.wait_for(WINDOW + key, "enabled", "true")
        self.seen.click(WINDOW + key)

    def enter(self, field, text):
        self.seen.click(WINDOW + field)
        self.desktop.press("ctrl+a")
        self.desktop.write(text)
        self.seen.wait_for(WINDOW + field, "text", text)

    def wait_for_row(self, row, of=ROWS):
        self.seen.wait_for(WINDOW + "lblLogRecord", "text", "Row %s of %s" % (format(row, ","), format(of, ",")))

    def wait_for_count(self, sql, count):
        wait_for(lambda: self.query(sql) == [(count,)], lambda: "%r to give %d: %r" % (sql, count, self.query(sql)))

    def find_the_jump(self):
        self.press("cmdFilter")
        self.wait_for_row(SPIKE)
        # The next search takes in the jump itself, and ends where it is told to.
        self.enter("Text2", "100000")

    def stop_a_search(self):
        """Against the order of the file rows are read one by one: a search of all takes many seconds."""
        self.sort_by_id(1, ROWS)
        # Neither key moves as the search begins and ends: a mouse that is late hits what it was meant for.
        stop = self.seen.middle(WINDOW + "cmdFilterStop")
        self.press("cmdFilter")
        self.seen.point(*stop)
        self.seen.wait_for(WINDOW + "cmdFilterStop", "enabled", "true")
        self.desktop.click()
        self.seen.wait_for(WINDOW + "cmdFilterStop", "enabled", "false")
        self.assertEqual(self.seen.middle(WINDOW + "cmdFilterStop"), stop)
        row = int(re.match("Row ([0-9,]+) of", self.seen.text(WINDOW + "lblLogRecord"))[1].replace(",", ""))
        self.assertTrue(1 < row < ROWS, row)
        self.assertEqual(self.seen.text(WINDOW + "lblNote"), "")

    def go_and_delete(self):
        self.enter("Text1", "14-Mar-2026 00:05:00")
        self.press("cmdGo")
        self.wait_for_row(SPIKE)
        self.press("cmdDelete")
        self.wait_for_count("SELECT count(*) FROM logData", ROWS - 1)
        self.press("cmdUndo")
        self.wait_for_count("SELECT count(*) FROM logData WHERE Pressure = 900 AND ID = %d" % SPIKE, 1)
        self.wait_for_row(SPIKE)

    def edit_the_report(self):
        self.press("cmdAddRow")
        self.seen.place("QInputDialog")
        self.desktop.write("pressure jumps")
        self.desktop.press("Return")
        wait_for(lambda: self.query("SELECT Pressure, Comments FROM SummaryReport ORDER BY rowid") ==
                 [(100, "half of the first day"), (900, "pressure jumps")], "the line that was added")
        self.press("cmdRemoveRow")
        self.wait_for_count("SELECT count(*) FROM SummaryReport", 1)
        self.press("cmdUndo")
        self.wait_for_count("SELECT count(*) FROM SummaryReport", 2)

    def restrict(self):
        self.enter("txtBeginTime", "14-Mar-2026 23:59:30")
        self.enter("txtEndTime", "15-Mar-2026 00:00:29")
        self.press("cmdUpdate")
        self.wait_for_row(1, 60)

    def sort_by_id(self, lowest, highest):
        """Up, then down; ID of the first row each time."""
        _, y, _, _ = self.seen.place(WINDOW + "logDataGrid")
        cell = self.seen.find(name="logDataGrid", column=0)
        head = (cell["x"] + cell["w"] // 2, y + 10)
        for first in (lowest, highest):
            self.seen.point(*head)
            self.desktop.click()
            self.seen.find(text=str(first), row=0, column=0)
            time.sleep(DOUBLE_CLICK_SECONDS)  # a second one sooner than that doesn't sort again

    def print(self, key, title, lines, skip=None):
        pdf = self.desktop.path / (key + ".pdf")
        self.press(key)
        if skip is not None:
            self.seen.place("QInputDialog")
            self.desktop.press("ctrl+a")
            self.desktop.write(skip)
            self.desktop.press("Return")
        self.print_to_pdf(pdf)
        wait_for(pdf.exists, "the document")
        wait_for(lambda: not self.seen.is_seen("ProgressWindow"), "its end")
        text = subprocess.run(["pdftotext", "-layout", pdf, "-"], capture_output=True, text=True, check=True).stdout
        self.assertIn(title, text)
        self.assertEqual(len(re.findall(r"\d\d-Mar-2026 +\d\d:\d\d:\d\d +\S", text.split("Page 1", 1)[1])), lines, text)

    def test_every_button_of_the_viewer_by_mouse(self):
        self.open()
        self.find_the_jump()
        self.go_and_delete()
        self.edit_the_report()
        self.stop_a_search()
        self.restrict()
        self.sort_by_id(86371, 86430)
        self.print("cmdPrintLog", "Data Log", 6, skip="9")
        self.press("cmdALL")
        self.press("cmdUpdate")
        self.wait_for_row(1)
        self.print("cmdPrintSummary", "Summary Data", 2)
        self.press("cmdClose")
        wait_for(lambda: not self.seen.is_seen("frmSummaryReport"), "the viewer to go")
        self.assertEqual(self.query("SELECT count(*), sum(Pressure) FROM logData"), [(ROWS, 100 * ROWS + 800)])


if __name__ == "__main__":
    unittest.main()
