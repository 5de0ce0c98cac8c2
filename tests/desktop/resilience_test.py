"""The program where the rest of the desktop fails it: buses that hang or end, files that are in the way."""

import os
import shutil
import signal
import stat
import subprocess
import time
import unittest

from Xlib import X

from bar_case import PROGRAM, BarCase, Client

SENDER = """
import sys
from gi.repository import Gio, GLib
bus = Gio.bus_get_sync(Gio.BusType.SESSION, None)
for line in sys.stdin:
    properties = {"urgent": GLib.Variant("b", line.strip() == "on")}
    bus.emit_signal(None, "/here", "com.canonical.Unity.LauncherEntry", "Update",
                    GLib.Variant("(sa{sv})", ("application://sample.desktop", properties)))
    bus.flush_sync(None)
    print("sent", flush=True)
"""
ENTRY = "[Desktop Entry]\nType=Application\nName=Sample\nExec=true\nStartupWMClass=Sample\n"


class Start(BarCase):
    def time_to_come(self):
        started = time.monotonic()
        self.bar = self.desktop.start([PROGRAM])
        self.desktop.wait_for(self.desktop.bar_places, "the bar", timeout=30)
        return time.monotonic() - started

    def end(self):
        self.bar.send_signal(signal.SIGTERM)
        self.assertEqual(self.bar.wait(5), 0)

    def settings_folder(self):
        return os.path.join(self.desktop.environment["XDG_CONFIG_HOME"], "korvane")

    def test_a_session_bus_that_hangs_holds_the_bar_up_for_two_seconds_at_most(self):
        usual = self.time_to_come()
        self.end()
        self.desktop.session_bus.send_signal(signal.SIGSTOP)
        self.addCleanup(self.desktop.session_bus.send_signal, signal.SIGCONT)
        self.assertLess(self.time_to_come(), usual + 2)
        self.assertEqual(self.desktop.log_text(self.bar).count("the session bus does not answer"), 1)
        self.end()

    def test_settings_that_hold_too_much_are_set_aside_in_time(self):
        path = os.path.join(self.settings_folder(), "defaults.plist")
        with open(path, "w", encoding="utf-8") as file:
            file.write('<?xml version="1.0" encoding="UTF-8"?>\n<plist version="1.0"><dict>')
            file.writelines(f"<key>k{number}</key><true/>" for number in range(650000))
            file.write("</dict></plist>\n")
        size = os.path.getsize(path)
        self.assertLess(self.time_to_come(), 2)
        kept = [name for name in os.listdir(self.settings_folder()) if ".damaged-" in name]
        self.assertEqual([os.path.getsize(os.path.join(self.settings_folder(), name)) for name in kept], [size])
        self.assertEqual(self.desktop.log_text(self.bar).count("can't be read"), 1)
        self.end()

    def test_a_second_start_ends_quietly_and_a_foreign_file_in_the_locks_place_is_told(self):
        runtime = os.path.join(self.desktop.environment["XDG_RUNTIME_DIR"], "korvane")
        self.time_to_come()
        second = self.desktop.start([PROGRAM])
        self.assertEqual(second.wait(5), 0)
        self.assertIn("already running", self.desktop.log_text(second))
        self.end()
        shutil.rmtree(runtime)
        os.mkfifo(runtime)
        blocked = self.desktop.start([PROGRAM])
        self.assertEqual(blocked.wait(5), 1)
        self.assertIn(runtime, self.desktop.log_text(blocked))
        self.assertTrue(stat.S_ISFIFO(os.stat(runtime).st_mode))


class LauncherBadge(BarCase):
    def setUp(self):
        super().setUp()
        place = os.path.join(self.desktop.environment["XDG_DATA_HOME"], "applications")
        os.makedirs(place, exist_ok=True)
        with open(os.path.join(place, "sample.desktop"), "w", encoding="utf-8") as file:
            file.write(ENTRY)
        self.client = Client(self.desktop, "Sample")
        self.client.open(1, "Page 1")
        self.desktop.move_pointer(300, 300)
        self.start_bar()
        self.place = self.tab("Page 1")

    def start_sender(self):
        self.sender = self.desktop.start(["/usr/bin/python3", "-c", SENDER], stdin=subprocess.PIPE,
                                         stdout=subprocess.PIPE)

    def send(self, what):
        self.sender.stdin.write((what + "\n").encode())
        self.sender.stdin.flush()
        self.assertEqual(self.sender.stdout.readline().strip(), b"sent")

    def red_pixels(self):
        """On the tab, as the server shows it."""
        tab = self.place
        data = self.desktop.x.screen().root.get_image(tab.x, tab.y, tab.width, tab.height, X.ZPixmap, 0xFFFFFFFF).data
        return sum(red > 180 and green < 100 and blue < 100
                   for blue, green, red in zip(data[0::4], data[1::4], data[2::4]))

    def test_that_comes_after_a_long_rest_shows_and_goes(self):
        self.start_sender()
        time.sleep(15)  # the rest is what is tested: by then everything that polls has stopped
        self.assertEqual(self.red_pixels(), 0)
        self.send("on")
        self.desktop.wait_for(lambda: self.red_pixels() > 5, "the mark", timeout=8)
        time.sleep(15)
        self.send("off")
        self.desktop.wait_for(lambda: self.red_pixels() == 0, "the mark to go", timeout=8)

    def test_goes_with_its_bus_and_comes_on_the_next_one(self):
        self.start_sender()
        self.send("on")
        self.desktop.wait_for(lambda: self.red_pixels() > 5, "the mark", timeout=8)
        address = self.desktop.environment["DBUS_SESSION_BUS_ADDRESS"]
        self.desktop.session_bus.kill()
        self.desktop.session_bus.wait(5)
        self.desktop.wait_for(lambda: self.red_pixels() == 0, "the mark to go", timeout=8)
        os.unlink(address.removeprefix("unix:path="))
        self.desktop.session_bus = self.desktop.start(
            ["dbus-daemon", "--session", "--nofork", "--nopidfile", "--address=" + address])
        self.desktop.wait_for(lambda: os.path.exists(address.removeprefix("unix:path=")), "the bus")
        self.start_sender()

        def shows():
            self.send("off")
            self.send("on")
            return self.red_pixels() > 5

        self.desktop.wait_for(shows, "the mark", timeout=15, interval=0.5)


if __name__ == "__main__":
    unittest.main(verbosity=2)
