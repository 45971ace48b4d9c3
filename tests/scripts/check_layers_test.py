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
        self.assert_clean({"src/log/a.cpp": includes("platform/b.h"), "src/platform/b.h": ""})

    def test_an_arrow_up_is_a_fault(self):
        self.assert_fault({"src/model/a.h": includes("log/b.h"), "src/log/b.h": ""}, "src/model/a.h:1", "layer 5")

    def test_an_arrow_sideways_is_a_fault(self):
        self.assert_fault({"src/formula/a.h": includes("instruments/b.h"), "src/instruments/b.h": ""}, "layer 4")

    def test_two_types_of_one_name_are_a_fault(self):
        column = "namespace velk {\n\n%s {\n"
        self.assert_fault({"src/log/a.h": column % "struct Column", "src/settings/b.h": column % "enum class Column : int"},
                          "src/settings/b.h", "velk::Column", "src/log/a.h")

    def test_types_that_cannot_be_mixed_up_may_share_a_name(self):
        self.assert_clean({
            "src/log/a.h": "namespace velk {\nstruct Column {\n",
            "src/log/b.h": "namespace velk {\nstruct Column;\n",
            "src/log/c.cpp": "namespace velk {\nnamespace {\nstruct Column {\n};\n}  // namespace\n",
            "src/log/d.h": "namespace velk::raw {\nstruct Column {\n"})

    def test_the_line_of_the_include_is_told(self):
        self.assert_fault({"src/model/a.h": "\n\n" + includes("log/b.h"), "src/log/b.h": ""}, "src/model/a.h:3:")

    def test_angle_brackets_hide_nothing(self):
        self.assert_fault({"src/model/a.h": "#include <log/b.h>\n", "src/log/b.h": ""}, "layer 5")

    def test_logic_never_includes_a_window(self):
        self.assert_fault({"src/log/a.cpp": includes("log/windows/b.h"), "src/log/windows/b.h": ""}, "window")
        self.assert_fault({"src/graphs/a.cpp": includes("log/windows/b.h"), "src/log/windows/b.h": ""}, "window")

    def test_a_window_includes_its_logic_and_what_stands_below(self):
        self.assert_clean({
            "src/graphs/windows/a.cpp": includes("graphs/b.h") + includes("log/windows/c.h") + includes("model/d.h"),
            "src/graphs/b.h": "", "src/log/windows/c.h": "", "src/model/d.h": ""})

    def test_a_window_includes_no_window_and_no_logic_above_it(self):
        self.assert_fault({"src/log/windows/a.cpp": includes("graphs/windows/b.h"), "src/graphs/windows/b.h": ""},
                          "layer 7")
        self.assert_fault({"src/log/windows/a.cpp": includes("core/b.h"), "src/core/b.h": ""}, "layer 8")

    def test_windows_of_one_layer_do_not_know_each_other(self):
        self.assert_fault({"src/log/windows/a.cpp": includes("settings/windows/b.h"),
                           "src/settings/windows/b.h": ""}, "layer 5")

    def test_the_layers_stand_in_their_order(self):
        order = ("base", "platform", "i18n", "model", "formula", "log", "reports", "graphs", "core")
        for low, high in zip(order, order[1:]):
            with self.subTest(high):
                self.assert_clean({"src/%s/a.h" % high: includes(low + "/b.h"), "src/%s/b.h" % low: ""})
                self.assert_fault({"src/%s/b.h" % low: includes(high + "/a.h"), "src/%s/a.h" % high: ""}, "layer")

    def test_a_room_includes_the_rooms_that_it_is_given(self):
        self.assert_clean({"src/platform/database/a.cpp": includes("platform/files/b.h"), "src/platform/files/b.h": ""})
        self.assert_clean({"src/instruments/link/a.cpp": includes("instruments/reading/b.h"),
                           "src/instruments/reading/b.h": ""})

    def test_a_room_includes_no_other_room_of_its_folder(self):
        self.assert_fault({"src/platform/files/a.cpp": includes("platform/database/b.h"),
                           "src/platform/database/b.h": ""}, "a.cpp:1", "platform/files does not know platform/database")
        self.assert_fault({"src/platform/loop/a.h": includes("platform/files/b.h"), "src/platform/files/b.h": ""},
                          "platform/loop does not know platform/files")
        self.assert_fault({"src/instruments/decoders/a.h": includes("instruments/link/b.h"),
                           "src/instruments/link/b.h": ""}, "instruments/decoders does not know instruments/link")

    def test_rooms_of_other_folders_are_open_by_the_layers_alone(self):
        self.assert_clean({"src/instruments/link/a.cpp": includes("platform/ports/b.h"), "src/platform/ports/b.h": ""})
        self.assert_fault({"src/platform/ports/b.h": includes("instruments/link/a.h"), "src/instruments/link/a.h": ""},
                          "layer 4")

    def test_a_file_directly_in_a_folder_serves_all_its_rooms_and_includes_none_that_is_not_named(self):
        self.assert_clean({"src/platform/files/a.cpp": includes("platform/texts.h"), "src/platform/texts.h": ""})
        self.assert_fault({"src/platform/platform.h": includes("platform/loop/clock.h"),
                           "src/platform/loop/clock.h": ""}, "directly in platform")
        self.assert_clean({"src/core/a.cpp": includes("core/sources/b.h"), "src/core/sources/b.h": ""})

    def test_the_windows_of_a_folder_include_every_room_of_it(self):
        self.assert_clean({"src/instruments/windows/a.cpp": includes("instruments/setup/b.h"),
                           "src/instruments/setup/b.h": ""})

    def test_a_room_without_a_place_is_a_fault(self):
        self.assert_fault({"src/platform/attic/a.h": ""}, "no place")
        self.assert_fault({"src/model/attic/a.h": ""}, "no place")

    def test_the_rooms_of_a_folder_stand_above_those_that_they_include(self):
        for folder, rooms in check_layers.ROOMS.items():
            above = set()
            for room, included in rooms.items():
                self.assertLessEqual(set(included), above, folder + "/" + room)
                above.add(room)

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

    def test_a_link_that_no_include_needs_is_a_fault(self):
        self.assert_fault({"src/graphs/CMakeLists.txt": "velk_library(graphs USES velk_model)\n", "src/graphs/a.h": ""},
                          "velk_graphs with velk_model", "no include needs")
        self.assert_fault({"src/log/CMakeLists.txt": "velk_library(log)\nvelk_windows(log USES\n  velk_log)\n",
                           "src/log/windows/a.h": ""}, "velk_log_windows with velk_log")

    def test_a_missing_link_is_a_fault(self):
        self.assert_fault({"src/graphs/CMakeLists.txt": "velk_library(graphs QT Core)\n",
                           "src/graphs/a.h": includes("model/b.h"), "src/model/b.h": ""},
                          "does not link velk_graphs with velk_model")

    def test_a_link_behind_another_link_will_do(self):
        self.assert_clean({"src/graphs/CMakeLists.txt": "velk_library(graphs USES velk_model QT Gui)\n",
                           "src/model/CMakeLists.txt": "velk_library(model USES velk_base)\n",
                           "src/graphs/a.h": includes("model/b.h") + includes("base/c.h"),
                           "src/model/b.h": includes("base/c.h"), "src/base/c.h": ""})


if __name__ == "__main__":
    unittest.main()
