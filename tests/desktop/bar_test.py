"""The program on a real X server: its tabs, its clicks, its screens."""

import os
import random
import signal
import time
import unittest

from bar_case import PROGRAM, WINDOW_MANAGER, BarCase, Client


class Tabs(BarCase):
    def test_equal_the_client_list_after_whatever_the_windows_did(self):
        number, seed = 0, int(os.environ.get("KORVANE_SEED", random.randrange(1 << 30)))
        print(f"seed {seed}")
        chance = random.Random(seed)
        clients = [Client(self.desktop, name) for name in ("Alpha", "Beta", "Gamma")]
        windows = {}
        for client in clients:
            windows[(client, number)] = client.open(number, f"first {number}")
            number += 1
        self.start_bar()
        for _ in range(60):
            act = chance.choice(["open", "open", "retitle", "retitle", "close", "minimise", "activate"])
            if act == "open" and len(windows) < 25:
                client = chance.choice(clients)
                windows[(client, number)] = client.open(number, f"window {number}")
                number += 1
            elif windows:
                (client, which), identifier = chance.choice(list(windows.items()))
                if act == "retitle":
                    client.retitle(which, f"renamed {chance.randrange(1000)} {which}")
                elif act == "close" and len(windows) > 1:
                    client.close(which)
                    del windows[(client, which)]
                elif act == "minimise":
                    self.desktop.minimise(identifier)
                elif act == "activate":
                    self.desktop.activate(identifier)
        expected = {identifier for identifier in windows.values()}
        self.desktop.wait_for(lambda: expected <= set(self.desktop.client_windows()), "the windows to be managed")
        self.wait_for_tabs(self.client_titles())

    def test_follow_a_real_program_that_opens_and_ends(self):
        self.start_bar()
        terminal = self.desktop.start(["xterm", "-T", "Real terminal"])
        self.wait_for_tabs(["Real terminal"])
        self.desktop.stop(terminal)
        self.wait_for_tabs([])

    def test_show_hostile_titles_without_reading_them(self):
        client = Client(self.desktop)
        client.open(1, "<b>bold</b> & <img src=x>")
        client.open(2, "x" * 60000)
        client.open(3, "שלום \u202e مرحبا 👩‍👩‍👧")
        self.start_bar()
        self.desktop.wait_for(lambda: len(self.buttons()) == 3, "three tabs")
        names = self.tab_names()
        self.assertIn("<b>bold</b> & <img src=x>", names)
        self.assertIn("x" * 4096, names)

    def test_stand_where_the_accessibility_bus_says_they_are(self):
        Client(self.desktop).open(1, "Somewhere")
        self.start_bar()
        tab = self.tab("Somewhere")
        self.assertEqual((tab.x, tab.y, tab.height), (58, 1080 - 31, 28))


