"""What the tests of the program on a real X server share: a private desktop with the bar, and programs with windows.

KORVANE_PROGRAM and KORVANE_SAMPLE_CLIENT name the programs, KORVANE_WINDOW_MANAGER the window manager.
"""

import os
import plistlib
import subprocess
import sys
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "..", "tools", "desktop"))
from desktop import DesktopError, PrivateDesktop  # noqa: E402

PROGRAM = os.environ["KORVANE_PROGRAM"]
SAMPLE_CLIENT = os.environ["KORVANE_SAMPLE_CLIENT"]
WINDOW_MANAGER = os.environ.get("KORVANE_WINDOW_MANAGER", "openbox")


class Client:
    """A program of the tests' own whose windows do what they are told."""

    def __init__(self, desktop, name="Sample"):
        self.process = desktop.start([SAMPLE_CLIENT, name], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.process.stdout.readline()

    def tell(self, command):
        self.process.stdin.write((command + "\n").encode())
        self.process.stdin.flush()
        return self.process.stdout.readline().decode().strip()

    def open(self, number, title):
        """Returns the window's identifier."""
        identifier = int(self.tell(f"create {number} {title}"))
        self.tell(f"map {number}")
        return identifier

    def retitle(self, number, title):
        self.tell(f"title {number} {title}")

    def close(self, number):
        self.tell(f"destroy {number}")


class BarCase(unittest.TestCase):
    """Each test has a desktop of its own."""

    screens = [(1920, 1080, 0, 0)]
    settings = {"groupingMode": "never", "autoHideEnabled": False}
    compositor = False

    def setUp(self):
        self.desktop = PrivateDesktop(screens=self.screens, window_manager=WINDOW_MANAGER, compositor=self.compositor)
        self.desktop.__enter__()
        self.addCleanup(self.desktop.__exit__, None, None, None)
        self.write_settings()

    def write_settings(self):
        """For the next start of the bar."""
        place = os.path.join(self.desktop.environment["XDG_CONFIG_HOME"], "korvane")
        os.makedirs(place, mode=0o700, exist_ok=True)
        with open(os.path.join(place, "defaults.plist"), "wb") as file:
            plistlib.dump(self.settings, file)

    def start_bar(self):
        self.bar = self.desktop.start([PROGRAM])
        self.desktop.wait_for(self.desktop.bar_places, "the bar")
        return self.bar

    def tab_names(self):
        """Of the first bar, from left to right on the main row."""
        return [tab.name for tab in self.buttons()]

    def buttons(self):
        found = self.desktop.controls(role="push button", within="Tasks")
        first = found[0].path[:2] if found else ()
        return [control for control in found if control.path[:2] == first]

    def tab(self, name):
        return self.desktop.wait_for(lambda: next((b for b in self.buttons() if b.name == name), None),
                                     f"the tab “{name}”")

    def wait_for_tabs(self, expected):
        """Whatever their order."""
        wanted = sorted(expected)
        try:
            self.desktop.wait_for(lambda: sorted(self.tab_names()) == wanted, "the tabs")
        except DesktopError:
            self.assertEqual(sorted(self.tab_names()), wanted)

    def client_titles(self):
        """Of every window that is to have a tab, as the window manager lists them."""
        return [self.desktop.title(window) for window in self.desktop.client_windows()
                if self.desktop.title(window) != "Korvane Taskbar"]
