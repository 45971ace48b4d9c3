"""The real program on a display: an unknown unit is connected, its channels are set up in their table, and a job of it
is recorded. Once by keys alone, once by the mouse alone; what a hand on the mouse would have to type, it pastes."""

import contextlib
import copy
import os
import pathlib
import re
import sqlite3
import struct
import subprocess
import unittest

from desktop import Desktop, wait_for
from mouse import STEPS_OF_A_DRAG, Seen

TITLE = "Velk Acquisition Console (VELK) - version "
UNIT = "LUMO version A"
ROWS_OF_THE_JOB = 6


class Channel:
    def __init__(self, name, units, low, high, colour, sample, picture, alarm, graph, gain, offset):
        self.name, self.units, self.low, self.high = name, units, low, high
        self.colour, self.sample, self.picture, self.alarm = colour, sample, picture, alarm
        self.graph, self.gain, self.offset = graph, gain, offset

    def stored(self):
        """The lines of its section in the settings. A colour is kept as a number, blue in front."""
        plain = [text.replace(",", ".") for text in (self.low, self.high, self.gain, self.offset)]
        red, green, blue = (int(self.colour[i:i + 2], 16) for i in (1, 3, 5))
        return ["name=" + self.name, "units=" + self.units, "min=" + plain[0], "max=" + plain[1],
                "color=%d" % (blue << 16 | green << 8 | red), "format=" + self.picture, "FormIndex=" + self.graph,
                "upperalarm=" + (self.alarm or "None"), "loweralarm=None", "Gain=" + plain[2], "Offset=" + plain[3]]

    def logged(self, sent):
        """What a log keeps of a value that was sent: gain and offset are 32 bits wide, and so is the result."""
        def single(value):
            return struct.unpack("f", struct.pack("f", value))[0]
        gain, offset = (single(float(text.replace(",", "."))) for text in (self.gain, self.offset))
        return single(sent * gain + offset)


# Both kinds of decimal signs, and two channels on one graph.
CHANNELS = [
    Channel("Pressure", "bar", "-10", "20000,5", "#c8102e", "123456.1", "#0.0", "15000", "1", "2,5", "-10"),
    Channel("Flow", "l/min", "0", "1000", "#0057b8", "12345678", "#0", "", "1", "0.1", "0,3"),
    Channel("Density", "kg/l", "0", "3", "#1b7f3b", "123.1234", "#0.0000", "", "7", "1", "0"),
    Channel("Total", "m3", "0", "5000", "#7b2d8e", "12345.12", "#0.00", "", "2", "1", "0.25"),
]
SAMPLES = ["12345678", "123456.1", "12345.12", "1234.123", "123.1234", "12.12345", "1.23456E+01"]


