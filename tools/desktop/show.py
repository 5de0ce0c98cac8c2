"""Shows the bar at work on a private desktop: show.py PROGRAM [ARGUMENT...]

Brings up a desktop with a few real windows, starts the program, uses its tabs as a person would and checks from outside
what became of the windows. Prints what it saw and leaves pictures in build/desktop. On a terminal the desktop then stays
until Ctrl-C; otherwise all of it ends with status 0, or 1 if something was not as it should be.
"""

import os
import shutil
import signal
import subprocess
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from desktop import DesktopError, PrivateDesktop  # noqa: E402

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
PLACE = os.path.join(ROOT, "build", "desktop")
SCREEN = (1920, 1080)
TABS_TIMEOUT = 30


def say(text):
    print(text, flush=True)


def sample_windows(desktop):
    """Starts the sample programs one after the other, so that their order on the bar is the same each time."""
    notes = os.path.join(desktop.environment["HOME"], "Shopping list.txt")
    with open(notes, "w", encoding="utf-8") as file:
        file.write("Apples\nBread\nCoffee\n")
    programs = [
        (["xterm", "-T", "Terminal", "-geometry", "90x24+80+80"], "Terminal"),
        (["mousepad", notes], "Shopping list"),
        (["pcmanfm", "--no-desktop", desktop.environment["HOME"]], "home"),
        (["galculator"], "galculator"),
    ]
    windows = []
    for command, title in programs:
        desktop.start(command)
        windows.append(desktop.wait_for_window(title))
    return windows


def tab_of(desktop, window):
    """The tab of a window: by its title, else by the name of its program."""
    title = desktop.title(window).casefold()
    names = [name.casefold() for name in desktop.window_class(window) if name]
    tabs = desktop.tabs()
    for tab in tabs:
        if tab.name.casefold() in title or title in tab.name.casefold():
            return tab
    for tab in tabs:
        if any(name in tab.name.casefold() or tab.name.casefold() in name for name in names):
            return tab
    return None


def is_on_bar(desktop, tab):
    """Whether the tab stands where a visible bar is. The accessibility bus may still tell of a place before the last."""
    return tab is not None and any(x <= tab.x and y <= tab.y and tab.x + tab.width <= x + width
                                   and tab.y + tab.height <= y + height
                                   for x, y, width, height in desktop.bar_places())


def click_tab(desktop, window):
    """Goes down to the edge of the screen first, as one does for a bar that hides, and clicks the tab where it stands."""
    title = desktop.title(window)
    tab = desktop.wait_for(lambda: tab_of(desktop, window), f"the tab of “{title}”")
    desktop.move_pointer(tab.x + tab.width / 2, SCREEN[1] - 1)

    def settled():
        found = tab_of(desktop, window)
        return found if is_on_bar(desktop, found) else None

    tab = desktop.wait_for(settled, f"the tab of “{title}” to come up under the pointer")
    desktop.click_control(tab)
    return tab.name


def use_the_tabs(desktop, windows):
    chosen = next(w for w in windows if w != desktop.active_window())
    title = desktop.title(chosen)

    name = click_tab(desktop, chosen)
    desktop.wait_for(lambda: desktop.active_window() == chosen, f"“{title}” to become active after a click on its tab")
    say(f"A click on the tab “{name}” made “{title}” the active window.")

    click_tab(desktop, chosen)
    desktop.wait_for(lambda: desktop.is_minimised(chosen), f"“{title}” to be minimised by a click on its tab")
    say("A second click minimised it: " + window_state(desktop, chosen))
    desktop.screenshot(os.path.join(PLACE, "minimised.png"))

    click_tab(desktop, chosen)
    desktop.wait_for(lambda: not desktop.is_minimised(chosen) and desktop.active_window() == chosen,
                     f"“{title}” to come back after a click on its tab")
    say("A third click brought it back: " + window_state(desktop, chosen))


def window_state(desktop, window):
    """In the words of another program than ours."""
    lines = desktop.run(["xprop", "-id", str(window), "WM_STATE"]).splitlines()
    return next((" ".join(line.split()) for line in lines if "window state" in line), "WM_STATE not set")


def show(program):
    for name in ("home", "config", "cache", "data", "state", "logs"):
        shutil.rmtree(os.path.join(PLACE, name), ignore_errors=True)
    os.makedirs(PLACE, exist_ok=True)
    with PrivateDesktop(screens=[(*SCREEN, 0, 0)], compositor=True, directory=PLACE) as desktop:
        desktop.set_background("#24405e")
        windows = sample_windows(desktop)
        say(f"Display {desktop.display_name} shows {len(windows)} windows.")
        # The bar hides when the pointer is elsewhere.
        desktop.move_pointer(SCREEN[0] / 2, SCREEN[1] - 1)
        started = time.monotonic()
        bar = desktop.start(program)
        try:
            def all_have_tabs():
                if bar.poll() is not None:
                    raise DesktopError(f"the program ended with status {bar.returncode}")
                return all(is_on_bar(desktop, tab_of(desktop, window)) for window in windows)
            desktop.wait_for(all_have_tabs, "a tab for every window", TABS_TIMEOUT)
            say(f"All of them had their tabs after {time.monotonic() - started:.1f} s. The accessibility bus reads:")
            for tab in desktop.tabs():
                say(f"  {tab.role} “{tab.name}” at {tab.x},{tab.y}, {tab.width} × {tab.height}")
            desktop.move_pointer(SCREEN[0] / 2, SCREEN[1] - 1)
            desktop.wait_for(desktop.bar_places, "the bar to come up under the pointer")
            desktop.screenshot(os.path.join(PLACE, "desktop.png"))
            use_the_tabs(desktop, windows)
            desktop.screenshot(os.path.join(PLACE, "used.png"))
            if bar.poll() is not None:
                raise DesktopError(f"the program ended with status {bar.returncode}")
        except (DesktopError, subprocess.SubprocessError):
            try:
                desktop.screenshot(os.path.join(PLACE, "failure.png"))
            except (DesktopError, subprocess.SubprocessError):
                pass
            sys.stderr.write(desktop.log_text(bar)[-4000:])
            raise
        say(f"Pictures are in {os.path.relpath(PLACE, ROOT)}.")
        if sys.stdin.isatty() and sys.stdout.isatty():
            say(f"The desktop stays on display {desktop.display_name} until you press Ctrl-C.")
            try:
                bar.wait()
            except KeyboardInterrupt:
                pass


def main():
    if len(sys.argv) < 2:
        sys.exit("usage: show.py PROGRAM [ARGUMENT...]")
    # So that what was started ends with us, whoever ends us.
    for number in (signal.SIGTERM, signal.SIGHUP):
        signal.signal(number, lambda received, _: sys.exit(128 + received))
    try:
        show([os.path.abspath(sys.argv[1]), *sys.argv[2:]])
    except (DesktopError, subprocess.SubprocessError) as failure:
        sys.exit(f"The bar could not be shown: {failure}")
    except KeyboardInterrupt:
        sys.exit(130)


if __name__ == "__main__":
    main()
