"""A bar that hides, on a real X server: with and without a compositor."""

import os
import subprocess
import time
import unittest

from bar_case import BarCase, Client


class Hiding(BarCase):
    settings = {"groupingMode": "never", "autoHideEnabled": True, "mediaSliderDisplay": "Never",
                "appMonitorRefreshRate": 20}
    away = (600, 400)

    def show(self):
        self.client = Client(self.desktop, "Writer")
        self.window = self.client.open(1, "Page 1")
        self.desktop.move_pointer(600, 1079)
        self.start_bar()
        self.wait_for_tabs(["Page 1"])

    def is_gone(self):
        return not self.desktop.bar_places()

    def hide(self):
        self.desktop.move_pointer(*self.away)
        self.desktop.wait_for(self.is_gone, "the bar to hide", timeout=6)

    def colour_at(self, x, y):
        image = self.desktop.root.get_image(x, y, 1, 1, 2, 0xFFFFFFFF)
        return tuple(image.data[:3])

    def test_leaves_with_the_pointer_and_comes_back_at_the_edge(self):
        self.show()
        time.sleep(0.6)
        self.assertFalse(self.is_gone())
        self.hide()
        self.desktop.move_pointer(600, 1060)
        time.sleep(0.4)
        self.assertTrue(self.is_gone())
        self.desktop.move_pointer(600, 1079)
        self.desktop.wait_for(lambda: not self.is_gone(), "the bar to come back", timeout=6)

    def test_lets_clicks_through_while_it_is_gone(self):
        self.show()
        other = self.client.open(2, "Page 2")
        self.desktop.run(["xdotool", "windowsize", str(self.window), "700", "500", "windowmove", str(self.window),
                          "300", "570"])
        self.desktop.activate(other)
        self.desktop.wait_for(lambda: self.desktop.active_window() == other, "the other window")
        self.desktop.run(["xdotool", "windowraise", str(self.window)])
        self.hide()
        self.desktop.click(500, 1052)
        self.desktop.wait_for(lambda: self.desktop.active_window() == self.window, "the click to reach the window")

    def test_shows_what_is_behind_it(self):
        self.desktop.set_background("#c02040")
        self.show()
        self.hide()
        self.desktop.wait_for(lambda: self.colour_at(1500, 1065) == (0x40, 0x20, 0xC0), "the background", timeout=6)

    def test_catches_up_when_it_comes_back(self):
        self.show()
        self.hide()
        self.client.open(2, "Page 2")
        self.client.retitle(1, "Renamed")
        time.sleep(0.3)
        self.desktop.move_pointer(600, 1079)
        self.wait_for_tabs(["Renamed", "Page 2"])

    def test_reserves_its_strip_when_it_does_not_hide(self):
        self.settings = {**self.settings, "autoHideEnabled": False}
        self.write_settings()
        self.show()
        self.desktop.wait_for(
            lambda: (self.desktop.property(self.desktop.root, "_NET_WORKAREA") or [0] * 4)[3] == 1080 - 34,
            "the work area to end at the bar")
        self.desktop.run(["xdotool", "windowactivate", "--sync", str(self.window)])
        self.desktop.maximise(self.window)
        self.desktop.wait_for(lambda: sum(self.desktop.geometry(self.window)[1::2]) <= 1080 - 34
                              and self.desktop.geometry(self.window)[3] > 900, "the window above the bar")

    def test_takes_no_strip_while_it_hides(self):
        self.show()
        self.assertEqual((self.desktop.property(self.desktop.root, "_NET_WORKAREA") or [0] * 4)[3], 1080)


class HidingBeneathWhatIsOpen(BarCase):
    settings = {"groupingMode": "always", "autoHideEnabled": True, "mediaSliderDisplay": "Never",
                "appMonitorRefreshRate": 20}

    def open_by(self, button):
        self.client = Client(self.desktop, "Writer")
        self.windows = [self.client.open(number, f"Page {number}") for number in range(3)]
        self.desktop.move_pointer(600, 1070)
        self.start_bar()
        before = self.popups()
        self.desktop.click_control(self.tab("Writer Tabs"), button)
        self.desktop.wait_for(lambda: self.popups() == before + 1, "what the click opens")

    def popups(self):
        """How many menus and lists are shown."""
        shown = 0
        for window in self.desktop.root.query_tree().children:
            try:
                attributes = window.get_attributes()
                if attributes.override_redirect and attributes.map_state == 2 and window.get_geometry().width > 50:
                    shown += 1
            except Exception:  # it has gone meanwhile
                continue
        return shown

    def stays_until_it_is_closed(self):
        self.desktop.move_pointer(1500, 300)
        time.sleep(2)
        self.assertTrue(self.desktop.bar_places())
        self.desktop.key("Escape")
        self.desktop.wait_for(lambda: not self.desktop.bar_places(), "the bar to hide", timeout=6)

    def test_waits_for_a_window_list(self):
        self.open_by(1)
        self.stays_until_it_is_closed()

    def test_waits_for_a_menu(self):
        self.open_by(3)
        self.stays_until_it_is_closed()


