"""The menus of tabs and the window lists of groups on a real X server, by pointer, keys and accessibility bus."""

import unittest

from Xlib import X, error as xerror

from bar_case import BarCase, Client


class Buttons(BarCase):
    settings = {"groupingMode": "never", "autoHideEnabled": False, "mediaSliderDisplay": "Never"}

    def start_with(self, count):
        self.client = Client(self.desktop, "Writer")
        self.windows = [self.client.open(number, f"Page {number}") for number in range(count)]
        self.start_bar()
        self.desktop.move_pointer(300, 300)

    def wait_until(self, condition, what):
        self.desktop.wait_for(condition, what, timeout=8)

    def main_row(self):
        return [tab.name for tab in sorted(self.buttons(), key=lambda tab: tab.x)]

    def override_windows(self):
        """How many windows without a frame the bar shows: its menus and popovers."""
        shown = 0
        for window in self.desktop.root.query_tree().children:
            try:
                attributes = window.get_attributes()
                ours = "korvane" in self.desktop.window_class(window.id)[0].casefold()
                shown += ours and attributes.override_redirect and attributes.map_state == X.IsViewable
            except (xerror.BadWindow, xerror.BadDrawable):  # it has gone meanwhile
                continue
        return shown

    def wait_for_popups(self, count):
        self.wait_until(lambda: self.override_windows() == count, f"{count} menus or lists, not {self.override_windows()}")

    def open_menu(self, tab):
        before = self.override_windows()
        self.desktop.click_control(tab, 3)
        self.wait_for_popups(before + 1)


class Menus(Buttons):
    def test_open_by_a_right_click_go_by_keys_and_leave_the_active_window_alone(self):
        self.start_with(3)
        self.wait_for_tabs(["Page 0", "Page 1", "Page 2"])
        active = self.desktop.active_window()
        self.open_menu(self.tab("Page 2"))
        self.assertEqual(self.desktop.active_window(), active)
        self.desktop.key("Down", "Return")  # Set First
        self.wait_until(lambda: self.main_row() == ["Page 2", "Page 0", "Page 1"], "the new order")
        self.wait_for_popups(0)
        self.assertEqual(self.desktop.active_window(), active)

    def test_close_the_window_they_were_opened_on(self):
        self.start_with(2)
        self.wait_for_tabs(["Page 0", "Page 1"])
        self.open_menu(self.tab("Page 0"))
        self.desktop.key("Up", "Up", "Return")  # Resize is the last, Close the one before
        self.wait_for_tabs(["Page 1"])

    def test_open_also_from_the_accessibility_bus(self):
        self.start_with(1)
        self.assertTrue(self.desktop.press(self.tab("Page 0"), "ShowMenu"))
        self.wait_for_popups(1)
        self.desktop.key("Escape")
        self.wait_for_popups(0)

    def test_go_with_their_task(self):
        self.start_with(2)
        self.open_menu(self.tab("Page 0"))
        self.client.close(0)
        self.wait_for_popups(0)
        self.wait_for_tabs(["Page 1"])
        self.assertIsNone(self.bar.poll())


class Glyphs(Buttons):
    def test_close_their_window(self):
        self.start_with(2)
        tab = self.tab("Page 0")
        self.desktop.click(tab.x + tab.width - 5, tab.y + 5)
        self.wait_for_tabs(["Page 1"])


class Lists(Buttons):
    settings = {"groupingMode": "always", "autoHideEnabled": False, "mediaSliderDisplay": "Never"}

    def open_list(self, name="Writer Tabs"):
        tab = self.tab(name)
        self.desktop.click_control(tab)
        self.wait_for_popups(1)
        return tab

    def test_go_by_keys_without_taking_the_focus(self):
        self.start_with(3)
        active = self.desktop.active_window()
        self.open_list()
        self.assertEqual(self.desktop.active_window(), active)
        self.desktop.key("Down", "Down", "Return")
        self.wait_until(lambda: self.desktop.active_window() == self.windows[1], "the chosen window")
        self.wait_for_popups(0)

    def test_close_by_a_press_outside_and_by_another_on_their_button(self):
        self.start_with(3)
        tab = self.open_list()
        self.desktop.click(1500, 200)
        self.wait_for_popups(0)
        self.open_list()
        self.desktop.click_control(tab)
        self.wait_for_popups(0)

    def test_have_their_keys_back_after_a_menu(self):
        self.start_with(3)
        self.open_list()
        self.desktop.key("Down", "Menu")
        self.wait_for_popups(2)
        self.desktop.key("Escape")
        self.wait_for_popups(1)
        self.desktop.key("Escape")
        self.wait_for_popups(0)

    def test_are_on_the_accessibility_bus(self):
        self.start_with(3)
        self.open_list()

        def rows():
            return [c.name for c in self.desktop.controls(window_title="Writer Tabs", role="push button")
                    if c.name != "Close"]

        self.wait_until(lambda: rows() == ["Writer Tabs", "Page 0", "Page 1", "Page 2", "Hide All Windows"], "the rows")

    def test_give_a_window_away_by_a_drag(self):
        self.start_with(3)
        tab = self.open_list()
        row = self.desktop.wait_for(
            lambda: next((c for c in self.desktop.controls(window_title="Writer Tabs") if c.name == "Page 1"), None),
            "the row")
        self.desktop.drag((row.x + 60, row.y + row.height / 2), (1200, tab.y + 14))
        self.wait_until(lambda: self.main_row() == ["Writer Tabs", "Page 1"], "the window beside its group")
        self.assertIsNone(self.bar.poll())

    def test_rename_a_custom_group_at_each_key(self):
        self.start_with(2)
        self.open_menu(self.tab("Writer Tabs"))
        self.desktop.key("Down", "Down", "Down", "Return")  # New Group
        self.wait_until(lambda: self.main_row() == ["New Group"], "the custom group")
        self.open_list("New Group")
        self.desktop.key("Tab", "ctrl+a")
        self.desktop.type("Wo")
        self.wait_until(lambda: self.main_row() == ["Wo"], "the name so far")
        self.desktop.type("rk & Play")
        self.wait_until(lambda: self.main_row() == ["Work & Play"], "the whole name")
        self.desktop.key("Escape")
        self.wait_for_popups(0)


if __name__ == "__main__":
    unittest.main(verbosity=2)
