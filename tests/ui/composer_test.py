"""The real program on a display, worked by the mouse: the page of a graph is put together, saved and printed, and found as
it was left after a restart."""

import struct
import subprocess
import unittest
import zlib

from desktop import wait_for
from played_log import DAY, PlayedLog

ROWS = 7200
PAGE = "frmPrintGraph/"
SHEET_WIDTH, SHEET_HEIGHT = 210, 297
LOGO = (60, 40)  # pixels: 30 by 20 mm on the page, at 20, 10 until it is dragged

# A row a second from midnight on; a client's name in a comment.
LOG = """
INSERT INTO GraphSettings VALUES ('Pressure', 'psi', 0, 1000, '#0.00', 1, 255);
CREATE TABLE SummaryReport (Date DATE, Time DATE, Pressure DOUBLE, Comments LONGTEXT);
INSERT INTO SummaryReport VALUES (%(day)d, 0.05, 100, 'packer set');
INSERT INTO logData (Date, Time, Pressure) SELECT %(day)d, n / 86400.0, n %% 900 FROM number;
""" % {"day": DAY}


def green_png(width, height):
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    rows = (b"\0" + b"\0\xff\0" * width) * height
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))


class Composer(PlayedLog):
    def setUp(self):
        self.make_log("Pressure DOUBLE", ROWS, LOG)
        logo = self.desktop.path / "logo.png"
        logo.write_bytes(green_png(*LOGO))
        self.write_settings("CompanyLogoFile=%s\n" % logo)

    def open(self):
        self.play_back()
        self.seen.click("GraphFormNew:1/Print")
        self.seen.place(PAGE + "Picture1")

    def leave(self):
        self.seen.click(PAGE + "cmdClose")
        wait_for(lambda: not self.seen.is_seen("frmPrintGraph"), "the page to go")
        self.seen.choose("mnuFile", "mnuFileExit")
        self.desktop.wait_for_window("VELK")
        self.desktop.press("Tab", "Return")  # the box begins on the safe answer
        wait_for(lambda: self.seen.process.poll() is not None, "the program's end")

    def on_screen(self, x, y):
        """A place on the sheet, in millimetres."""
        left, top, width, height = self.seen.place(PAGE + "Picture1")
        return left + round(x * width / SHEET_WIDTH), top + round(y * height / SHEET_HEIGHT)

    def value(self, field):
        return float(self.seen.property(PAGE + field, "value"))

    def press(self, key, checked):
        self.seen.click(PAGE + key)
        self.seen.wait_for(PAGE + key, "checked", checked)

    def put_together(self):
        for key in ("DrawCurves", "Comments", "Logo"):
            self.press(key, "true")
        self.assertEqual([self.value(field) for field in ("LogoLeft", "LogoTop", "LogoWidth")], [20, 10, 30])
        self.desktop.drag(*self.on_screen(30, 20), *self.on_screen(130, 50), steps=8)
        wait_for(lambda: abs(self.value("LogoLeft") - 120) < 1, lambda: "the logo, at %g" % self.value("LogoLeft"))
        self.assertAlmostEqual(self.value("LogoTop"), 40, delta=1)
        self.seen.picture("composer")

    def save(self):
        picture = self.desktop.path / "page.jpg"
        self.seen.click(PAGE + "SaveToFile")
        self.seen.choose_file(picture)
        wait_for(picture.exists, "the picture")
        self.assertEqual(picture.read_bytes()[:2], b"\xff\xd8")

    def print(self):
        pdf = self.desktop.path / "page.pdf"
        self.seen.click(PAGE + "Print")
        self.print_to_pdf(pdf)
        wait_for(pdf.exists, "the document")
        text = subprocess.run(["pdftotext", pdf, "-"], capture_output=True, text=True, check=True).stdout
        for words in ("Pressure (psi)", "packer set", "00:00:00", "02:00:00", "14-Mar-26"):
            self.assertIn(words, text)

    def test_a_page_is_put_together_and_found_again_after_a_restart(self):
        self.open()
        self.put_together()
        self.save()
        self.print()
        left, top = self.value("LogoLeft"), self.value("LogoTop")
        self.leave()
        self.open()
        self.seen.wait_for(PAGE + "Logo", "checked", "true")
        self.assertEqual((self.value("LogoLeft"), self.value("LogoTop")), (left, top))
        self.leave()


if __name__ == "__main__":
    unittest.main()
