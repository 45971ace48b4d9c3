"""The real program on a display, worked by a real pointer: where its controls are is told by the onlooker."""

import json
import os
import subprocess
import time

from desktop import wait_for

ONLOOKER = os.environ["VELK_ONLOOKER"]
STEPS_OF_A_DRAG = 8
OPENS_WITHIN_SECONDS = 5  # on a busy machine too


class Seen:
    """A program with the onlooker in it. Controls go by paths of names, as "MainForm/Pause"; see onlooker.cpp."""

    def __init__(self, desktop, program, first=None):
        """Waits for the main window, or for the title of the window that comes up ahead of it."""
        self.desktop = desktop
        self.process = subprocess.Popen([program], env={**desktop.environment, "LD_PRELOAD": ONLOOKER},
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                                        text=True)
        desktop.running.append(self.process)
        wait_for(lambda: desktop.keyboard_owner() and
                 desktop.keyboard_owner() == (first or self.property("MainForm", "windowTitle")),
                 lambda: "the first window; the keyboard is with %r" % desktop.keyboard_owner())

    def close(self):
        self.process.stdin.close()
        self.process.stdout.close()

    def ask(self, *words):
        print(*words, file=self.process.stdin, flush=True)
        return self.process.stdout.readline().rstrip("\n")

    def property(self, path, name):
        return self.ask("property", path, name)

    def text(self, path):
        return self.property(path, "text")

    def wait_for(self, path, name, value):
        """Waits until a property of a control is this."""
        wait_for(lambda: self.property(path, name) == value,
                 lambda: "%s of %s to be %r; it is %r" % (name, path, value, self.property(path, name)))

    def is_seen(self, path):
        return self.ask("place", path) != ""

    def place(self, path, part="place"):
        """x, y, width and height of a control on the screen, once it is seen and has come to rest."""
        return [int(number) for number in wait_for(lambda: self.at_rest(part, path), path + " to be seen").split()]

    def at_rest(self, part, path):
        """Its place, where it is the same a moment later: the window manager moves windows that have just come."""
        before = self.ask(part, path)
        if before:
            time.sleep(0.05)
        return before if before == self.ask(part, path) else ""

    def middle(self, path, part="place"):
        x, y, width, height = self.place(path, part)
        return x + width // 2, y + height // 2

    def look(self, path):
        return self.ask("look", path)

    def picture(self, name):
        """Keeps what the screen shows where VELK_PICTURES says."""
        folder = os.environ.get("VELK_PICTURES")
        if folder and self.process.poll() is None:
            time.sleep(0.2)  # the screen follows at most 30 times a second
            self.ask("picture", os.path.join(folder, name + ".png"))

    def point(self, x, y):
        self.desktop.point(x, y)

    def click(self, path):
        self.point(*self.middle(path))
        self.desktop.click()

    def tick(self, path):
        """A check box, which is as wide as its row: only mark and text take the click."""
        x, y, _, height = self.place(path)
        self.point(x + height // 2, y + height // 2)
        self.desktop.click()
        self.wait_for(path, "checked", "true")

    def choose(self, menu, item):
        """An item of a menu of the main window. The window manager may move the window from under the first click."""
        wait_for(lambda: self.opens(menu, item), "%s to open and show %s" % (menu, item))
        self.click("MainForm/" + item)

    def opens(self, menu, item):
        self.click("MainForm/" + menu)
        end = time.monotonic() + OPENS_WITHIN_SECONDS
        while time.monotonic() < end:
            if self.is_seen("MainForm/" + item):
                return True
            time.sleep(0.02)
        return False

    def choose_file(self, path):
        """Answers the dialog of a file, open or about to come."""
        self.place("QFileDialog")
        self.desktop.press("ctrl+a")
        self.desktop.write(str(path))
        self.desktop.press("Return")
        wait_for(lambda: not self.is_seen("QFileDialog"), "the file to be taken")

    def drag_handle(self, path, share):
        """The handle of a bar to this share of its way."""
        x, y, width, height = self.place(path, "groove")
        _, _, wide, high = self.place(path, "handle")
        from_x, from_y = self.middle(path, "handle")
        if height > width:
            self.desktop.drag(from_x, from_y, from_x, y + high // 2 + int((height - high) * share), STEPS_OF_A_DRAG)
        else:
            self.desktop.drag(from_x, from_y, x + wide // 2 + int((width - wide) * share), from_y, STEPS_OF_A_DRAG)

    # --- Walks ---

    def lead_to(self, **wanted):
        """The tabulator key until this control has the focus."""
        while not self.find(**wanted)["focus"]:
            self.desktop.press("Tab")

    def answer(self, text):
        """A box by keys: which button it begins on depends on what is the safe answer."""
        self.lead_to(window="QMessageBox", text=text)
        self.desktop.press("Return")

    def menu(self, bar, *item):
        """An item of a menu by keys."""
        self.desktop.press(bar)
        self.find(**{"class": "QMenu"})
        self.desktop.press(*item)

    def paste(self, text, **field):
        """In place of what stands in a field, by the menu of the right button."""
        self.desktop.copy(os.environ["VELK_CLIPBOARD_OWNER"], text)
        self.click_on(3, **field)
        self.find(text="Paste\tCtrl+V")
        if self.listed(text="Select All\tCtrl+A"):  # off where nothing stands there, or all of it is selected
            self.click_on(text="Select All\tCtrl+A")
            self.click_on(3, **field)
        self.click_on(text="Paste\tCtrl+V")
        self.find(text=text, **field)

    def choose_lumo_a(self):
        """A protocol in the list of the serial port's dialog that has to be scrolled to."""
        self.click_on(window="HardwareSettings", name="cboSerialData")
        self.find(text="KESTA version 3", **{"class": "QWidget", "column": 0})
        while not self.listed(text="LUMO version A", row=8):
            self.click_on(5, text="KESTA version 4", row=6)  # a turn of the wheel
        self.click_on(text="LUMO version A", row=8)

    # --- By what is shown: buttons of boxes, entries of lists and cells have no names ---

    def listing(self):
        """All that can be worked: widgets, items of menus and cells; see listing.h."""
        return json.loads(self.ask("list") or "[]")

    def listed(self, **wanted):
        """The first of the listing that has all of these; marks of letters don't count."""
        for each in self.listing():
            if all(str(each.get(key)).replace("&", "") == str(value) for key, value in wanted.items()):
                return each
        return None

    def find(self, **wanted):
        """The same, once it stands still."""
        def stands():
            first = self.listed(**wanted)
            time.sleep(0.05)
            return first if first and first == self.listed(**wanted) else None
        return wait_for(stands, lambda: "%r among %r" % (
            wanted, sorted({(each["window"], each["name"], each["text"]) for each in self.listing()})))

    def middle_of(self, **wanted):
        found = self.find(**wanted)
        return found["x"] + found["w"] // 2, found["y"] + found["h"] // 2

    def click_on(self, button=1, **wanted):
        self.point(*self.middle_of(**wanted))
        self.desktop.click(button)
