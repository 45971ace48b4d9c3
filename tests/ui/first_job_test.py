"""The way of a newcomer in the real program: from its first start, with no settings at all, to a recorded job. Nothing is
set up in a file: the device is chosen in the window. Once with both hands, once by keys alone, once by the mouse alone,
and once without an instrument, with the unit that the program simulates."""

import contextlib
import os
import pathlib
import signal
import sqlite3
import subprocess
import time
import unittest

from desktop import Desktop, wait_for
from mouse import Seen

ROWS_OF_THE_JOB = 5
CHANNELS_OF_UNIT = 4
CHANNELS_OF_SIMULATED_UNIT = 22
TITLE = "Velk Acquisition Console (VELK) - version "


def rows_and_columns(path):
    """Both 0 while the log is being made."""
    try:
        with contextlib.closing(sqlite3.connect("file:%s?mode=ro" % path, uri=True)) as log:
            return (log.execute("SELECT count(*) FROM logData").fetchone()[0],
                    len(log.execute("PRAGMA table_info(logData)").fetchall()))
    except sqlite3.OperationalError:
        return (0, 0)


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

    def wait_for_rows(self):
        wait_for(lambda: rows_and_columns(self.log)[0] >= ROWS_OF_THE_JOB, "rows in the log")

    def hear_lines(self):
        wait_for(lambda: self.seen.text("HardwareSettings/lblLines") == "4 values", "lines as they arrive")

    def check_end(self):
        wait_for(lambda: self.seen.process.poll() is not None, "the program's end")
        self.assertEqual(self.seen.process.returncode, 0)
        self.assertEqual(sorted(path.name for path in self.log.parent.glob(self.log.name + "*")), [self.log.name])
        rows, columns = rows_and_columns(self.log)
        self.assertGreaterEqual(rows, ROWS_OF_THE_JOB)
        self.assertEqual(columns, len(["ID", "Date", "Time"]) + CHANNELS_OF_UNIT)

    # --- With both hands ---

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
        self.hear_lines()
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
        self.wait_for_rows()
        self.assertIn(" rows", seen.text("MainForm/StatusBar1_7"))
        seen.picture("first-job-recording")
        seen.click("MainForm/Stop")
        self.wait_for_status("Ready")
        seen.click("MainForm/Exit")
        desktop.wait_for_window("VELK")
        desktop.press("Tab", "Return")
        self.check_end()

    # --- By keys ---

    def test_by_keys_alone(self):
        desktop, seen = self.desktop, self.seen
        title = TITLE + os.environ["VELK_VERSION"]
        seen.answer("No")
        desktop.wait_for_window("Edit Hardware Settings")
        desktop.press("l")
        seen.wait_for("HardwareSettings/txtNumberOfParameters", "text", "4")
        seen.lead_to(name="cmdDevice_1")
        desktop.press("space")
        desktop.wait_for_window("Device of Com Port 1")
        desktop.write(self.device)
        desktop.press("Return")
        desktop.wait_for_window("Edit Hardware Settings")
        seen.lead_to(name="cmdListen")
        desktop.press("space")
        self.hear_lines()
        desktop.press("Return")
        desktop.wait_for_window(title)
        seen.menu("alt+d", "c")
        self.wait_for_status("Ready to Acquire")
        seen.menu("alt+f", "r")
        desktop.wait_for_window("Record Data To...")
        desktop.write(str(self.log))
        desktop.press("Return")
        desktop.wait_for_window(title)
        seen.menu("alt+d", "s")
        desktop.wait_for_window("Include In Summary Report")
        desktop.press("Return")
        self.wait_for_status("Acquiring Data")
        self.wait_for_rows()
        desktop.press("ctrl+r")  # the key that the menu shows
        wait_for(lambda: not seen.is_seen("MainForm/StatusBar1_8"), "the end of the recording")
        seen.menu("alt+d", "p")
        self.wait_for_status("Ready")
        seen.menu("alt+f", "x")
        desktop.wait_for_window("VELK")
        seen.answer("Yes")
        self.check_end()

    # --- By the mouse ---

    def test_by_the_mouse_alone(self):
        """By the five steps of the guide."""
        seen = self.seen
        seen.click_on(window="QMessageBox", text="No")
        seen.click_on(window="HardwareSettings", name="cmdCancel")
        seen.click("MainForm/cmdStep_1")
        seen.choose_lumo_a()
        seen.click("HardwareSettings/cmdDevice_1")
        seen.paste(self.device, window="ListInputBox", name="Text1")
        seen.click_on(window="ListInputBox", name="cmdOK")
        seen.click("HardwareSettings/cmdListen")
        self.hear_lines()
        seen.click("HardwareSettings/cmdOK")
        seen.click("MainForm/cmdStep_2")
        self.wait_for_status("Ready to Acquire")
        seen.picture("first-job-guide-above-graphs")
        seen.click("MainForm/cmdStep_3")
        seen.click_on(window="ParametersTable", name="cmdClose")
        seen.click("MainForm/cmdStep_4")
        seen.click_on(text="OK")  # the dialog has named the file already
        wait_for(lambda: seen.text("MainForm/StatusBar1_2").endswith(".mdb"), "the file in the status bar")
        self.log = pathlib.Path(seen.text("MainForm/StatusBar1_2").removeprefix("Current File: "))
        self.addCleanup(self.log.unlink, missing_ok=True)
        seen.click("MainForm/cmdStep_5")
        seen.click_on(window="frmIncParamInSum", name="cmdClose")
        self.wait_for_status("Acquiring Data")
        wait_for(lambda: not seen.is_seen("MainForm/cmdStep_5"), "the end of the guide")
        self.wait_for_rows()
        seen.click("MainForm/Stop")
        self.wait_for_status("Ready")
        seen.click("MainForm/Exit")
        seen.click_on(window="QMessageBox", text="Yes")
        self.check_end()


