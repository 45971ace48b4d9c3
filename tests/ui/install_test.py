"""What `cmake --install` leaves: the program with all that it needs, found by its name and in the menu."""

import os
import pathlib
import subprocess
import tempfile
import unittest


class Install(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory(prefix="velk-install-")
        cls.root = pathlib.Path(cls.folder.name)
        subprocess.run(["cmake", "--install", os.environ["VELK_BUILD"], "--prefix", str(cls.root)], check=True,
                       capture_output=True)

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def test_the_program_is_found_in_bin_with_its_files_beside_it(self):
        program = (self.root / "bin" / "velk").resolve()
        self.assertTrue(os.access(program, os.X_OK), program)
        for name in ["VELK Translation Data.mdb", "VELKMESSAGES.MDB", "velk_sim_unit"]:
            self.assertTrue((program.parent / name).is_file(), name)

    def test_the_menu_knows_it_by_an_entry_and_an_icon(self):
        entry = (self.root / "share/applications/velk.desktop").read_text(encoding="utf-8").splitlines()
        for line in ["Type=Application", "Name=VELK", "Exec=velk", "Icon=velk"]:
            self.assertIn(line, entry)
        self.assertTrue((self.root / "share/icons/hicolor/scalable/apps/velk.svg").is_file())

    def test_the_licences_of_what_it_uses_come_along(self):
        texts = self.root / "share/doc/VELK"
        self.assertIn("Qt 6", (texts / "licences.txt").read_text(encoding="utf-8"))
        for name in ["GPL-3", "LGPL-3", "LGPL-2.1"]:
            self.assertGreater((texts / name).stat().st_size, 1000, name)


if __name__ == "__main__":
    unittest.main()