class Clicks(BarCase):
    def setUp(self):
        super().setUp()
        self.client, self.other = Client(self.desktop, "One"), Client(self.desktop, "Two")
        self.first = self.client.open(1, "first")
        self.second = self.client.open(2, "second")
        self.third = self.other.open(3, "third")
        self.start_bar()
        self.wait_for_tabs(["first", "second", "third"])

    def click(self, name):
        self.desktop.click_control(self.tab(name))

    def wait_active(self, window):
        self.desktop.wait_for(lambda: self.desktop.active_window() == window, "the window to be active")

    def test_activate_minimise_and_restore_each_window(self):
        for name, window in (("first", self.first), ("third", self.third), ("second", self.second)):
            self.make_active(name, window)
            self.wait_until_bar_knows(window)
            self.click(name)
            self.desktop.wait_for(lambda: self.desktop.is_minimised(window), f"“{name}” to be minimised")
            self.click(name)
            self.desktop.wait_for(lambda: not self.desktop.is_minimised(window), f"“{name}” to be restored")
            self.wait_active(window)

    def make_active(self, name, window):
        """A click on the tab of the active window would minimise it."""
        if self.desktop.active_window() != window:
            self.click(name)
        self.wait_active(window)

    def wait_until_bar_knows(self, window):
        """A click means to minimise only once the bar has heard that the window is the active one. The active tab is the
        brighter one, so its pixels tell."""
        tab = self.tab(self.desktop.title(window))
        self.desktop.wait_for(lambda: self.brightness(tab) > min(self.brightness(b) for b in self.buttons()) + 5,
                              "the tab to be the bright one")

    def brightness(self, tab):
        image = self.desktop.root.get_image(tab.x + tab.width - 6, tab.y + 8, 1, 1, 2, 0xFFFFFFFF)
        return sum(image.data[:3])

    def test_raise_the_window_above_the_others_of_its_application(self):
        self.click("first")
        self.wait_active(self.first)
        stacking = self.desktop.property(self.desktop.root, "_NET_CLIENT_LIST_STACKING")
        order = [w for w in stacking if w in (self.first, self.second)]
        self.assertEqual(order[-1], self.first)

    def test_through_the_accessibility_bus_work_like_the_pointers(self):
        target = self.first if self.desktop.active_window() != self.first else self.second
        self.assertTrue(self.desktop.press(self.tab(self.desktop.title(target))))
        self.wait_active(target)

    def test_anywhere_on_the_bar_leave_the_focus_where_it_is(self):
        self.make_active("third", self.third)
        x, y, width, height = self.desktop.bar_places()[0]
        # Beside the buttons, which do things.
        for place in (x + 10, x + width // 2, x + width - 1):
            for button in (1, 2, 3):
                self.desktop.click(place, y + height - 17, button)
                self.assertEqual(self.desktop.active_window(), self.third)
        focus = self.desktop.x.get_input_focus().focus
        self.assertNotIn(focus.id, [w for w in self.desktop.client_windows()
                                    if self.desktop.title(w) == "Korvane Taskbar"])

    def test_on_a_window_of_another_desktop_go_there(self):
        if WINDOW_MANAGER == "icewm":
            self.desktop.run(["xdotool", "set_num_desktops", "2"])
        self.desktop.run(["xdotool", "set_desktop_for_window", str(self.third), "1"])
        self.desktop.wait_for(lambda: self.desktop.property(self.desktop.window(self.third), "_NET_WM_DESKTOP") == [1],
                              "the window to move")
        self.click("third")
        self.wait_active(self.third)
        self.assertEqual(self.desktop.property(self.desktop.root, "_NET_CURRENT_DESKTOP"), [1])


class Screens(BarCase):
    screens = [(1920, 1080, 1280, 864), (1280, 1024, 0, 920), (1280, 720, 3200, 1000)]

    def test_each_have_a_bar_along_their_bottom_edge_also_after_one_was_unplugged(self):
        Client(self.desktop).open(1, "everywhere")
        self.start_bar()

        def bottoms():
            return sorted((x, y + height, width) for x, y, width, height in self.desktop.bar_places())

        def tabs():
            return [c for c in self.desktop.controls(role="push button") if c.name == "everywhere"]

        three = [(0, 1944, 1280), (1280, 1944, 1920), (3200, 1720, 1280)]
        self.desktop.wait_for(lambda: bottoms() == three and len(tabs()) == 3, f"three bars, not {bottoms()}")
        self.desktop.remove_monitor("M2")
        self.desktop.wait_for(lambda: bottoms() == three[:2] and len(tabs()) == 2, f"two bars, not {bottoms()}")
        self.desktop.set_monitor("M2", 1000, 600, 3200, 1000)
        again = [*three[:2], (3200, 1600, 1000)]
        self.desktop.wait_for(lambda: bottoms() == again and len(tabs()) == 3, f"three bars, not {bottoms()}")


class Badges(BarCase):
    settings = {"groupingMode": "never", "expertBadgeScanSeconds": 1.0, "autoHideEnabled": False}

    def setUp(self):
        super().setUp()
        place = os.path.join(self.desktop.environment["XDG_DATA_HOME"], "applications")
        os.makedirs(place)
        with open(os.path.join(place, "org.example.Counted.desktop"), "w", encoding="utf-8") as entry:
            entry.write("[Desktop Entry]\nType=Application\nName=Counted\nExec=true\nStartupWMClass=Counted\n")
        self.client = Client(self.desktop, "Counted")
        self.window = self.client.open(1, "counted window")
        Client(self.desktop, "Other").open(2, "other window")
        self.start_bar()
        self.wait_for_tabs(["counted window", "other window"])

    def redness(self, name):
        """Of the corner where the mark stands."""
        tab = self.tab(name)
        blue, green, red = self.desktop.root.get_image(tab.x + 3, tab.y + 3, 1, 1, 2, 0xFFFFFFFF).data[:3]
        return red - max(blue, green)

    def test_sent_on_the_session_bus_mark_the_tabs_of_their_application(self):
        sender = self.desktop.start(["/usr/bin/python3", "-c", SENDER, "org.example.Counted.desktop"])
        self.desktop.wait_for(lambda: self.redness("counted window") > 60, "the mark", timeout=6)
        self.assertLess(self.redness("other window"), 20)
        self.desktop.stop(sender)
        self.desktop.wait_for(lambda: self.redness("counted window") < 20, "the mark to go with its sender", timeout=6)

    def test_stand_for_a_window_that_demands_attention(self):
        self.desktop.run(["xdotool", "set_window", "--urgency", "1", str(self.window)])
        self.desktop.wait_for(lambda: self.redness("counted window") > 60, "the mark", timeout=6)


SENDER = """
import sys
from gi.repository import Gio, GLib
bus = Gio.bus_get_sync(Gio.BusType.SESSION)
bus.emit_signal(None, "/com/example/launcher", "com.canonical.Unity.LauncherEntry", "Update",
                GLib.Variant("(sa{sv})", ("application://" + sys.argv[1],
                                          {"count": GLib.Variant("x", 3), "count-visible": GLib.Variant("b", True)})))
bus.flush_sync()
GLib.MainLoop().run()
"""


class GroupingByNeed(BarCase):
    """Of one program's windows, so that a bar that groups shows a single button."""

    settings = {"groupingMode": "asNeeded", "autoHideEnabled": False}
    width = 1920

    def capacity(self, tab_width):
        """How many tabs of that width the main row takes: it may squeeze one in that sticks out by half at the most."""
        room = self.width - 124 - 58
        count = 1
        while (count + 1) * tab_width + count * 4 <= room:
            count += 1
        excess = (count + 1) * tab_width + count * 4 - room
        return count + 1 if excess <= tab_width / 2 else count

    def test_begins_exactly_when_the_windows_no_longer_fit_the_main_row(self):
        client = Client(self.desktop)
        title = "W" * 40  # as wide as a tab gets
        client.open(0, title)
        self.start_bar()
        fitting = self.capacity(self.tab(title).width)
        for number in range(1, fitting):
            client.open(number, title)
        self.wait_for_tabs([title] * fitting)
        client.open(fitting, title)
        self.wait_for_tabs(["Sample Tabs"])
        client.close(0)
        self.wait_for_tabs([title] * fitting)


class GroupingByNeedOnASmallScreen(GroupingByNeed):
    screens = [(1280, 800, 0, 0)]
    width = 1280


class Alerts(BarCase):
    screens = [(1280, 1000, 0, 0)]

    def show(self):
        self.alert = self.desktop.start([os.environ["KORVANE_ALERT"]])
        self.buttons_by_name = self.desktop.wait_for(self.named_buttons, "the alert's buttons")

    def named_buttons(self):
        found = {c.name: c for c in self.desktop.controls(window_title=None, role="push button")}
        return found if {"Continue", "Cancel"} <= set(found) else None

    def answer(self):
        self.alert.wait(10)
        return self.desktop.log_text(self.alert).strip()

    def test_stand_low_on_the_screen_and_read_as_written(self):
        self.show()
        texts = [c.name for c in self.desktop.controls(window_title=None, role="label")]
        self.assertIn("Close All Windows?", texts)
        self.assertIn("All open windows will be closed. Continue?", texts)
        window = self.desktop.wait_for(lambda: next((w for w in self.desktop.client_windows()
                                                     if self.desktop.pid(w) == self.alert.pid), None), "its window")

        def place():
            x, y, width, height = self.desktop.geometry(window)
            return abs(x + width / 2 - 640) <= 6, 1000 - (y + height)
        # Eight hundredths of the height. A window manager moves the window by the frame that it puts around it.
        self.desktop.wait_for(lambda: place()[0] and abs(place()[1] - 80) <= 30, f"its place, not {place()}")

    def test_are_answered_by_return_and_escape_and_the_accessibility_bus(self):
        for act, expected in ((lambda: self.desktop.key("Return"), "1000"), (lambda: self.desktop.key("Escape"), "1001"),
                              (lambda: self.desktop.press(self.buttons_by_name["Continue"]), "1000"),
                              (lambda: self.desktop.press(self.buttons_by_name["Cancel"]), "1001")):
            self.show()
            self.desktop.wait_for(lambda: self.desktop.pid(self.desktop.active_window()) == self.alert.pid,
                                  "the alert to have the keyboard")
            act()
            self.assertEqual(self.answer(), expected)


class WindowManagers(BarCase):
    def test_that_end_leave_the_tabs_and_the_next_one_takes_over(self):
        client = Client(self.desktop)
        client.open(1, "kept")
        self.start_bar()
        self.wait_for_tabs(["kept"])
        os.killpg(self.desktop.window_manager.pid, signal.SIGKILL)
        self.desktop.window_manager.wait()
        end = time.monotonic() + 3  # longer than the bar's own clock takes to look again
        while time.monotonic() < end:
            self.assertEqual(self.tab_names(), ["kept"])
            time.sleep(0.1)
        self.desktop.start_window_manager("icewm" if WINDOW_MANAGER != "icewm" else "openbox")
        client.open(2, "new")
        self.wait_for_tabs(["kept", "new"])
        client.close(1)
        self.wait_for_tabs(["new"])
        self.assertIsNone(self.bar.poll())
        self.desktop.wait_for(self.desktop.bar_places, "the bar under the new window manager")


class Starting(BarCase):
    def run_program(self, *arguments, **changes):
        environment = dict(self.desktop.environment)
        for name, value in changes.items():
            environment.pop(name, None)
            if value is not None:
                environment[name] = value
        process = self.desktop.start([PROGRAM, *arguments], env=environment)
        status = process.wait(15)
        return status, self.desktop.log_text(process)

    def refused(self, expected_status, part, *arguments, **changes):
        status, text = self.run_program(*arguments, **changes)
        self.assertEqual(status, expected_status, text)
        self.assertEqual(len(text.strip().splitlines()), 1, text)
        self.assertIn(part, text)

    def test_without_a_usable_display_is_refused_in_one_line(self):
        self.refused(1, "no display", DISPLAY=None)
        self.refused(1, "Wayland", DISPLAY=None, WAYLAND_DISPLAY="wayland-0")
        self.refused(1, "can't be opened", DISPLAY=":4711")

    def test_with_options_is_refused(self):
        self.refused(2, "takes no options", "--help")

    def test_twice_finds_the_first_and_ends_quietly(self):
        self.start_bar()
        self.refused(0, "already running")
        self.assertIsNone(self.bar.poll())

    def test_enrols_at_login_once(self):
        self.start_bar()
        self.desktop.wait_for(lambda: "Launch at login enabled." in self.desktop.log_text(self.bar), "the line")
        self.desktop.stop(self.bar)
        second = self.start_bar()
        self.desktop.wait_for(lambda: self.buttons() is not None, "the bar")
        self.assertNotIn("Launch at login", self.desktop.log_text(second))

    def test_ends_orderly_when_asked(self):
        bar = self.start_bar()
        bar.send_signal(signal.SIGTERM)
        self.assertEqual(bar.wait(10), 0)

    def test_with_a_configuration_that_can_not_be_written_says_so_and_runs(self):
        blocked = os.path.join(self.desktop.directory, "blocked")
        with open(blocked, "w", encoding="utf-8"):
            pass
        environment = {**self.desktop.environment, "XDG_CONFIG_HOME": blocked}
        bar = self.desktop.start([PROGRAM], env=environment)
        Client(self.desktop).open(1, "anyway")
        self.wait_for_tabs(["anyway"])
        lines = [line for line in self.desktop.log_text(bar).splitlines() if "Launch at login" not in line]
        self.assertEqual(len(lines), 1, lines)


if __name__ == "__main__":
    unittest.main(verbosity=2)