class SimulatedUnit(unittest.TestCase):
    """A second program beside the first one, with a unit and settings of its own."""

    def setUp(self):
        self.desktop = Desktop()
        self.addCleanup(self.desktop.close)
        self.own = self.desktop.path / "own"  # where the second one's folder is made
        self.own.mkdir()
        self.desktop.environment["TMPDIR"] = str(self.own)
        self.log = self.desktop.path / "simulated.mdb"
        self.seen = Seen(self.desktop, os.environ["VELK_PROGRAM"], first="VELK")
        self.addCleanup(self.seen.close)
        self.addCleanup(self.end_what_is_left)

    def processes(self):
        """The command of each process with the second program's settings, by its id."""
        found = {}
        for folder in pathlib.Path("/proc").glob("[0-9]*"):
            with contextlib.suppress(OSError):
                if b"VELK_SETTINGS=%s/" % os.fsencode(self.own) in (folder / "environ").read_bytes():
                    found[int(folder.name)] = os.fsdecode((folder / "cmdline").read_bytes().partition(b"\0")[0])
        return found

    def end_what_is_left(self):
        for process in self.processes():
            with contextlib.suppress(ProcessLookupError):
                os.kill(process, signal.SIGKILL)

    def settings(self):
        folder = self.desktop.path / "config" / "VELK"
        return {path.name: path.read_bytes() for path in folder.iterdir()}

    def second(self):
        """The second program, once it has the keyboard."""
        program = os.path.realpath(os.environ["VELK_PROGRAM"])
        return next((process for process, command in self.processes().items()
                     if os.path.realpath(command) == program and self.desktop.keyboard_program() == process), None)

    def choose(self, bar, letter, title):
        """An item that opens this window. While Connect waits for the unit it does nothing yet, and on a busy machine
        the window takes its time: another Escape would close it as it comes."""
        def opens():
            self.desktop.press("Escape", bar, letter)
            end = time.monotonic() + 5
            while self.desktop.keyboard_owner() != title and time.monotonic() < end:
                time.sleep(0.1)
            return self.desktop.keyboard_owner() == title
        wait_for(opens, title)

    def test_is_tried_beside_the_settings_of_the_user(self):
        desktop, seen = self.desktop, self.seen
        seen.click_on(window="QMessageBox", text="No")
        seen.click_on(window="HardwareSettings", name="cmdCancel")
        wait_for(lambda: seen.is_seen("MainForm/cmdSimulated"), "the guide")
        before = self.settings()
        seen.click("MainForm/cmdSimulated")
        seen.wait_for("MainForm/cmdSimulated", "enabled", "false")
        wait_for(self.second, "the second program")
        program = os.path.realpath(os.environ["VELK_PROGRAM"])
        # A program that starts another is two of them for a moment.
        wait_for(lambda: [os.path.realpath(command) for command in self.processes().values()].count(program) == 1,
                 "a single one")
        title = TITLE + os.environ["VELK_VERSION"]
        desktop.wait_for_window(title)
        desktop.press("alt+d", "c")
        self.choose("alt+f", "r", "Record Data To...")
        desktop.write(str(self.log))
        desktop.press("Return")
        desktop.wait_for_window(title)
        self.choose("alt+d", "s", "Include In Summary Report")
        desktop.press("Return")
        wait_for(lambda: rows_and_columns(self.log)[0] >= ROWS_OF_THE_JOB, "rows in the log")
        seen.picture("simulated-unit")
        self.assertEqual(rows_and_columns(self.log)[1], len(["ID", "Date", "Time"]) + CHANNELS_OF_SIMULATED_UNIT)
        self.assertEqual(self.settings(), before, "the user's settings are left alone")
        desktop.press("alt+d", "p")
        desktop.press("alt+f", "x")
        desktop.wait_for_window("VELK")
        desktop.press("Tab", "Return")
        wait_for(lambda: not self.processes(), lambda: "the end of " + str(self.processes()))
        self.assertEqual(list(self.own.iterdir()), [], "its settings went with it")
        self.assertIsNone(seen.process.poll(), "the first program goes on")
        self.assertEqual(self.settings(), before)


if __name__ == "__main__":
    unittest.main()
