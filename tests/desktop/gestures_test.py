"""What a person does to the bar with the pointer and the keys, on a real X server."""

import time
import unittest

from bar_case import BarCase, Client

BAR_TOP = 1080 - 34


class Gestures(BarCase):
    settings = {"groupingMode": "never", "autoHideEnabled": False, "mediaSliderDisplay": "Never"}

    def start_with(self, count):
        self.client = Client(self.desktop, "Writer")
        self.windows = [self.client.open(number, f"Page {number}") for number in range(count)]
        self.start_bar()
        self.wait_for_tabs([f"Page {number}" for number in range(count)])
        self.desktop.move_pointer(300, 300)

    def main_row(self):
        return [tab.name for tab in sorted(self.buttons(), key=lambda tab: tab.x) if tab.y >= BAR_TOP]

    def overflow_row(self):
        """Of the first overflow row, from left to right."""
        rows = sorted({tab.y for tab in self.buttons() if tab.y < BAR_TOP}, reverse=True)
        return [tab.name for tab in sorted(self.buttons(), key=lambda tab: tab.x) if rows and tab.y == rows[0]]

    def control(self, name):
        return self.desktop.wait_for(
            lambda: next((c for c in self.desktop.controls(role="push button") if c.name == name), None),
            f"the control “{name}”")

    def bar_height_drawn(self):
        """How high the drawn part of the bar is, by the window's shape."""
        window = next(w for w in self.desktop.client_windows() if self.desktop.title(w) == "Korvane Taskbar")
        return self.desktop.window(window).shape_query_extents().bounding_shape_extents_height

    def part_of(self, tab, share):
        return (tab.x + tab.width * share, tab.y + tab.height / 2)

    def drag_onto(self, source, target, share):
        """Drops the tab of one name on a part of another's: 0.1 is its left edge, 0.7 the part that groups."""
        self.desktop.drag(self.part_of(self.tab(source), 0.5), self.part_of(self.tab(target), share))

    def hold(self, point, through):
        """Presses at a point and moves on, the button staying down."""
        self.desktop.move_pointer(*point)
        self.desktop.run(["xdotool", "mousedown", "1"])
        last = point
        for place in through:
            for step in range(1, 9):
                self.desktop.move_pointer(last[0] + (place[0] - last[0]) * step / 8,
                                          last[1] + (place[1] - last[1]) * step / 8)
                time.sleep(0.02)
            last = place

    def let_go(self):
        self.desktop.run(["xdotool", "mouseup", "1"])

    def wait_until(self, condition, what):
        self.desktop.wait_for(condition, what, timeout=8)


class Rows(Gestures):
    def test_open_under_a_resting_pointer_and_tuck_away_after_it(self):
        self.start_with(34)
        tucked = self.bar_height_drawn()
        strip = (1700, 1080 - tucked + 2)
        self.desktop.move_pointer(*strip)
        self.wait_until(lambda: self.bar_height_drawn() > 80, "the rows to open")
        self.desktop.move_pointer(300, 300)
        self.wait_until(lambda: self.bar_height_drawn() == tucked, "the rows to be tucked away")

    def test_do_not_open_over_the_start_area(self):
        self.start_with(34)
        tucked = self.bar_height_drawn()
        self.desktop.move_pointer(200, 1080 - tucked + 2)
        time.sleep(0.6)
        self.assertEqual(self.bar_height_drawn(), tucked)

    def test_let_clicks_through_above_themselves(self):
        self.start_with(34)
        window = self.windows[5]
        self.desktop.run(["xdotool", "windowsize", str(window), "900", "700", "windowmove", str(window), "900", "330"])
        self.desktop.activate(self.windows[6])
        self.wait_until(lambda: self.desktop.active_window() == self.windows[6], "the other window")
        self.desktop.run(["xdotool", "windowraise", str(window)])
        self.desktop.click(1500, 1080 - self.bar_height_drawn() - 6)
        self.wait_until(lambda: self.desktop.active_window() == window, "the click to reach the window")

    def test_are_pinned_open_by_the_arrow(self):
        self.start_with(34)
        tucked = self.bar_height_drawn()
        self.desktop.click_control(self.control("Expand all overflow"))
        self.wait_until(lambda: self.bar_height_drawn() > 80, "the rows to open")
        self.desktop.move_pointer(300, 300)
        time.sleep(0.8)
        self.assertGreater(self.bar_height_drawn(), 80)
        self.desktop.click_control(self.control("Tuck overflow"))
        self.desktop.move_pointer(300, 300)
        self.wait_until(lambda: self.bar_height_drawn() == tucked, "the rows to be tucked away")

    def test_keep_their_tasks_while_the_lock_is_on(self):
        self.start_with(34)
        self.desktop.click_control(self.control("Expand all overflow"))
        before = self.main_row()
        self.desktop.click_control(self.control("Lock overflow return"))
        self.control("Unlock overflow return")
        self.client.close(0)
        self.wait_until(lambda: self.main_row() == before[1:], "the closed task to go, and nothing to come for it")
        self.desktop.click_control(self.control("Unlock overflow return"))
        self.wait_until(lambda: len(self.main_row()) == len(before), "a task to come down")