class HidingOfASessionThatIsLeft(BarCase):
    settings = {"groupingMode": "never", "autoHideEnabled": True, "mediaSliderDisplay": "Never",
                "appMonitorRefreshRate": 20}

    def setUp(self):
        super().setUp()
        address = self.desktop.environment["DBUS_SYSTEM_BUS_ADDRESS"]
        self.desktop.start(["dbus-daemon", "--session", "--nofork", "--nopidfile", "--address=" + address])
        self.desktop.wait_for(lambda: os.path.exists(address.removeprefix("unix:path=")), "the system's bus")
        script = os.path.join(os.path.dirname(os.path.abspath(__file__)), "session_manager.py")
        self.manager = self.desktop.start(["/usr/bin/python3", script, address], stdin=subprocess.PIPE,
                                          stdout=subprocess.PIPE)
        self.assertEqual(self.manager.stdout.readline(), b"ready\n")

    def change(self, name, value):
        self.manager.stdin.write(f"{name} {value}\n".encode())
        self.manager.stdin.flush()
        self.assertEqual(self.manager.stdout.readline(), b"done\n")

    def test_looks_at_nothing_until_it_is_back(self):
        self.client = Client(self.desktop, "Writer")
        self.client.open(1, "Page 1")
        self.desktop.move_pointer(600, 1079)
        self.start_bar()
        self.wait_for_tabs(["Page 1"])
        for name, gone, back in (("Active", "false", "true"), ("LockedHint", "true", "false")):
            self.change(name, gone)
            time.sleep(0.3)
            self.desktop.move_pointer(600, 400)
            time.sleep(1.5)
            self.assertTrue(self.desktop.bar_places(), name)
            self.change(name, back)
            self.desktop.wait_for(lambda: not self.desktop.bar_places(), "the bar to hide", timeout=6)
            self.desktop.move_pointer(600, 1079)
            self.desktop.wait_for(self.desktop.bar_places, "the bar to come back", timeout=6)


class HidingUnderACompositor(Hiding):
    compositor = True

    def test_fades(self):
        self.settings = {**self.settings, "appRefreshRate": 60, "animationDurationMS": 2000}
        self.write_settings()
        self.desktop.set_background("#ffffff")
        self.show()
        self.desktop.move_pointer(1500, 1079)
        time.sleep(0.3)
        dark = sum(self.colour_at(1500, 1065))
        self.desktop.move_pointer(*self.away)
        self.desktop.wait_for(lambda: dark + 100 < sum(self.colour_at(1500, 1065)) < 3 * 255 - 100,
                              "the background to shine through", timeout=6)
        self.desktop.wait_for(lambda: sum(self.colour_at(1500, 1065)) == 3 * 255, "the background alone", timeout=6)


class SeveralScreens(Hiding):
    screens = [(1280, 1000, 0, 0), (1280, 1000, 1280, 0)]

    def show(self):
        self.client = Client(self.desktop, "Writer")
        self.window = self.client.open(1, "Page 1")
        self.desktop.move_pointer(600, 999)
        self.start_bar()

    def bars(self):
        return sorted(place[0] for place in self.desktop.bar_places())

    def test_hide_each_by_itself(self):
        self.show()
        self.desktop.wait_for(lambda: self.bars() == [0], "the bar of the left screen alone", timeout=6)
        self.desktop.move_pointer(2000, 999)
        self.desktop.wait_for(lambda: self.bars() == [1280], "the bar of the right screen alone", timeout=6)
        self.desktop.move_pointer(1900, 300)
        self.desktop.wait_for(lambda: self.bars() == [], "no bar", timeout=6)


# The cases of one screen are not repeated on two.
for name in [n for n in dir(Hiding) if n.startswith("test_")]:
    setattr(SeveralScreens, name, None)


if __name__ == "__main__":
    unittest.main(verbosity=2)
