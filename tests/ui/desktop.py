"""A display of its own with a window manager, and a program on it that is worked by real key presses and a real pointer."""

import os
import pathlib
import subprocess
import tempfile
import time

# A busy machine may take its time; an idle one never waits that long.
PATIENCE_SECONDS = 60


def wait_for(condition, what):
    """The condition's value as soon as it is true."""
    end = time.monotonic() + PATIENCE_SECONDS
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError("waited in vain for " + (what() if callable(what) else what))
        time.sleep(0.02)


class Desktop:
    """Xvfb on a free display number, and a window manager, which gives the keyboard to the window on top."""

    def __init__(self):
        self.folder = tempfile.TemporaryDirectory(prefix="velk-desktop-")
        self.path = pathlib.Path(self.folder.name)
        self.running = []
        reader, writer = os.pipe()
        # Without a reset, which would throw out who connects just when the only other program leaves.
        self._start(["Xvfb", "-displayfd", str(writer), "-screen", "0", "1280x1024x24", "-nolisten", "tcp", "-noreset"],
                    os.environ, pass_fds=[writer])
        os.close(writer)
        with os.fdopen(reader) as number:
            display = ":" + number.readline().strip()
        self.environment = {**os.environ, "DISPLAY": display, "QT_QPA_PLATFORM": "xcb", "HOME": self.folder.name,
                            "XDG_CONFIG_HOME": str(self.path / "config"), "XDG_RUNTIME_DIR": str(self.path / "run")}
        (self.path / "run").mkdir(mode=0o700)
        # Without key presses of its own: each one is the program's.
        self._start(["matchbox-window-manager", "-kbdconfig", os.devnull], self.environment)
        wait_for(lambda: self._x("get_num_desktops"), "the window manager")

    def _start(self, command, environment, **more):
        process = subprocess.Popen(command, env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                   **more)
        self.running.append(process)
        return process

    def close(self):
        for process in reversed(self.running):
            process.terminate()
            process.wait()
        self.folder.cleanup()

    def _x(self, *words):
        """What xdotool prints, or nothing where it fails: windows come and go while it looks."""
        done = subprocess.run(["xdotool", *words], env=self.environment, capture_output=True, text=True)
        return done.stdout.strip() if done.returncode == 0 else ""

    def start(self, program):
        return self._start([program], self.environment)

    def keyboard_owner(self):
        """The title of the window that key presses go to."""
        return self._x("getwindowfocus", "-f", "getwindowname")

    def keyboard_program(self):
        """The id of the process that has that window."""
        return int(self._x("getwindowfocus", "getwindowpid") or 0)

    def windows_of(self, process):
        return len(self._x("search", "--onlyvisible", "--pid", str(process.pid)).split())

    def wait_for_window(self, title):
        """Waits until the keyboard is the window's."""
        wait_for(lambda: self.keyboard_owner() == title,
                 lambda: "the window %r; the keyboard is with %r" % (title, self.keyboard_owner()))

    def use_keyboard_layout(self, name):
        subprocess.run(["setxkbmap", name], env=self.environment, check=True)

    def point(self, x, y):
        self._x("mousemove", str(x), str(y))

    def click(self, button=1):
        self._x("click", str(button))

    def drag(self, from_x, from_y, to_x, to_y, steps):
        self.point(from_x, from_y)
        self._x("mousedown", "1")
        for step in range(1, steps + 1):
            self.point(from_x + (to_x - from_x) * step // steps, from_y + (to_y - from_y) * step // steps)
        self._x("mouseup", "1")

    def press(self, *keys):
        self._x("key", *keys)

    def write(self, text):
        self._x("type", "--", text)

    def copy(self, clipboard_owner, text):
        """Another program holds the text in the clipboard."""
        owner = subprocess.Popen([clipboard_owner], env=self.environment, stdin=subprocess.PIPE,
                                 stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.running.append(owner)
        owner.stdin.write(text.encode())
        owner.stdin.close()
        told = owner.stdout.readline()
        owner.stdout.close()
        assert told == b"ready\n"

    def open_menu(self, process, keys):
        """Presses the menu's keys and waits until it hangs down."""
        before = self.windows_of(process)
        self.press(keys)
        wait_for(lambda: self.windows_of(process) > before, "the menu of " + keys)
