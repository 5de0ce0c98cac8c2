"""A private desktop on an X server without a screen: for showing the bar, and for tests that look at it from outside.

    with PrivateDesktop(screens=[(1920, 1080, 0, 0)], window_manager="openbox") as desktop:
        desktop.start(["xterm"])
        desktop.wait_for(lambda: desktop.client_windows(), "the first window")

Everything it starts ends with it, by process group, also when this process is killed.
"""

import ctypes
import json
import os
import select
import shutil
import signal
import subprocess
import tempfile
import time
from collections import namedtuple

from Xlib import X, display as xdisplay, error as xerror
from Xlib.ext import xtest
from Xlib.protocol import event as xevent

HERE = os.path.dirname(os.path.abspath(__file__))
BAR_TITLE = "Korvane Taskbar"
# The distribution's own, which has the bindings; another one may come first in the path.
SYSTEM_PYTHON = "/usr/bin/python3"

# What of the caller's session must not reach a private one.
FOREIGN_VARIABLES = (
    "AT_SPI_BUS_ADDRESS", "DBUS_SESSION_BUS_ADDRESS", "DBUS_STARTER_ADDRESS", "DBUS_STARTER_BUS_TYPE",
    "DESKTOP_SESSION", "DESKTOP_STARTUP_ID", "DISPLAY", "GDK_BACKEND", "GTK_MODULES", "PULSE_SERVER",
    "QT_QPA_PLATFORM", "QT_SCALE_FACTOR", "SESSION_MANAGER", "WAYLAND_DISPLAY", "XAUTHORITY",
    "XDG_CURRENT_DESKTOP", "XDG_SESSION_ID", "XDG_SESSION_TYPE",
)

ICONIC_STATE = 3
PR_SET_PDEATHSIG = 1

# A control as the accessibility bus tells of it; the place is in pixels of the whole desktop.
Control = namedtuple("Control", "name description role x y width height states path")


class DesktopError(Exception):
    """Something did not come about in time, or could not be started."""


def _end_with_parent():
    ctypes.CDLL(None).prctl(PR_SET_PDEATHSIG, signal.SIGTERM)