class Desk(unittest.TestCase):
    def setUp(self):
        self.channels = copy.deepcopy(CHANNELS)
        self.desktop = Desktop()
        self.addCleanup(self.desktop.close)
        self.settings = self.desktop.path / "config" / "VELK"
        self.settings.mkdir(parents=True)
        self.log = self.desktop.path / "job.mdb"
        self.journal = self.desktop.path / "sent"
        self.unit = subprocess.Popen(
            [os.environ["VELK_SIM_UNIT"], "--unit", UNIT, "--interval", "1", "--journal", self.journal],
            stdout=subprocess.PIPE, text=True)
        self.addCleanup(self.end_unit)
        # Whatever serial ports this machine has, the program gets the unit's.
        (self.settings / "VELK2.ini").write_text("[Protocol]\nPortDevice1=%s\n" % self.unit.stdout.readline().strip())
        # What comes up first asks whether it goes on with the present port settings.
        self.seen = Seen(self.desktop, os.environ["VELK_PROGRAM"], first="VELK")
        self.addCleanup(self.seen.close)
        self.program = self.seen.process

    def end_unit(self):
        self.unit.terminate()
        self.unit.communicate()

    # --- What is seen ---

    def wait_for_status(self, status):
        self.seen.wait_for("MainForm/StatusBar1_1", "text", status)

    def wait_for_rows(self):
        wait_for(lambda: len(self.logged_rows()) >= ROWS_OF_THE_JOB, "rows in the log")

    def logged_rows(self):
        try:
            with contextlib.closing(sqlite3.connect("file:%s?mode=ro" % self.log, uri=True)) as log:
                return log.execute("SELECT * FROM logData ORDER BY ID").fetchall()
        except sqlite3.OperationalError:  # it is being made
            return []

    def missing_in_settings(self, channels):
        text = (self.settings / "VELK2.ini").read_text(encoding="utf-8")
        missing = []
        for number, channel in enumerate(channels, 1):
            section = text.partition("[Parameter%d]\n" % number)[2].partition("\n[")[0].splitlines()
            missing += ["%d: %s" % (number, line) for line in channel.stored() if line not in section]
        return missing

    def wait_for_settings(self, channels):
        """They are on the disk while the program runs, not only at its end."""
        wait_for(lambda: not self.missing_in_settings(channels), lambda: str(self.missing_in_settings(channels)))

    def check_log(self, channels):
        """The rows are the frames that were sent, each once and in order, from some frame on."""
        with contextlib.closing(sqlite3.connect(self.log)) as log:
            columns = [column[1] for column in log.execute("PRAGMA table_info(logData)")]
        self.assertEqual(columns[3:], [channel.name for channel in channels])
        rows = [list(row[3:]) for row in self.logged_rows()]
        self.assertGreaterEqual(len(rows), ROWS_OF_THE_JOB)
        frames = [line.split("\t") for line in self.journal.read_text().splitlines()]
        # One that was under way when the port was closed is cut.
        sound = [frame[2].replace("\\r\\n", "") for frame in frames if frame[1] == "sound"]
        values = [[float(field) for field in frame.split()[1:]] for frame in sound]
        sent = [[channel.logged(value) for channel, value in zip(channels, frame)] for frame in values]
        self.assertIn(rows[0], sent)
        first = sent.index(rows[0])
        self.assertEqual(rows, sent[first:first + len(rows)])
        self.assertGreater(len({tuple(row) for row in rows}), 1, "the values of the unit change")

    def check_charts(self):
        windows = {each["text"] for each in self.seen.listing() if each["class"] == "velk::GraphFormNew"}
        self.assertEqual(windows, {"Pressure", "Density", "Total"}, "Flow stands on the graph of Pressure")

    def check_end(self, channels):
        wait_for(lambda: self.program.poll() is not None, "the program's end")
        self.assertEqual(self.program.returncode, 0)
        self.assertEqual(self.missing_in_settings(channels), [])
        self.check_log(channels)

    # --- By keys ---

    def type_into_next_cells(self, *texts):
        for text in texts:
            self.desktop.write(text)
            self.desktop.press("Tab")

    def choose_colour(self, channel):
        self.desktop.press("space")
        self.desktop.wait_for_window("Select a color for " + channel.name)
        self.desktop.press("alt+h", "ctrl+a")
        self.desktop.write(channel.colour)
        self.desktop.press("Return")
        self.desktop.wait_for_window("Parameters Table")
        self.desktop.press("Tab")

    def choose_format(self, channel):
        self.desktop.press("F2")
        self.desktop.wait_for_window("Number Format")
        self.desktop.press(*["Down"] * (SAMPLES.index(channel.sample) + 1), "Return")
        self.desktop.wait_for_window("Parameters Table")
        self.desktop.press("Tab")

    def test_by_keys_alone(self):
        desktop = self.desktop
        self.seen.answer("Yes")
        title = TITLE + os.environ["VELK_VERSION"]
        desktop.wait_for_window(title)
        self.seen.menu("alt+e", "s")
        desktop.wait_for_window("Edit Hardware Settings")
        desktop.press("l", "alt+n", "ctrl+a")
        desktop.write(str(len(self.channels)))
        desktop.press("Return")
        desktop.wait_for_window(title)
        self.seen.menu("alt+d", "c")
        self.wait_for_status("Ready to Acquire")

        self.seen.menu("alt+e", "t")
        desktop.wait_for_window("Parameters Table")
        for channel in self.channels:
            self.type_into_next_cells(channel.name, channel.units, channel.low, channel.high)
            self.choose_colour(channel)
            self.choose_format(channel)
            desktop.press("Tab")
            if channel.alarm:
                desktop.write(channel.alarm)
            desktop.press("Tab")
            self.type_into_next_cells(channel.graph, channel.gain, channel.offset)
        desktop.press("Escape")
        desktop.wait_for_window(title)
        self.wait_for_settings(self.channels)
        self.check_charts()

        self.seen.menu("alt+f", "r")
        desktop.wait_for_window("Record Data To...")
        desktop.write(str(self.log))
        desktop.press("Return")
        desktop.wait_for_window(title)
        self.seen.menu("alt+d", "s")
        desktop.wait_for_window("Include In Summary Report")
        desktop.press("Return")
        self.wait_for_status("Acquiring Data")
        self.wait_for_rows()
        self.seen.menu("alt+d", "p")
        self.wait_for_status("Ready")
        self.seen.menu("alt+f", "x")
        desktop.wait_for_window("VELK")
        self.seen.answer("Yes")
        self.check_end(self.channels)

    # --- By the mouse ---

    def cell(self, row, column):
        return {"window": "ParametersTable", "name": "Grid1", "row": row, "column": column}

    def paste_cells(self, row, column, rows):
        self.desktop.copy(os.environ["VELK_CLIPBOARD_OWNER"], "".join("\t".join(cells) + "\r\n" for cells in rows))
        self.seen.click_on(3, **self.cell(row, column))
        self.seen.click_on(name="mnuPaste")
        self.seen.find(text=rows[-1][0], **self.cell(row + len(rows) - 1, column))

    def pick_colour(self, title, place):
        """A square of the basic colours; gives what the dialog tells about it."""
        self.seen.find(**{"class": "QColorDialog", "text": title})
        wells = [each for each in self.seen.listing() if each["class"] == "QWellArray"]
        well = min(wells, key=lambda each: each["y"])
        across, down = place  # of 8 and 6
        self.seen.point(well["x"] + well["w"] * (2 * across + 1) // 16, well["y"] + well["h"] * (2 * down + 1) // 12)
        self.desktop.click()
        told = [each["text"] for each in self.seen.listing() if re.fullmatch("#[0-9a-f]{6}", each["text"])]
        self.seen.click_on(window="QColorDialog", text="OK")
        self.seen.find(window="ParametersTable", name="cmdClose")
        return told[0]

    def test_by_the_mouse_alone(self):
        self.seen.click_on(window="QMessageBox", text="Yes")
        self.seen.choose("mnuEdit", "mnuEditSerialPort")
        self.seen.choose_lumo_a()
        self.seen.paste(str(len(self.channels)), window="HardwareSettings", name="txtNumberOfParameters")
        self.seen.picture("serial-port")
        self.seen.click_on(window="HardwareSettings", name="cmdOK")
        self.seen.click("MainForm/Acquire")
        self.wait_for_status("Ready to Acquire")

        self.seen.choose("mnuEdit", "mnuEditTable")
        self.paste_cells(0, 0, [[each.name, each.units, each.low, each.high] for each in self.channels])
        self.paste_cells(0, 8, [[each.graph, each.gain, each.offset] for each in self.channels])
        self.paste_cells(0, 7, [[each.alarm] for each in self.channels])
        for row, place in enumerate([(1, 0), (2, 1)]):
            self.seen.click_on(**self.cell(row, 4))
            self.channels[row].colour = self.pick_colour("Select a color for " + self.channels[row].name, place)
        # Two rows at once.
        begin, end = self.seen.middle_of(**self.cell(2, 4)), self.seen.middle_of(**self.cell(3, 4))
        self.desktop.drag(*begin, *end, STEPS_OF_A_DRAG)
        self.seen.click_on(3, **self.cell(3, 4))
        self.seen.click_on(name="mnuChange")
        self.channels[2].colour = self.channels[3].colour = self.pick_colour("Select a color for Total", (4, 0))
        for row, channel in enumerate(self.channels):
            self.seen.click_on(**self.cell(row, 5))
            self.seen.click_on(window="ListInputBox", name="List1", text=channel.sample)
            self.seen.click_on(window="ListInputBox", name="cmdOK")
            self.seen.find(text=channel.sample, **self.cell(row, 5))
        self.seen.picture("table")
        self.seen.click_on(window="ParametersTable", name="cmdClose")
        self.seen.find(window="MainForm", name="mnuFile")
        self.assertEqual(len({each.colour for each in self.channels}), 3)
        self.wait_for_settings(self.channels)
        self.check_charts()

        self.seen.choose("mnuFile", "mnuFileRecord")
        self.seen.paste(str(self.log), name="fileNameEdit")
        self.seen.click_on(text="OK")
        self.seen.click("MainForm/Pause")
        self.seen.click_on(window="frmIncParamInSum", name="cmdClose")
        self.wait_for_status("Acquiring Data")
        self.wait_for_rows()
        self.seen.picture("job")
        self.seen.click("MainForm/Stop")
        self.wait_for_status("Ready")
        self.seen.click("MainForm/Exit")
        self.seen.click_on(window="QMessageBox", text="Yes")
        self.check_end(self.channels)


if __name__ == "__main__":
    unittest.main()