class Drags(Gestures):
    def test_to_a_tabs_left_edge_reorder(self):
        self.start_with(5)
        self.drag_onto("Page 4", "Page 1", 0.1)
        self.wait_until(lambda: self.main_row() == ["Page 0", "Page 4", "Page 1", "Page 2", "Page 3"], "the new order")

    def test_behind_the_last_tab_go_to_the_end(self):
        self.start_with(4)
        self.desktop.drag(self.part_of(self.tab("Page 0"), 0.5), (1500, BAR_TOP + 17))
        self.wait_until(lambda: self.main_row() == ["Page 1", "Page 2", "Page 3", "Page 0"], "the new order")

    def test_onto_a_tabs_middle_group(self):
        self.start_with(4)
        self.drag_onto("Page 3", "Page 1", 0.7)
        self.wait_until(lambda: self.main_row() == ["Page 0", "New Group", "Page 2"], "the group")

    def test_onto_a_group_join_it(self):
        self.start_with(4)
        self.drag_onto("Page 3", "Page 1", 0.7)
        self.tab("New Group")
        self.drag_onto("Page 0", "New Group", 0.7)
        self.wait_until(lambda: self.main_row() == ["New Group", "Page 2"], "the group of three")

    def test_of_a_group_move_it_whole(self):
        self.start_with(4)
        self.drag_onto("Page 3", "Page 2", 0.7)
        self.tab("New Group")
        self.drag_onto("New Group", "Page 0", 0.1)
        self.wait_until(lambda: self.main_row() == ["New Group", "Page 0", "Page 1"], "the group in front")

    def test_over_tucked_rows_open_them_and_drop_there(self):
        self.start_with(34)
        strip = (1700, 1080 - self.bar_height_drawn() + 2)
        self.hold(self.part_of(self.tab("Page 0"), 0.5), [strip])
        self.wait_until(lambda: self.bar_height_drawn() > 80, "the rows to open under the drag")
        neighbour = self.overflow_row()[-2]
        place = self.part_of(self.tab(neighbour), 0.1)
        self.desktop.move_pointer(place[0] + 40, place[1])
        time.sleep(0.05)
        self.desktop.move_pointer(*place)
        time.sleep(0.1)
        self.let_go()
        self.desktop.move_pointer(300, 300)
        self.wait_until(lambda: "Page 0" not in self.main_row(), "the task to leave the main row")
        self.wait_until(lambda: self.bar_height_drawn() < 80, "the rows to be tucked away")

    def test_that_are_given_up_leave_no_trace(self):
        self.start_with(34)
        before, tucked = self.main_row(), self.bar_height_drawn()
        strip = (1700, 1080 - tucked + 2)
        for finish in (lambda: self.desktop.key("Escape"), lambda: None):
            self.hold(self.part_of(self.tab("Page 2"), 0.5), [strip, (1700, 700)])
            finish()
            self.let_go()
            self.desktop.move_pointer(300, 300)
            self.wait_until(lambda: self.bar_height_drawn() == tucked, "the rows to be tucked away")
            self.assertEqual(self.main_row(), before)

    def test_survive_their_own_window(self):
        self.start_with(4)
        self.hold(self.part_of(self.tab("Page 0"), 0.5), [(self.tab("Page 2").x + 60, BAR_TOP + 17)])
        self.client.close(0)
        self.wait_for_tabs(["Page 1", "Page 2", "Page 3"])
        self.let_go()
        time.sleep(0.3)
        self.assertIsNone(self.bar.poll())
        self.wait_for_tabs(["Page 1", "Page 2", "Page 3"])

    def test_do_not_take_the_focus(self):
        self.start_with(4)
        self.desktop.activate(self.windows[2])
        self.wait_until(lambda: self.desktop.active_window() == self.windows[2], "the window")
        self.drag_onto("Page 3", "Page 0", 0.1)
        self.wait_until(lambda: self.main_row()[0] == "Page 3", "the new order")
        self.assertEqual(self.desktop.active_window(), self.windows[2])


if __name__ == "__main__":
    unittest.main(verbosity=2)
