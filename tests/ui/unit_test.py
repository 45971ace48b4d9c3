"""The real program on a display, worked by the mouse: the table of a simulated unit is read, edited and sent back, and a
command goes to it by the tools, in both languages; a channel is calibrated on the unit from its curve; the unit is
searched for and found."""

import os
import subprocess
import unittest

from desktop import Desktop, wait_for
from mouse import Seen

UNIT = "LUMO version A"
CHANNELS = 4


class Unit(unittest.TestCase):
    def start(self, language, *readings, silent_port=False):
        self.desktop = Desktop()
        self.addCleanup(self.desktop.close)
        settings = self.desktop.path / "config" / "VELK"
        settings.mkdir(parents=True)
        self.table = self.desktop.path / "table"
        self.journal = self.desktop.path / "sent"
        self.unit = subprocess.Popen(
            [os.environ["VELK_SIM_BOARD"], "--unit", UNIT, "--table-file", self.table, "--journal", self.journal,
             "--interval", "0.2", *readings], stdout=subprocess.PIPE, text=True)
        self.addCleanup(self.end_unit)
        ports = [self.unit.stdout.readline().strip()]
        if silent_port:
            nobody, port = os.openpty()
            self.addCleanup(os.close, nobody)
            ports.insert(0, os.ttyname(port))
            os.close(port)
        (settings / "VELK2.ini").write_text(
            "[General]\nCurrent_language=%s\n[Protocol]\nSerialData=%s\nPortNumber=%d\n" %
            (language, UNIT, len(ports)) +
            "".join("PortDevice%d=%s\n" % (number, (ports + ["/dev/velk-none"] * 3)[number - 1])
                    for number in range(1, 5)) +
            "[Parameters]\nNumberOfParameters=%d\n" % CHANNELS +
            "".join("[Parameter%d]\nname=Channel %d\nunits=psi\nmax=100\nformat=#0.00\nFormIndex=1\nGraphVisible=True\n" %
                    (number, number) for number in range(1, CHANNELS + 1)))
        self.seen = Seen(self.desktop, os.environ["VELK_PROGRAM"])
        self.addCleanup(self.seen.close)

    def end_unit(self):
        self.unit.terminate()
        self.unit.communicate()

    def wait_for_table(self, *words):
        """Waits until the unit's table has these words."""
        wait_for(lambda: all(word in self.table.read_text().split() for word in words),
                 lambda: "%r in the table %r" % (words, self.table.read_text()))

    def last_mode(self):
        modes = [line.split("\t")[2] for line in self.journal.read_text().splitlines() if "\tmode\t" in line]
        return modes[-1]

    def walk(self, language):
        self.start(language)
        self.seen.choose("mnuTools", "mnuToolsOrbenHardware")
        self.seen.place("OrbenSettings/Grid1")
        self.seen.picture("unit-table-" + language)
        self.seen.click_on(window="OrbenSettings", row=1, column=2, text="1")
        self.desktop.click()
        self.desktop.press("ctrl+a")
        self.desktop.write("2.5")
        self.desktop.press("Return")
        self.seen.find(window="OrbenSettings", row=1, column=2, text="2.5")
        self.seen.click("OrbenSettings/Command1")
        self.wait_for_table("2.5")
        self.seen.wait_for("OrbenSettings/cmdTools", "enabled", "true")
        wait_for(lambda: self.last_mode() == "run", "the unit to run")

        self.seen.click("OrbenSettings/cmdTools")
        self.seen.place("ORBENHardware/List1")
        self.seen.picture("unit-tools-" + language)
        self.seen.click_on(window="ORBENHardware", row=2, column=0)
        self.seen.click("ORBENHardware/Command2")
        self.seen.place("QInputDialog")
        self.desktop.write("3,5")
        self.desktop.press("Return")
        self.seen.place("QMessageBox")
        self.desktop.press("Return")
        self.wait_for_table("3.5", "2.5")
        self.assertEqual(self.last_mode(), "command")
        self.seen.wait_for("ORBENHardware/Command1", "enabled", "true")
        self.seen.click("ORBENHardware/Command1")
        wait_for(lambda: self.last_mode() == "run", "the unit to run behind its tools")

        self.seen.wait_for("OrbenSettings/cmdClose", "enabled", "true")
        self.seen.click("OrbenSettings/cmdClose")
        wait_for(lambda: not self.seen.is_seen("OrbenSettings"), "the window to close")

    def put_away_box(self, text):
        self.seen.wait_for("QMessageBox", "text", text)
        self.desktop.press("Return")

    def answer_input(self, text):
        self.seen.place("QInputDialog")
        self.desktop.write(text)
        self.desktop.press("Return")

    def search(self, language):
        """A search that is cancelled goes back to the settings of before; the next one finds the unit."""
        self.start(language, silent_port=True)
        self.seen.choose("mnuEdit", "mnuEditAutoDetect")
        self.seen.place("frmAutoDetect/cmdCancel")
        self.seen.picture("detect-search-" + language)
        self.seen.click("frmAutoDetect/cmdCancel")
        self.seen.place("QMessageBox")
        self.seen.picture("detect-unknown-" + language)
        unknown = self.seen.text("QMessageBox")
        self.desktop.press("Return")
        wait_for(lambda: self.seen.text("QMessageBox") not in ("", unknown), "the question behind it")
        self.seen.picture("detect-before-" + language)
        self.desktop.press("Return")
        wait_for(lambda: not self.seen.is_seen("QMessageBox"), "the question to go")
        self.assertEqual(self.last_mode(), "run")

        self.seen.choose("mnuEdit", "mnuEditAutoDetect")
        self.seen.place("QMessageBox")
        self.assertIn("KESTA", self.seen.text("QMessageBox"))
        self.seen.picture("detect-found-" + language)
        self.desktop.press("Return")
        wait_for(lambda: not self.seen.is_seen("QMessageBox"), "the box to go")
        settings = self.desktop.path / "config" / "VELK" / "VELK2.ini"
        wait_for(lambda: "SerialData=KESTA version 4" in settings.read_text().splitlines(), "the unit to be saved")
        wait_for(lambda: self.last_mode() == "run", "the unit to run behind the search")

    def test_is_found_in_english(self):
        self.search("English")

    def test_is_found_in_russian(self):
        self.search("Russian")

    def test_is_calibrated_from_a_curve(self):
        self.start("English", "--reading", "4", "--reading", "20")
        self.seen.click("MainForm/Acquire")
        self.seen.wait_for("MainForm/StatusBar1_1", "text", "Ready to Acquire")
        x, y, _, _ = self.seen.place("GraphFormNew:1/LabelPanel")
        self.seen.point(x + 10, y + 10)
        self.desktop.click(3)
        self.seen.click("Properties/Command3")
        self.answer_input("0")
        self.put_away_box("Reading is 4")
        self.answer_input("100")
        self.put_away_box("Reading is 20")
        self.seen.wait_for("QMessageBox", "text",
                           "Gain = 6.25 and offset = -25 , do you wish to accept these values?")
        self.seen.picture("unit-calibration")
        self.desktop.press("Return")
        self.wait_for_table("6.25", "-25")
        wait_for(lambda: self.last_mode() == "run", "the unit to run behind its calibration")
        self.seen.wait_for("Properties", "enabled", "true")  # until then a box with its own Cancel stands over it
        self.seen.click("Properties/cmdCancel")
        wait_for(lambda: not self.seen.is_seen("Properties"), "the window to close")
        self.seen.wait_for("MainForm/StatusBar1_1", "text", "Ready to Acquire")

    def test_is_edited_and_commanded_in_english(self):
        self.walk("English")

    def test_is_edited_and_commanded_in_russian(self):
        self.walk("Russian")


if __name__ == "__main__":
    unittest.main()
