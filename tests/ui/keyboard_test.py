"""The real program on a display, worked by nothing but key presses, from its first start to its last exit."""

import os
import pty
import tty
import unittest

from desktop import Desktop, wait_for

VELK = os.environ["VELK_PROGRAM"]
VERSION = os.environ["VELK_VERSION"]
ENGLISH_TITLE = "Velk Acquisition Console (VELK) - version " + VERSION
RUSSIAN_TITLE = "Velk Acquisition Console (VELK) - версия " + VERSION


class Keyboard(unittest.TestCase):
    def setUp(self):
        self.desktop = Desktop()
        self.addCleanup(self.desktop.close)
        self.settings = self.desktop.path / "config" / "VELK"
        self.settings.mkdir(parents=True)
        # Whatever serial ports this machine has, the program gets one that can be opened.
        master, slave = pty.openpty()
        self.addCleanup(os.close, master)
        self.addCleanup(os.close, slave)
        tty.setraw(slave)
        (self.settings / "VELK2.ini").write_text("[Protocol]\nPortDevice1=%s\n" % os.ttyname(slave))

    def lines(self, name):
        """The lines of a settings file; none while it isn't there."""
        path = self.settings / name
        return path.read_text(encoding="utf-8").splitlines() if path.exists() else []

    def wait_for_line(self, name, line):
        wait_for(lambda: line in self.lines(name), "%r in %s" % (line, name))

    def check_lines(self, name, *expected):
        lines = self.lines(name)
        self.assertEqual([line for line in expected if line not in lines], [], "missing in " + name)

    def end_of(self, program):
        wait_for(lambda: program.poll() is not None, "the program's end")
        return program.returncode

    def choose_protocol(self, program, keys, protocol, parameters, sensitivity):
        desktop = self.desktop
        desktop.open_menu(program, "alt+e")
        desktop.press("s")
        desktop.wait_for_window("Edit Hardware Settings")
        desktop.press(*keys)
        desktop.press("alt+n", "ctrl+a")
        desktop.write(parameters)
        desktop.press("Tab", "ctrl+a")
        desktop.write(sensitivity)
        desktop.press("Return")
        desktop.wait_for_window(ENGLISH_TITLE)
        self.wait_for_line("VELK2.ini", "SerialData=" + protocol)
        self.check_lines("VELK2.ini", "NumberOfParameters=" + parameters, "SensitivityCriterion=" + sensitivity)

    def save_template(self, program, name):
        desktop = self.desktop
        desktop.open_menu(program, "alt+e")
        desktop.press("v")
        desktop.wait_for_window("Save Settings Template")
        desktop.write(name)
        desktop.press("Return")
        desktop.wait_for_window(ENGLISH_TITLE)
        self.wait_for_line("VELKTemplates.ini", "TheTemplateName4=" + name)

    def change_to_russian(self, program):
        desktop = self.desktop
        desktop.open_menu(program, "alt+e")
        # Two items have this letter: the first press only goes to Load Settings Template.
        desktop.press("l", "l", "Return")
        desktop.wait_for_window("Select language")
        desktop.press("Down", "Down", "Return")
        desktop.wait_for_window("VELK")
        desktop.press("Return")
        self.assertEqual(self.end_of(program), 0)
        self.wait_for_line("VELK2.ini", "Current_language=Russian")

    def load_last_template_in_russian(self, program):
        desktop = self.desktop
        desktop.open_menu(program, "alt+Cyrillic_en")
        desktop.press("Cyrillic_ze")
        desktop.wait_for_window("Загрузить шаблон настроек")
        desktop.press("End", "Return")
        desktop.wait_for_window("VELK")  # it replaces the present set-up; No is what Enter answers
        desktop.press("Tab", "Return")
        desktop.wait_for_window(RUSSIAN_TITLE)

    def exit_in_russian(self, program):
        desktop = self.desktop
        desktop.open_menu(program, "alt+Cyrillic_ef")
        desktop.press("Cyrillic_yeru")
        desktop.wait_for_window("VELK")
        desktop.press("Tab", "Return")
        self.assertEqual(self.end_of(program), 0)

    def test_a_template_outlives_a_change_of_language_and_a_restart(self):
        desktop = self.desktop
        program = desktop.start(VELK)
        desktop.wait_for_window("VELK")  # goes on with the present port settings?
        desktop.press("Return")
        desktop.wait_for_window(ENGLISH_TITLE)
        self.choose_protocol(program, ["l"], "LUMO version A", "4", "35")
        self.save_template(program, "Well 7")
        # One below version 3, which wants modem lines that this port doesn't have.
        self.choose_protocol(program, ["k", "Down"], "KESTA version 4", "18", "50")
        self.change_to_russian(program)
        self.check_lines("VELK2.ini", "SerialData=KESTA version 4", "SensitivityCriterion=50")

        desktop.use_keyboard_layout("ru")
        program = desktop.start(VELK)
        desktop.wait_for_window(RUSSIAN_TITLE)
        self.load_last_template_in_russian(program)
        self.exit_in_russian(program)

        self.check_lines("VELKWell 7.ini", "NumberOfParameters=4", "SerialData=LUMO version A", "SensitivityCriterion=35")
        self.check_lines("VELK2.ini", "Current_language=Russian", "SerialData=LUMO version A", "SensitivityCriterion=35")
        self.check_lines("VELKTemplates.ini", "NumberOfTemplates=4", "TheTemplateName4=Well 7")
        self.assertEqual(sorted(path.name for path in self.settings.iterdir()),
                         ["VELK2.ini", "VELKAny serial lines.ini", "VELKFormatted lines (blank, CR).ini",
                          "VELKFormatted lines (comma, CR LF).ini", "VELKTemplates.ini", "VELKWell 7.ini"])


if __name__ == "__main__":
    unittest.main()
