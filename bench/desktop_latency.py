"""How soon the bar shows what happens on a desktop: desktop_latency.py PROGRAM SAMPLE_CLIENT [ROUNDS]

Each time runs from the moment a program has made its change to the moment the pixels of the bar differ, read by polling a
few pixels. The polling's own cost, measured in the same run on a window that repaints at once, is the floor that the
others are to be compared with.
"""

import os
import plistlib
import statistics
import subprocess
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "tools", "desktop"))
from Xlib import X  # noqa: E402
from desktop import PrivateDesktop  # noqa: E402

QUIET = 0.25  # seconds between two changes, so that each is the first after a quiet moment
BAR_TOP = 1080 - 34


class Client:
    def __init__(self, desktop, program):
        self.process = desktop.start([program, "Latency"], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.process.stdout.readline()

    def tell(self, command):
        self.process.stdin.write((command + "\n").encode())
        self.process.stdin.flush()
        return self.process.stdout.readline().decode().strip()


def pixels(desktop, x, width):
    return desktop.root.get_image(x, BAR_TOP + 3, width, 28, X.ZPixmap, 0xFFFFFFFF).data


def until_changed(desktop, x, width, act, limit=5):
    before = pixels(desktop, x, width)
    act()
    start = time.perf_counter()
    while pixels(desktop, x, width) == before:
        if time.perf_counter() - start > limit:
            sys.exit("the bar did not change in time")
    return (time.perf_counter() - start) * 1000


def quiet_rounds(rounds, measure):
    times = []
    for number in range(rounds):
        time.sleep(QUIET)
        times.append(measure(number))
    return times


def floor(desktop, rounds):
    """A window of our own over the bar's place whose ground changes: what polling sees at the earliest."""
    window = desktop.root.create_window(300, BAR_TOP, 200, 34, 0, desktop.x.screen().root_depth, override_redirect=1,
                                        background_pixel=0x112233)
    window.map()
    desktop.x.sync()

    def change(number):
        def act():
            window.change_attributes(background_pixel=0x203040 + number)
            window.clear_area()
            desktop.x.flush()
        return until_changed(desktop, 340, 60, act)

    times = quiet_rounds(rounds, change)
    window.destroy()
    desktop.x.sync()
    return times


def start_to_first_tab(desktop, program):
    time.sleep(1)
    bar = desktop.start([program])
    started = time.perf_counter()
    shades = 0
    while shades < 120:  # the ground alone has one for each of its rows, a tab's picture and text have many more
        image = pixels(desktop, 66, 60)
        shades = len({image[i:i + 4] for i in range(0, len(image), 4)})
        if time.perf_counter() - started > 10:
            sys.exit("no tab came")
    return bar, (time.perf_counter() - started) * 1000


def main():
    program, client_program = (os.path.abspath(path) for path in sys.argv[1:3])
    rounds = int(sys.argv[3]) if len(sys.argv) > 3 else 30
    with PrivateDesktop(screens=[(1920, 1080, 0, 0)], buses=False) as desktop:
        place = os.path.join(desktop.environment["XDG_CONFIG_HOME"], "korvane")
        os.makedirs(place, mode=0o700)
        with open(os.path.join(place, "defaults.plist"), "wb") as file:
            plistlib.dump({"groupingMode": "never", "mediaSliderDisplay": "Never"}, file)
        client = Client(desktop, client_program)
        client.tell("create 1 a first window of some width")
        client.tell("map 1")
        results = {"floor: a window that repaints at once": floor(desktop, rounds)}
        bar, first = start_to_first_tab(desktop, program)
        results["start to first painted tab"] = [first]
        time.sleep(1)

        def retitle(number):
            return until_changed(desktop, 90, 100, lambda: client.tell(f"title 1 {'ABCDEFGH'[number % 8] * 20}"))

        def new_window(number):
            last_edge = 58 + 220 + 10

            def act():
                client.tell(f"create {number + 2} {'W' * 40}")
                client.tell(f"map {number + 2}")
            took = until_changed(desktop, last_edge, 100, act)
            time.sleep(QUIET)
            client.tell(f"destroy {number + 2}")
            return took

        results["changed title"] = quiet_rounds(rounds, retitle)
        client.tell("title 1 " + "W" * 40)
        results["new window"] = quiet_rounds(rounds, new_window)
        before = read_cpu(bar.pid)
        time.sleep(10)
        results["CPU in 10 idle seconds"] = [(read_cpu(bar.pid) - before) * 1000]
        memory = memory_of(bar.pid)
    lowest = statistics.median(results["floor: a window that repaints at once"])
    print(f"{'':40} {'median ms':>10} {'worst ms':>10} {'to floor':>9}")
    for name, times in results.items():
        median = statistics.median(times)
        print(f"{name:40} {median:10.2f} {max(times):10.2f} {median / lowest:9.1f}")
    print("memory, MiB: " + ", ".join(f"{name} {value / 1024:.1f}" for name, value in memory.items()))


def read_cpu(pid):
    with open(f"/proc/{pid}/stat", encoding="ascii") as file:
        fields = file.read().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def memory_of(pid):
    wanted = {"Pss", "Private_Dirty", "Rss"}
    with open(f"/proc/{pid}/smaps_rollup", encoding="ascii") as file:
        return {line.split(":")[0]: int(line.split()[1]) for line in file if line.split(":")[0] in wanted}


if __name__ == "__main__":
    main()
