"""What `cmake --install` leaves: the program with all that it needs, found by its name and in the menu. And that `run`
builds what it starts and what is installed behind it: the tests have everything, a fresh clone has not."""

import os
import pathlib
import re
import subprocess
import tempfile
import unittest

from desktop import wait_for

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent


def made_by(target):
    """The programs that are linked where this target is built, by their place in the build folder."""
    commands = subprocess.run(["ninja", "-C", os.environ["VELK_BUILD"], "-t", "commands", target], check=True,
                              capture_output=True, text=True)
    return re.findall(r" -o (\S+)", commands.stdout)


def sections_of_run():
    """By the program that it starts: the targets that `run` builds ahead of that."""
    text = (ROOT / "run").read_text(encoding="utf-8")
    builds = [targets.split() for targets in re.findall(r"^ *scripts/build release (.*)$", text, re.MULTILINE)]
    starts = re.findall(r"^ *exec build/release/(\S+)", text, re.MULTILINE)
    return dict(zip(starts, builds, strict=True))


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
        for name in ["VELK Translation Data.mdb", "VELKMESSAGES.MDB", "velk_jet_reader", "velk_sim_unit"]:
            self.assertTrue((program.parent / name).is_file(), name)

    def test_the_installed_program_starts(self):
        settings = self.root / "settings"
        environment = {**os.environ, "QT_QPA_PLATFORM": "offscreen", "HOME": str(self.root),
                       "VELK_SETTINGS": str(settings)}
        with subprocess.Popen([self.root / "bin" / "velk"], env=environment, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL) as program:
            try:
                # The first start puts its ready-made templates there.
                wait_for(lambda: program.poll() is not None or list(settings.glob("VELKTemplates*")), "the settings")
                self.assertIsNone(program.poll(), "it has ended by itself")
            finally:
                program.kill()

    def test_run_builds_what_it_starts(self):
        for program, targets in sections_of_run().items():
            built = [file for target in targets for file in made_by(target)]
            self.assertIn(program, built)

    def test_what_is_installed_is_built_with_the_program_alone(self):
        self.assertEqual(sections_of_run()["src/shell/velk"], ["velk"])
        built = {pathlib.Path(file).name for file in made_by("velk")}
        folder = (self.root / "bin" / "velk").resolve().parent
        for installed in folder.iterdir():
            if os.access(installed, os.X_OK):
                self.assertIn(installed.name, built)

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
