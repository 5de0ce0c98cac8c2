"""The controls at the end of the bar, on a real X server with a real sound server."""

import os
import subprocess
import time
import unittest

from bar_case import BarCase, Client


class Tray(BarCase):
    settings = {"groupingMode": "never", "autoHideEnabled": False, "mediaSliderDisplay": "Taskbar",
                "volumeScrollRate": 10.0, "showAttentionApps": True, "expertBadgeScanSeconds": 1.0}

    def setUp(self):
        super().setUp()
        place = os.path.join(self.desktop.environment["HOME"], "pulse")
        os.makedirs(place, mode=0o700)
        socket = os.path.join(place, "native")
        environment = {**self.desktop.environment, "HOME": place, "XDG_RUNTIME_DIR": place, "XDG_CONFIG_HOME": place}
        self.server = subprocess.Popen(
            ["pulseaudio", "--daemonize=no", "--exit-idle-time=-1", "-n", "--disable-shm=yes",
             "-L", "module-null-sink sink_name=first",
             "-L", f"module-native-protocol-unix auth-anonymous=1 socket={socket}"],
            env=environment, stderr=subprocess.DEVNULL)
        self.addCleanup(self.end_server)
        self.desktop.environment["PULSE_SERVER"] = "unix:" + socket
        self.desktop.wait_for(lambda: "Server Name" in self.pactl("info"), "the sound server")
        self.pactl("set-default-sink", "first")
        self.pactl("set-sink-volume", "first", "50%")
        self.client = Client(self.desktop, "Writer")
        self.window = self.client.open(1, "Page 1")
        self.desktop.move_pointer(300, 300)
        self.start_bar()
        self.wait_for_tabs(["Page 1"])

    def end_server(self):
        self.server.terminate()
        self.server.wait(5)

    def pactl(self, *words):
        return subprocess.run(["pactl", *words], env=self.desktop.environment, capture_output=True, text=True,
                              check=False).stdout

    def control(self, name, window="Korvane Taskbar", role="push button"):
        return self.desktop.wait_for(
            lambda: next((c for c in self.desktop.controls(window, role=role) if c.name == name), None),
            f"the control “{name}”")

    def volume(self):
        return self.pactl("get-sink-volume", "first")

    def slider_is_open(self):
        return bool(self.desktop.controls("Volume", role="slider"))

    def shows(self, percent):
        """What the button's symbol stands for, as the accessibility bus describes it."""
        self.desktop.wait_for(lambda: self.control("Volume").description.endswith(percent), percent, timeout=6)

    def test_the_wheel_sets_the_volume_and_shows_its_slider_for_a_while(self):
        self.shows("50%")
        self.desktop.click_control(self.control("Volume"), button=4)
        self.desktop.wait_for(lambda: "60%" in self.volume(), "the sink to be louder", timeout=6)
        self.desktop.wait_for(self.slider_is_open, "the slider", timeout=1.4)
        self.desktop.wait_for(lambda: not self.slider_is_open(), "the slider to go", timeout=4)
        self.assertEqual(self.desktop.active_window(), self.window)

    def test_a_volume_set_elsewhere_is_shown(self):
        self.pactl("set-sink-volume", "first", "20%")
        self.shows("20%")

    def test_a_click_opens_the_slider_and_the_keys_move_it(self):
        self.desktop.activate(self.window)
        self.desktop.wait_for(lambda: self.desktop.active_window() == self.window, "the window")
        self.desktop.click_control(self.control("Volume"))
        self.desktop.wait_for(self.slider_is_open, "the slider", timeout=6)
        self.desktop.key("Right")
        self.desktop.wait_for(lambda: "51%" in self.volume(), "one percent more", timeout=6)
        time.sleep(1.8)
        self.assertTrue(self.slider_is_open())
        self.desktop.key("Escape")
        self.desktop.wait_for(lambda: not self.slider_is_open(), "the slider to go", timeout=4)
        self.assertEqual(self.desktop.active_window(), self.window)

    def test_a_click_elsewhere_closes_the_slider(self):
        self.desktop.click_control(self.control("Volume"))
        self.desktop.wait_for(self.slider_is_open, "the slider", timeout=6)
        self.desktop.click(300, 300)
        self.desktop.wait_for(lambda: not self.slider_is_open(), "the slider to go", timeout=4)

    def test_without_a_sound_server_the_button_stays(self):
        self.end_server()
        self.desktop.click_control(self.control("Volume"), button=4)
        self.desktop.wait_for(self.slider_is_open, "the slider", timeout=3)
        self.assertIsNone(self.bar.poll())

    def test_the_attention_list_opens_by_a_click_and_by_a_resting_pointer(self):
        other = Client(self.desktop, "Chat")
        window = other.open(1, "Talk")
        self.tab("Talk")
        self.desktop.wait_for(lambda: window in self.desktop.client_windows(), "the window to be managed")
        # A window that gets the focus has the attention that it wants.
        self.desktop.activate(self.window)
        self.desktop.wait_for(lambda: self.desktop.active_window() == self.window, "the other window")
        self.demand_attention(window)
        mark = self.control("Notifications")
        self.desktop.click_control(mark)
        self.control("Chat", "Notifications")
        self.desktop.key("Escape")
        self.desktop.wait_for(lambda: not self.desktop.controls("Notifications"), "the list to close", timeout=4)
        self.desktop.move_pointer(300, 300)
        self.desktop.move_pointer(mark.x + 9, mark.y + 7)
        started = time.monotonic()
        row = self.control("Chat", "Notifications")
        self.assertGreater(time.monotonic() - started, 1.0)
        self.desktop.click_control(row)
        self.desktop.wait_for(lambda: self.desktop.active_window() == window, "the window that wanted attention")
        self.desktop.wait_for(lambda: not self.desktop.controls("Notifications"), "the list to close", timeout=4)

    def demand_attention(self, window):
        self.desktop._ask_window_manager(
            window, "_NET_WM_STATE", [1, self.desktop.x.intern_atom("_NET_WM_STATE_DEMANDS_ATTENTION"), 0, 1, 0])

    def test_hide_all_and_close_all_do_as_they_say(self):
        second = self.client.open(2, "Page 2")
        self.tab("Page 2")
        self.desktop.click_control(self.control("Hide All Visible Windows"))
        self.desktop.wait_for(lambda: self.desktop.is_minimised(self.window) and self.desktop.is_minimised(second),
                              "both windows to be minimised")

    def test_the_clock_shows_the_time(self):
        names = [c.name for c in self.desktop.controls(role="push button")]
        self.assertTrue(any(name.endswith(("AM", "PM")) for name in names), names)


if __name__ == "__main__":
    unittest.main(verbosity=2)
