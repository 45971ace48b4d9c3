"""The way of a newcomer in the real program: from its first start, with no settings at all, to a recorded job. Nothing is
set up in a file: the device is chosen in the window."""

import contextlib
import os
import sqlite3
import subprocess
import unittest

from desktop import Desktop, wait_for
from mouse import Seen

ROWS_OF_THE_JOB = 5


class FirstJob(unittest.TestCase):
    def setUp(self):
        self.desktop = Desktop()
        self.addCleanup(self.desktop.close)
        self.log = self.desktop.path / "first.mdb"
        self.unit = subprocess.Popen([os.environ["VELK_SIM_UNIT"], "--unit", "LUMO version A", "--interval", "1"],
                                     stdout=subprocess.PIPE, text=True)
        self.addCleanup(self.end_unit)
        self.device = self.unit.stdout.readline().strip()
        # What comes up first asks whether it goes on with the present port settings.
        self.seen = Seen(self.desktop, os.environ["VELK_PROGRAM"], first="VELK")
        self.addCleanup(self.seen.close)

    def end_unit(self):
        self.unit.terminate()
        self.unit.communicate()

    def wait_for_status(self, status):
        self.seen.wait_for("MainForm/StatusBar1_1", "text", status)

    def rows(self):
        with contextlib.closing(sqlite3.connect("file:%s?mode=ro" % self.log, uri=True)) as log:
            return log.execute("SELECT count(*) FROM logData").fetchone()[0]

    def choose_instrument(self):
        desktop, seen = self.desktop, self.seen
        desktop.press("Tab", "Return")  # No: there is no port yet to go on with
        desktop.wait_for_window("Edit Hardware Settings")
        desktop.press("l")
        seen.wait_for("HardwareSettings/txtNumberOfParameters", "text", "4")
        seen.click("HardwareSettings/cmdDevice_1")
        desktop.wait_for_window("Device of Com Port 1")
        desktop.write(self.device)
        desktop.press("Return")
        desktop.wait_for_window("Edit Hardware Settings")
        self.assertIn(self.device, seen.text("HardwareSettings/lblDevice_1"))
        seen.click("HardwareSettings/cmdListen")
        wait_for(lambda: seen.text("HardwareSettings/lblLines") == "4 values", "lines as they arrive")
        seen.picture("first-job-listening")
        seen.click("HardwareSettings/cmdOK")

    def choose_file(self):
        self.seen.click("MainForm/Record")
        self.desktop.wait_for_window("Record Data To...")
        self.desktop.press("ctrl+a")
        self.desktop.write(str(self.log))
        self.desktop.press("Return")
        wait_for(lambda: "first.mdb" in self.seen.text("MainForm/StatusBar1_2"), "the file in the status bar")

    def test_a_newcomer_records_a_job_without_touching_a_file(self):
        desktop, seen = self.desktop, self.seen
        self.choose_instrument()
        wait_for(lambda: seen.is_seen("MainForm/cmdStep_2"), "the guide")
        seen.picture("first-job-guide")
        seen.click("MainForm/cmdStep_2")
        self.wait_for_status("Ready to Acquire")
        self.assertFalse(seen.is_seen("MainForm/cmdStep_2"), "graphs stand there")
        self.choose_file()
        seen.click("MainForm/Pause")
        desktop.wait_for_window("Include In Summary Report")
        desktop.press("Return")
        self.wait_for_status("Acquiring Data")
        wait_for(lambda: seen.text("MainForm/StatusBar1_8").startswith("\u25cf REC first.mdb"), "the sign of a recording")
        wait_for(lambda: self.log.exists() and self.rows() >= ROWS_OF_THE_JOB, "rows in the log")
        self.assertIn(" rows", seen.text("MainForm/StatusBar1_7"))
        seen.picture("first-job-recording")
        seen.click("MainForm/Stop")
        self.wait_for_status("Ready")
        seen.click("MainForm/Exit")
        desktop.wait_for_window("VELK")
        desktop.press("Tab", "Return")
        wait_for(lambda: seen.process.poll() is not None, "the program's end")
        self.assertEqual(seen.process.returncode, 0)
        self.assertEqual(sorted(path.name for path in self.log.parent.glob("first.mdb*")), ["first.mdb"])


if __name__ == "__main__":
    unittest.main()