class PrivateDesktop:
    """An X server, a session bus, an accessibility bus, a window manager and perhaps a compositor.

    screens: (width, height, x, y) of each monitor; the first is the primary one.
    window_manager: "openbox", "icewm", "xfwm4", another command, or None.
    directory: where the private home and configuration live and stay; a temporary one by default.
    """

    def __init__(self, screens=((1920, 1080, 0, 0),), window_manager="openbox", compositor=False, directory=None,
                 buses=True, environment=None):
        self.screens = list(screens)
        self.window_manager_command = window_manager
        self.with_compositor = compositor
        self.directory = directory
        self.with_buses = buses
        self.extra_environment = dict(environment or {})
        self.environment = {}
        self.processes = []
        self.window_manager = None
        self.compositor = None
        self.display_name = None
        self.x = None
        self._temporary = []
        self._accessibility = None

    # ---- coming up and going down

    def __enter__(self):
        try:
            self._prepare_environment()
            self._start_server()
            if self.with_buses:
                self._start_buses()
            if len(self.screens) > 1 or self.screens[0][2:] != (0, 0):
                self._place_monitors()
            if self.window_manager_command:
                self.start_window_manager(self.window_manager_command)
            if self.with_compositor:
                self.start_compositor()
        except BaseException:
            self.__exit__(None, None, None)
            raise
        return self

    def __exit__(self, *_):
        for process in reversed(self.processes):
            self.stop(process)
        self.processes.clear()
        if self.x is not None:
            try:
                self.x.close()
            except (xerror.ConnectionClosedError, OSError):
                pass
            self.x = None
        for path in self._temporary:
            shutil.rmtree(path, ignore_errors=True)
        self._temporary.clear()

    def _temporary_directory(self, prefix):
        path = tempfile.mkdtemp(prefix=prefix)
        self._temporary.append(path)
        return path

    def _prepare_environment(self):
        base = os.path.abspath(self.directory) if self.directory else self._temporary_directory("korvane-desktop-")
        self.directory = base
        environment = {key: value for key, value in os.environ.items() if key not in FOREIGN_VARIABLES}
        places = {
            "HOME": "home",
            "XDG_CONFIG_HOME": "config",
            "XDG_CACHE_HOME": "cache",
            "XDG_DATA_HOME": "data",
            "XDG_STATE_HOME": "state",
        }
        for variable, name in places.items():
            environment[variable] = os.path.join(base, name)
            os.makedirs(environment[variable], mode=0o700, exist_ok=True)
        os.makedirs(os.path.join(base, "logs"), exist_ok=True)
        # Not below the directory: the paths of sockets have to be short.
        environment["XDG_RUNTIME_DIR"] = self._temporary_directory("korvane-run-")
        # A lock of the caller's own session is none of this one.
        environment["DBUS_SYSTEM_BUS_ADDRESS"] = "unix:path=" + os.path.join(environment["XDG_RUNTIME_DIR"], "system")
        environment.update({
            "LANG": "C.UTF-8",
            "LC_ALL": "C.UTF-8",
            "GIO_USE_VFS": "local",
            "GSETTINGS_BACKEND": "memory",
            "NO_AT_BRIDGE": "1",  # the sample programs need not be on the accessibility bus
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
        })
        environment.update(self.extra_environment)
        self.environment = environment

    def _start_server(self):
        width = max(x + w for w, _, x, _ in self.screens)
        height = max(y + h for _, h, _, y in self.screens)
        reader, writer = os.pipe()
        # Without -noreset the monitors that are placed later would go with the last client.
        self.server = self.start(
            ["Xvfb", "-displayfd", str(writer), "-screen", "0", f"{width}x{height}x24", "-dpi", "96", "-nolisten", "tcp",
             "-noreset", "+extension", "RANDR", "+extension", "XTEST", "+extension", "Composite"],
            pass_fds=(writer,))
        os.close(writer)
        try:
            number = b""
            end = time.monotonic() + 20
            while not number.endswith(b"\n"):
                if not select.select([reader], [], [], max(0, end - time.monotonic()))[0]:
                    raise DesktopError("the X server did not come up in time")
                part = os.read(reader, 64)
                if not part:
                    raise DesktopError("the X server ended at once; see " + self.log_path(self.server))
                number += part
        finally:
            os.close(reader)
        self.display_name = ":" + number.decode().strip()
        self.environment["DISPLAY"] = self.display_name
        self.x = xdisplay.Display(self.display_name)
        self.root = self.x.screen().root

    def _start_buses(self):
        address = "unix:path=" + os.path.join(self.environment["XDG_RUNTIME_DIR"], "bus")
        self.session_bus = self.start(["dbus-daemon", "--session", "--nofork", "--nopidfile", "--address=" + address])
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address
        self.wait_for(lambda: os.path.exists(address[len("unix:path="):]), "the session bus")
        launcher = shutil.which("at-spi-bus-launcher", path="/usr/libexec:/usr/lib/at-spi2-core")
        if launcher is None:
            raise DesktopError("at-spi2-core is not installed")
        self.start([launcher, "--launch-immediately"])
        self._accessibility = self.start([SYSTEM_PYTHON, "-W", "ignore", os.path.join(HERE, "accessibility.py")],
                                         stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.wait_for(lambda: self._ask("ready"), "the accessibility bus")

    def _place_monitors(self):
        """Monitors as the window system knows them. One keeps the server's only output, or the rest would vanish."""
        for number, (width, height, x, y) in enumerate(self.screens):
            self.set_monitor(f"M{number}", width, height, x, y, primary=number == 0)

    def set_monitor(self, name, width, height, x, y, primary=False):
        geometry = f"{width}/{round(width * 25.4 / 96)}x{height}/{round(height * 25.4 / 96)}+{x}+{y}"
        output = "screen" if primary else "none"
        self.run(["xrandr", "--setmonitor", ("*" if primary else "") + name, geometry, output])

    def remove_monitor(self, name):
        self.run(["xrandr", "--delmonitor", name])

    def start_window_manager(self, command):
        """Starts one and waits until it has said that it manages this desktop."""
        words = command.split() if isinstance(command, str) else list(command)
        if words == ["xfwm4"]:
            words += ["--compositor=off"]
        self.window_manager = self.start(words)
        self.wait_for(self._managed, words[0] + " to manage the desktop")
        return self.window_manager

    def _managed(self):
        check = self.property(self.root, "_NET_SUPPORTING_WM_CHECK")
        if not check:
            return False
        window = self.x.create_resource_object("window", check[0])
        return self.property(window, "_NET_SUPPORTING_WM_CHECK") == check

    def start_compositor(self):
        self.compositor = self.start(["picom", "--backend", "xrender", "--config", os.devnull])
        selection = self.x.intern_atom("_NET_WM_CM_S0")
        self.wait_for(lambda: self.x.get_selection_owner(selection) != X.NONE, "the compositor")
        return self.compositor

    def set_background(self, colour):
        """One colour, for the server and, as a picture, for compositors."""
        value = int(colour.lstrip("#"), 16)
        pixmap = self.root.create_pixmap(16, 16, self.x.screen().root_depth)
        context = pixmap.create_gc(foreground=value)
        pixmap.fill_rectangle(context, 0, 0, 16, 16)
        self.root.change_property(self.x.intern_atom("_XROOTPMAP_ID"), self.x.intern_atom("PIXMAP"), 32, [pixmap.id])
        self.root.change_attributes(background_pixmap=pixmap.id)
        self.root.clear_area()
        self.x.sync()

    # ---- processes

    def start(self, command, **options):
        """Starts a program in a process group of its own; its output goes into a log. Returns the process."""
        name = os.path.basename(command[0])
        log = open(os.path.join(self.directory, "logs", f"{len(self.processes):02}-{name}.log"), "wb")
        options.setdefault("stdin", subprocess.DEVNULL)
        options.setdefault("stdout", log)
        options.setdefault("stderr", log)
        options.setdefault("env", self.environment)
        options.setdefault("cwd", self.environment["HOME"])
        try:
            process = subprocess.Popen(command, start_new_session=True, preexec_fn=_end_with_parent, **options)
        except FileNotFoundError as missing:
            raise DesktopError(f"{name} is not installed") from missing
        finally:
            log.close()
        process.log = log.name
        self.processes.append(process)
        return process

    def log_path(self, process):
        return process.log

    def log_text(self, process):
        with open(process.log, encoding="utf-8", errors="replace") as log:
            return log.read()

    def run(self, command, timeout=20):
        """Runs a short command to its end and returns what it printed. An exit status other than 0 is an error."""
        done = subprocess.run(command, env=self.environment, stdin=subprocess.DEVNULL, capture_output=True, text=True,
                              timeout=timeout, check=False)
        if done.returncode != 0:
            raise DesktopError(f"{command[0]} failed: {done.stderr.strip()}")
        return done.stdout

    def stop(self, process, patience=5):
        """Ends a process and all of its group."""
        for wish in (signal.SIGTERM, signal.SIGKILL):
            if process.poll() is None or wish == signal.SIGKILL:
                try:
                    os.killpg(process.pid, wish)
                except (ProcessLookupError, PermissionError):
                    pass
            try:
                process.wait(patience)
            except subprocess.TimeoutExpired:
                continue
        for pipe in (process.stdin, process.stdout):
            if pipe is not None:
                try:
                    pipe.close()
                except OSError:
                    pass

    def wait_for(self, condition, what, timeout=20, interval=0.02):
        """Returns the first true value of the condition; an error names what did not come."""
        end = time.monotonic() + timeout
        while True:
            value = condition()
            if value:
                return value
            if time.monotonic() > end:
                raise DesktopError(f"waited {timeout} s in vain for {what}")
            time.sleep(interval)

    # ---- windows, as the X server and the window manager tell of them

    def property(self, window, name):
        """The values of a window's property as a list; for text one string. None when it or the window is not there."""
        try:
            value = window.get_full_property(self.x.intern_atom(name), X.AnyPropertyType)
        except (xerror.BadWindow, xerror.BadDrawable):
            return None
        if value is None:
            return None
        if value.format == 8:
            raw = value.value
            return raw.decode("utf-8", "replace") if isinstance(raw, bytes) else str(raw)
        return list(value.value)

    def window(self, identifier):
        return self.x.create_resource_object("window", identifier)

    def client_windows(self):
        """The identifiers of the managed windows, oldest first."""
        return self.property(self.root, "_NET_CLIENT_LIST") or []

    def active_window(self):
        return (self.property(self.root, "_NET_ACTIVE_WINDOW") or [0])[0]

    def title(self, identifier):
        window = self.window(identifier)
        return self.property(window, "_NET_WM_NAME") or self.property(window, "WM_NAME") or ""

    def window_class(self, identifier):
        """(instance, class)"""
        parts = (self.property(self.window(identifier), "WM_CLASS") or "").split("\0")
        return (parts + ["", ""])[:2]

    def pid(self, identifier):
        return (self.property(self.window(identifier), "_NET_WM_PID") or [0])[0]

    def is_minimised(self, identifier):
        return (self.property(self.window(identifier), "WM_STATE") or [0])[0] == ICONIC_STATE

    def states(self, identifier):
        """The names of _NET_WM_STATE."""
        return [self.x.get_atom_name(atom) for atom in self.property(self.window(identifier), "_NET_WM_STATE") or []]

    def geometry(self, identifier):
        """(x, y, width, height) on the desktop."""
        window = self.window(identifier)
        size = window.get_geometry()
        place = window.translate_coords(self.root, 0, 0)
        return (-place.x, -place.y, size.width, size.height)

    def activate(self, identifier):
        self._ask_window_manager(identifier, "_NET_ACTIVE_WINDOW", [2, X.CurrentTime, 0, 0, 0])

    def close(self, identifier):
        self._ask_window_manager(identifier, "_NET_CLOSE_WINDOW", [X.CurrentTime, 2, 0, 0, 0])

    def minimise(self, identifier):
        self._ask_window_manager(identifier, "WM_CHANGE_STATE", [ICONIC_STATE, 0, 0, 0, 0])

    def maximise(self, identifier):
        both = [self.x.intern_atom("_NET_WM_STATE_MAXIMIZED_" + way) for way in ("VERT", "HORZ")]
        self._ask_window_manager(identifier, "_NET_WM_STATE", [1, *both, 2, 0])

    def _ask_window_manager(self, identifier, message, data):
        event = xevent.ClientMessage(window=self.window(identifier), client_type=self.x.intern_atom(message),
                                     data=(32, data))
        self.root.send_event(event, event_mask=X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        self.x.flush()

    def wait_for_window(self, title_part, timeout=30):
        """The identifier of the first managed window whose title contains the text."""
        def found():
            return next((w for w in self.client_windows() if title_part in self.title(w)), None)
        return self.wait_for(found, f"a window with “{title_part}” in its title", timeout)

    def bar_places(self):
        """Where the bars are that can be seen: (x, y, width, height). A hidden one is cut down to nothing, but it stays a
        window."""
        places = []
        for identifier in self.client_windows():
            if self.title(identifier) != BAR_TITLE:
                continue
            try:
                shape = self.window(identifier).shape_query_extents()
                if shape.bounding_shape_extents_width > 0 and shape.bounding_shape_extents_height > 0:
                    places.append(self.geometry(identifier))
            except (xerror.BadWindow, xerror.BadDrawable):
                pass
        return places

    # ---- hands and eyes

    def move_pointer(self, x, y):
        # As a mouse does it: a pointer that is only put somewhere makes no motion for those who watch the device.
        xtest.fake_input(self.x, X.MotionNotify, x=round(x), y=round(y))
        self.x.sync()

    def pointer(self):
        place = self.root.query_pointer()
        return (place.root_x, place.root_y)

    def click(self, x, y, button=1):
        if self.pointer() != (round(x), round(y)):
            self.move_pointer(x, y)
        self.run(["xdotool", "click", str(button)])

    def click_control(self, control, button=1):
        self.click(control.x + control.width / 2, control.y + control.height / 2, button)

    def drag(self, start, end, steps=8):
        self.move_pointer(*start)
        self.run(["xdotool", "mousedown", "1"])
        for step in range(1, steps + 1):
            part = step / steps
            self.move_pointer(start[0] + (end[0] - start[0]) * part, start[1] + (end[1] - start[1]) * part)
            time.sleep(0.02)  # as a hand would move; a drag that arrives at once is no drag to most toolkits
        self.run(["xdotool", "mouseup", "1"])

    def key(self, *keys):
        self.run(["xdotool", "key", *keys])

    def type(self, text):
        self.run(["xdotool", "type", "--delay", "5", text])

    def screenshot(self, path):
        self.run(["import", "-silent", "-window", "root", str(path)])

    # ---- the accessibility bus

    def _ask(self, operation, **arguments):
        process = self._accessibility
        if process is None:
            raise DesktopError("this desktop has no accessibility bus")
        request = json.dumps({"operation": operation, **arguments}) + "\n"
        try:
            process.stdin.write(request.encode())
            process.stdin.flush()
            answer = process.stdout.readline()
        except OSError:
            answer = b""
        if not answer:
            raise DesktopError("the reader of the accessibility bus has ended; see " + self.log_path(process))
        return json.loads(answer)

    def accessible_tree(self, window_title=None):
        """Nested dictionaries of the accessible windows with that title, or of all of them."""
        return self._ask("tree", window=window_title)

    def controls(self, window_title=BAR_TITLE, role=None, within=None):
        """All visible controls of the windows with that title, in the order of the tree; with `within` only those that
        stand directly in something of that name."""
        found = []

        def visit(node, parent=None):
            fits = (role is None or node["role"] == role) and (within is None or (parent and parent["name"] == within))
            if "showing" in node["states"] and fits:
                found.append(Control(node["name"], node["description"], node["role"], *node["place"],
                                     tuple(node["states"]), tuple(node["path"])))
            for child in node["children"]:
                visit(child, node)

        for window in self.accessible_tree(window_title):
            visit(window)
        return found

    def press(self, control, action="Press"):
        """Does what a click on it does, without the pointer. False when the control is gone or has no such action."""
        return self._ask("act", path=list(control.path), action=action)

    def tabs(self):
        """The tabs of every bar, from left to right."""
        return sorted(self.controls(role="push button", within="Tasks"), key=lambda c: (c.y, c.x))
