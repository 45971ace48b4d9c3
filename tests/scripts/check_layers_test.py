"""Small trees of files, each with one fault that scripts/check_layers has to name (or none)."""

import pathlib
import tempfile
import unittest

from support import load_script

check_layers = load_script("check_layers")


def faults_of(files):
    """What the check says about a tree given as {path: text}."""
    with tempfile.TemporaryDirectory() as root:
        for name, text in files.items():
            path = pathlib.Path(root) / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
        return check_layers.Tree(root, {"QWidget", "QLabel", "qwidget.h"}).faults()


def includes(name):
    return '#include "{}"\n'.format(name)


class Layers(unittest.TestCase):
    def assert_fault(self, files, *parts):
        faults = faults_of(files)
        self.assertEqual(len(faults), 1, faults)
        for part in parts:
            self.assertIn(part, faults[0])

    def assert_clean(self, files):
        self.assertEqual(faults_of(files), [])

    def test_an_arrow_down_is_fine(self):
        self.assert_clean({"src/store/a.cpp": includes("platform/b.h"), "src/platform/b.h": ""})

    def test_an_arrow_up_is_a_fault(self):
        self.assert_fault({"src/model/a.h": includes("store/b.h"), "src/store/b.h": ""}, "src/model/a.h:1", "layer 4")

    def test_an_arrow_sideways_is_a_fault(self):
        self.assert_fault({"src/formula/a.h": includes("instruments/b.h"), "src/instruments/b.h": ""}, "layer 3")

    def test_the_line_of_the_include_is_told(self):
        self.assert_fault({"src/model/a.h": "\n\n" + includes("store/b.h"), "src/store/b.h": ""}, "src/model/a.h:3:")

    def test_angle_brackets_hide_nothing(self):
        self.assert_fault({"src/model/a.h": "#include <store/b.h>\n", "src/store/b.h": ""}, "layer 4")

    def test_logic_never_includes_a_window(self):
        self.assert_fault({"src/store/a.cpp": includes("store/windows/b.h"), "src/store/windows/b.h": ""}, "window")
        self.assert_fault({"src/graphs/a.cpp": includes("store/windows/b.h"), "src/store/windows/b.h": ""}, "window")

    def test_a_window_includes_its_logic_and_what_stands_below(self):
        self.assert_clean({
            "src/graphs/windows/a.cpp": includes("graphs/b.h") + includes("store/windows/c.h") + includes("model/d.h"),
            "src/graphs/b.h": "", "src/store/windows/c.h": "", "src/model/d.h": ""})

    def test_a_window_includes_no_window_and_no_logic_above_it(self):
        self.assert_fault({"src/store/windows/a.cpp": includes("graphs/windows/b.h"), "src/graphs/windows/b.h": ""},
                          "layer 6")
        self.assert_fault({"src/store/windows/a.cpp": includes("core/b.h"), "src/core/b.h": ""}, "layer 7")

    def test_shell_includes_everything_but_demo(self):
        self.assert_clean({"src/shell/a.cpp": includes("core/b.h") + includes("graphs/windows/c.h"),
                           "src/core/b.h": "", "src/graphs/windows/c.h": ""})
        faults = faults_of({"src/shell/a.cpp": includes("demo/b.h"), "demo/b.h": ""})
        self.assertTrue(any("nothing includes demo" in fault for fault in faults), faults)

    def test_only_demo_includes_shell(self):
        self.assert_fault({"src/core/a.cpp": includes("shell/b.h"), "src/shell/b.h": ""}, "shell")
        self.assert_clean({"demo/a.cpp": includes("shell/b.h"), "src/shell/b.h": ""})

    def test_simulators_and_the_program_do_not_know_each_other(self):
        self.assert_fault({"simulators/a.cpp": includes("platform/b.h"), "src/platform/b.h": ""}, "share no code")
        self.assert_fault({"demo/a.cpp": includes("simulators/b.h"), "simulators/b.h": ""}, "share no code")
        self.assert_clean({"simulators/a.cpp": includes("b.h"), "simulators/b.h": ""})

    def test_widgets_stand_only_in_windows_shell_and_demo(self):
        for name in ("<QWidget>", "<QtWidgets/QLabel>", "<qwidget.h>", '"ui_form.h"', '"graphs/ui_form.h"'):
            with self.subTest(name):
                self.assert_fault({"src/graphs/a.cpp": "#include " + name + "\n"}, "Qt Widgets")
        for place in ("src/graphs/windows/a.cpp", "src/shell/a.cpp", "demo/a.cpp"):
            with self.subTest(place):
                self.assert_clean({place: "#include <QWidget>\n" + includes("shell/ui_main_form.h")})

    def test_other_headers_of_qt_are_fine(self):
        self.assert_clean({"src/graphs/a.cpp": "#include <QImage>\n#include <vector>\n"})

    def test_a_cycle_of_headers_is_a_fault(self):
        self.assert_fault({"src/model/a.h": includes("model/b.h"), "src/model/b.h": includes("model/c.h"),
                           "src/model/c.h": includes("model/a.h")}, "cycle", "a.h -> src/model/b.h -> src/model/c.h")

    def test_two_roads_to_one_header_are_no_cycle(self):
        self.assert_clean({"src/model/a.h": includes("model/b.h") + includes("model/c.h"),
                           "src/model/b.h": includes("model/c.h"), "src/model/c.h": ""})

    def test_a_file_of_601_lines_is_a_fault_and_600_are_not(self):
        self.assert_clean({"src/model/a.cpp": "\n" * 600})
        self.assert_fault({"src/model/a.cpp": "\n" * 601}, "601 lines")
        self.assert_fault({"tests/model/a_test.cpp": "\n" * 601}, "601 lines")

    def test_an_include_that_means_no_file_is_a_fault(self):
        self.assert_fault({"src/model/a.h": includes("model/gone.h")}, "no such file")

    def test_includes_are_written_from_the_folder_on(self):
        self.assert_fault({"src/model/a.h": includes("b.h"), "src/model/b.h": ""}, "folder/file.h")
        self.assert_fault({"src/model/a.h": includes("../model/b.h"), "src/model/b.h": ""}, "folder/file.h")

    def test_a_folder_without_a_layer_is_a_fault(self):
        self.assert_fault({"src/misc/a.h": ""}, "no layer")


if __name__ == "__main__":
    unittest.main()
