#!/usr/bin/python3
"""peers.py - measures taskbars side by side, each in its own private X session.

  /usr/bin/python3 peers.py --panels tint2,lxqt-panel,... --quick|--full [--rounds N] [--picom] [--korvane CMD] [--out DIR]

For each panel and round: Xvfb 1920x1080x24 + a private D-Bus session + openbox (+ picom), a
private HOME, then the panel with nothing in it but a task list in a bar 34 px high along the
bottom. probe.c owns the test windows and does everything that is timed (see its first lines for
how pixels are watched). Needs only the Python standard library; compiles its C helpers with cc.

What is counted as "the panel": every process that carries this run's mark in its environment and
is not X, openbox, picom, dbus-daemon or the probe. So out-of-process applets and the services that
the panel makes D-Bus start (xfconfd, bamfdaemon, ...) count; the JSON lists them one by one.

How a window's tab is found: by pixel difference. The window's title is changed to WMWMWM..., the
bounding box of what changed in the bar is that tab's label, the title is put back. The middle of
the box is where the click goes. No knowledge of the panel is needed, only that tabs show titles.

CPU is the scheduler's own run time in ns (/proc/PID/task/*/schedstat, checked against utime+stime),
because many of these numbers are below the 10 ms tick.
"""
import argparse, atexit, json, os, plistlib, random, shutil, signal, statistics, subprocess, sys, tempfile, threading, time

HERE = os.path.dirname(os.path.abspath(__file__))
W, H, BAR = 1920, 1080, 34
TICK = 1000.0 / os.sysconf("SC_CLK_TCK")
MARK = "TASKBAR_PEERS_RUN"


# ---------------------------------------------------------------- the panels

def write(path, text):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w") as f:
        f.write(text)


def conf_tint2(home):
    write(home + "/.config/tint2/tint2rc", f"""
rounded = 0
border_width = 0
background_color = #303030 100
rounded = 2
border_width = 0
background_color = #454545 100
rounded = 2
border_width = 0
background_color = #5070a0 100
panel_items = T
panel_position = bottom center horizontal
panel_size = 100% {BAR}
panel_margin = 0 0
panel_background_id = 1
panel_layer = normal
strut_policy = follow_size
taskbar_mode = single_desktop
taskbar_padding = 0 0 2
task_text = 1
task_icon = 1
task_centered = 0
task_maximum_size = 180 {BAR}
task_background_id = 2
task_active_background_id = 3
task_font = Sans 9
task_font_color = #ffffff 100
task_tooltip = 0
mouse_left = toggle_iconify
""")


def conf_lxqt(home):
    write(home + "/.config/lxqt/panel.conf", f"""
panels=panel1
[panel1]
plugins=taskbar
position=Bottom
desktop=0
panelSize={BAR}
iconSize=16
lineCount=1
width=100
width-percent=true
alignment=-1
animation-duration=0
reserve-space=true
hidable=false
[taskbar]
type=taskbar
alignment=Left
buttonWidth=180
groupingEnabled=false
""")
    write(home + "/.config/lxqt/lxqt.conf", "[General]\ntheme=\nicon_theme=\n")


def conf_xfce(home):
    write(home + "/.config/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml", f"""<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=8;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="{BAR}"/>
      <property name="plugin-ids" type="array"><value type="int" value="1"/></property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="tasklist">
      <property name="grouping" type="uint" value="0"/>
      <property name="show-labels" type="bool" value="true"/>
      <property name="flat-buttons" type="bool" value="false"/>
    </property>
  </property>
</channel>
""")


def conf_mate(home):
    write(home + "/.config/glib-2.0/settings/keyfile", f"""[org/mate/panel/general]
toplevel-id-list=['bottom']
object-id-list=['window-list']
enable-animations=false

[org/mate/panel/toplevels/bottom]
expand=true
orientation='bottom'
screen=0
size={BAR}
enable-animations=false

[org/mate/panel/objects/window-list]
object-type='applet'
applet-iid='WnckletFactory::WindowListApplet'
toplevel-id='bottom'
position=0
locked=true

[org/mate/panel/objects/window-list/prefs]
group-windows='never'
""")


def conf_lxpanel(home):
    write(home + "/.config/lxpanel/default/panels/panel", f"""Global {{
  edge=bottom
  align=left
  margin=0
  widthtype=percent
  width=100
  height={BAR}
  transparent=0
  setdocktype=1
  setpartialstrut=1
  background=0
  iconsize=16
}}
Plugin {{
  type=taskbar
  expand=1
  Config {{
    tooltips=0
    IconsOnly=0
    ShowAllDesks=1
    UseMouseWheel=1
    UseUrgencyHint=1
    FlatButton=0
    MaxTaskWidth=180
    spacing=1
    GroupedTasks=0
  }}
}}
""")
    write(home + "/.config/lxpanel/default/config", "[Command]\n")


def conf_korvane(home):
    """One tab per window and always there, as with the others."""
    path = home + "/.config/korvane/defaults.plist"
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as f:
        plistlib.dump({"autoHideEnabled": False, "groupingMode": "never"}, f)


def conf_none(home):
    pass


# name: (command, configure, toolkit, environment, has one tab per window)
PANELS = {
    "tint2": ("tint2 -c $HOME/.config/tint2/tint2rc", conf_tint2, "Xlib/cairo/pango", {}, True),
    "lxqt-panel": ("lxqt-panel", conf_lxqt, "Qt 5", {"XDG_CURRENT_DESKTOP": "LXQt"}, True),
    "xfce4-panel": ("xfce4-panel --disable-wm-check", conf_xfce, "GTK 3", {"XDG_CURRENT_DESKTOP": "XFCE"}, True),
    "mate-panel": ("mate-panel", conf_mate, "GTK 3", {"XDG_CURRENT_DESKTOP": "MATE", "GSETTINGS_BACKEND": "keyfile"}, True),
    "lxpanel": ("lxpanel --profile default", conf_lxpanel, "GTK 2", {"XDG_CURRENT_DESKTOP": "LXDE"}, True),
    "plank": ("plank", conf_none, "GTK 3", {"GSETTINGS_BACKEND": "keyfile"}, False),
    "floor-xcb": (HERE + "/build/floor_xcb", conf_none, "xcb only", {}, True),
    "floor-qt6": (HERE + "/build/floor_qt", conf_none, "Qt 6", {}, True),
}
FLOORS = ("floor-xcb", "floor-qt6")  # shown, but never "the best" that the ratios refer to

OPENBOX = """<?xml version="1.0"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
<focus><focusNew>no</focusNew><followMouse>no</followMouse><focusLast>no</focusLast></focus>
<placement><policy>Smart</policy></placement>
<theme><name>Clearlooks</name><animateIconify>no</animateIconify></theme>
<desktops><number>1</number><popupTime>0</popupTime></desktops>
<resize><drawContents>yes</drawContents><popupShow>Never</popupShow></resize>
<keyboard/><mouse/><menu/><applications/>
</openbox_config>
"""


def build():
    os.makedirs(HERE + "/build", exist_ok=True)
    jobs = [("probe", ["cc", "-O2", "-o", "build/probe", "probe.c", "-lxcb", "-lxcb-damage", "-lxcb-shm", "-lxcb-xtest"]),
            ("floor_xcb", ["cc", "-O2", "-o", "build/floor_xcb", "floor_xcb.c", "-lxcb"])]
    try:
        qt = subprocess.run(["/usr/bin/pkg-config", "--cflags", "--libs", "Qt6Widgets"], capture_output=True, text=True, check=True).stdout.split()
        jobs.append(("floor_qt", ["c++", "-O2", "-std=c++20", "-fPIC", "-o", "build/floor_qt", "floor_qt.cpp"] + qt + ["-lxcb"]))
    except Exception:
        print("floor-qt6 left out: no Qt 6 to build it with", file=sys.stderr)
    for name, cmd in jobs:
        src = HERE + "/" + [a for a in cmd if a.endswith((".c", ".cpp"))][0]
        out = HERE + "/build/" + name
        if not os.path.exists(out) or os.path.getmtime(out) < os.path.getmtime(src):
            subprocess.run(cmd, cwd=HERE, check=True)


# ---------------------------------------------------------------- /proc

def slurp(path):
    try:
        with open(path, "rb") as f:
            return f.read()
    except OSError:
        return b""


def cpu_of(pid):
    """ms of CPU of one process: the exact run time of its threads, or utime+stime where threads have ended."""
    ns = 0
    try:
        for t in os.listdir(f"/proc/{pid}/task"):
            ns += int(slurp(f"/proc/{pid}/task/{t}/schedstat").split()[0])
    except (OSError, IndexError):
        pass
    st = slurp(f"/proc/{pid}/stat")
    ticks = 0
    if st:
        f = st[st.rindex(b")") + 2:].split()
        ticks = int(f[11]) + int(f[12])
    return max(ns / 1e6, ticks * TICK)


def ticks_of(pid):
    st = slurp(f"/proc/{pid}/stat")
    if not st:
        return 0
    f = st[st.rindex(b")") + 2:].split()
    return (int(f[11]) + int(f[12])) * TICK


class Tree:
    """All processes that belong to the panel; see the top of this file."""

    def __init__(self, session):
        self.s, self.pids, self.seen = session, [], {}

    def refresh(self):
        mark = f"{MARK}={self.s.mark}".encode()
        self.pids = []
        for d in os.listdir("/proc"):
            if d.isdigit() and int(d) not in self.s.infra:
                pid = int(d)
                if mark in slurp(f"/proc/{pid}/environ").split(b"\0") and slurp(f"/proc/{pid}/cmdline"):
                    st = slurp(f"/proc/{pid}/stat")
                    if st and int(st[st.rindex(b")") + 2:].split()[1]) not in (self.s.probe_pid,):
                        self.pids.append(pid)
        return self

    def names(self):
        return {p: slurp(f"/proc/{p}/comm").decode().strip() for p in self.pids}

    def cpu(self):
        for p in self.pids:
            v = cpu_of(p)
            if v:
                self.seen[p] = max(v, self.seen.get(p, 0))
        return sum(self.seen.values())

    def ticks(self):
        return sum(ticks_of(p) for p in self.pids)

    def switches(self):
        """{thread: (voluntary, involuntary) context switches}"""
        r = {}
        for p in self.pids:
            try:
                for t in os.listdir(f"/proc/{p}/task"):
                    f = dict(x.split(b":\t") for x in slurp(f"/proc/{p}/task/{t}/status").split(b"\n") if b"ctxt_switches" in x)
                    if f:
                        r[t] = (int(f[b"voluntary_ctxt_switches"]), int(f[b"nonvoluntary_ctxt_switches"]))
            except OSError:
                pass
        return r

    def mem(self):
        tot = {"pss": 0, "uss": 0, "anon": 0, "rss": 0}
        each = {}
        for p in self.pids:
            d = {}
            for line in slurp(f"/proc/{p}/smaps_rollup").split(b"\n")[1:]:
                f = line.split()
                if len(f) >= 2:
                    d[f[0].decode().rstrip(":")] = int(f[1])
            if not d:
                continue
            u = d["Private_Clean"] + d["Private_Dirty"]
            each[slurp(f"/proc/{p}/comm").decode().strip()] = {"pss": d["Pss"], "uss": u}
            for k, v in (("pss", d["Pss"]), ("uss", u), ("anon", d["Anonymous"]), ("rss", d["Rss"])):
                tot[k] += v
        tot = {k: round(v / 1024, 2) for k, v in tot.items()}  # MiB
        tot["processes"] = each
        return tot


def machine():
    f = [int(x) for x in slurp("/proc/stat").split(b"\n")[0].split()[1:9]]
    return {"busy": (sum(f) - f[3] - f[4] - f[7]) * TICK, "steal": f[7] * TICK, "t": time.monotonic() * 1000}


# ---------------------------------------------------------------- one private X session

LIVE = []  # process groups that we started; ended on any way out


def end_group(p, wait=3.0):
    if p is None:
        return
    for sig, limit in ((signal.SIGTERM, wait), (signal.SIGKILL, 2.0)):
        try:
            os.killpg(p.pid, sig)
        except OSError:
            pass
        t = time.monotonic() + limit
        while p.poll() is None and time.monotonic() < t:
            time.sleep(0.02)
        if p.poll() is not None:
            break
    try:
        os.killpg(p.pid, signal.SIGKILL)  # whatever of the group is left
    except OSError:
        pass
    if p in LIVE:
        LIVE.remove(p)


def end_all():
    for p in list(reversed(LIVE)):
        end_group(p, 0.5)


class Session:
    def __init__(self, setup, extra_env, picom, a11y):
        self.mark = "%d.%d" % (os.getpid(), random.randrange(1 << 40))
        self.home = tempfile.mkdtemp(prefix="peers.")
        self.infra, self.probe_pid, self.panel = set([os.getpid()]), -1, None
        self.proc = {}
        run = self.home + "/run"
        os.mkdir(run, 0o700)
        keep = {k: os.environ[k] for k in ("PATH", "LD_LIBRARY_PATH") if k in os.environ}
        self.env = dict(keep, HOME=self.home, XDG_RUNTIME_DIR=run, XDG_CONFIG_HOME=self.home + "/.config", XDG_CACHE_HOME=self.home + "/.cache",
                        XDG_DATA_HOME=self.home + "/.local/share", XDG_DATA_DIRS="/usr/local/share:/usr/share", XDG_CONFIG_DIRS="/etc/xdg", LANG="C.UTF-8", USER="root",
                        QT_QPA_PLATFORM="xcb", XDG_SESSION_TYPE="x11", **{MARK: self.mark}, **extra_env)
        if not a11y:
            self.env["NO_AT_BRIDGE"] = "1"  # no screen reader around; without this GTK 3 starts the whole AT-SPI bus
        self.err = open(self.home + "/stderr", "ab")
        setup(self.home)
        write(self.home + "/.config/openbox/rc.xml", OPENBOX)
        for n in range(60, 70):
            if os.path.exists(f"/tmp/.X{n}-lock") or os.path.exists(f"/tmp/.X11-unix/X{n}"):
                continue
            p = self.start("Xvfb", ["Xvfb", f":{n}", "-screen", "0", f"{W}x{H}x24", "-nolisten", "tcp", "-noreset", "-ac"])
            self.env["DISPLAY"] = f":{n}"
            if self.until(lambda: subprocess.run(["xdpyinfo"], env=self.env, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0 or p.poll() is not None, 10) and p.poll() is None:
                break
            end_group(p)
        else:
            raise RuntimeError("no free display 60-69")
        r, w = os.pipe()
        self.start("dbus-daemon", ["dbus-daemon", "--session", "--nofork", "--nopidfile", f"--print-address={w}"], pass_fds=(w,))
        os.close(w)
        self.env["DBUS_SESSION_BUS_ADDRESS"] = os.read(r, 4096).decode().strip()
        os.close(r)
        self.start("openbox", ["openbox", "--sm-disable", "--config-file", self.home + "/.config/openbox/rc.xml"])
        self.until(lambda: b"window id" in subprocess.run(["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"], env=self.env, capture_output=True).stdout, 10)
        if picom:
            self.start("picom", ["picom", "--backend", "xrender", "--config", "/dev/null"])
            time.sleep(1)
        self.probe = self.start("probe", [HERE + "/build/probe"], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.probe_pid = self.probe.pid
        self.read()
        self.ask("move 5 5")
        self.tree = Tree(self)

    def start(self, name, cmd, **kw):
        kw.setdefault("stdout", self.err)
        p = subprocess.Popen(cmd, env=self.env, start_new_session=True, stderr=self.err, cwd=self.home, **kw)
        LIVE.append(p)
        self.infra.add(p.pid)
        self.proc[name] = p
        return p

    @staticmethod
    def until(cond, limit, step=0.05):
        end = time.monotonic() + limit
        while time.monotonic() < end:
            if cond():
                return True
            time.sleep(step)
        return False

    def read(self):
        line = self.probe.stdout.readline()
        if not line:
            raise RuntimeError("the probe ended (X server gone?)")
        return json.loads(line)

    def ask(self, text):
        self.probe.stdin.write((text + "\n").encode())
        self.probe.stdin.flush()
        return self.read()

    # ---- the panel
    def start_panel(self, cmd):
        self.tree = Tree(self)
        t0 = time.monotonic() * 1000
        self.panel = subprocess.Popen("exec " + cmd, shell=True, env=self.env, start_new_session=True, stdout=self.err, stderr=self.err, cwd=self.home)
        LIVE.append(self.panel)
        return t0

    SERVICES = ("xfconfd", "dconf-service", "bamfdaemon", "gvfsd", "at-spi-bus-laun", "at-spi2-registr", "dbus-daemon")

    def stop_panel(self):
        if self.panel:
            end_group(self.panel)
            self.panel = None
        for limit in (1.5, 0):  # out-of-process applets go by themselves; what does not is ended by pid
            left = lambda: [p for p, n in self.tree.refresh().names().items() if n not in self.SERVICES]
            if self.until(lambda: not left(), limit or 0.1, 0.1):
                break
            for p in left():
                try:
                    os.kill(p, signal.SIGKILL)
                except OSError:
                    pass

    def settle(self, least=None, limit=60.0):
        """until panel, openbox and X have used < 2 ms of CPU per 0.2 s for 0.6 s, and at least `least` s; -> s until they were done"""
        least = self.least if least is None else least
        t0 = time.monotonic()
        others = [self.proc[k].pid for k in ("Xvfb", "openbox")]
        look = lambda: self.tree.cpu() + sum(cpu_of(p) for p in others)
        self.tree.refresh()
        quiet, last = time.monotonic(), look()
        while time.monotonic() - t0 < limit:
            time.sleep(0.2)
            v = look()
            if v - last > 2.0:
                quiet = time.monotonic()
            last = v
            if time.monotonic() - quiet > 0.6 and time.monotonic() - t0 > least:
                break
        self.tree.refresh()
        return max(0.0, quiet - t0)

    def find_bar(self):
        """the dock window at the bottom; else the bottom 34 px"""
        out = subprocess.run(["xwininfo", "-root", "-tree"], env=self.env, capture_output=True, text=True).stdout
        best = None
        for line in out.splitlines():
            f = line.split()
            if not f or not f[0].startswith("0x") or "(has no name)" in line and "1x1" in line:
                continue
            geo = [g for g in f if g.startswith("+") and g.count("+") + g.count("-") == 2]
            size = [g for g in f if "x" in g and g[0].isdigit() and "+" in g]
            if not geo or not size:
                continue
            w, h = [int(v) for v in size[-1].split("+")[0].split("-")[0].split("x")]
            try:
                x, y = [int(v) for v in geo[-1][1:].replace("+-", "+-").split("+")]
            except ValueError:
                continue
            if h <= 120 and w >= 200 and y + h >= H - 2 and y < H and y >= H - 120:
                t = subprocess.run(["xprop", "-id", f[0], "_NET_WM_WINDOW_TYPE"], env=self.env, capture_output=True, text=True).stdout
                if "DOCK" in t and (best is None or w > best[2]):
                    best = [x, y, w, h]
        self.bar_found = best
        self.bar = best or [0, H - BAR, W, BAR]
        self.ask("bar %d %d %d %d" % tuple(self.bar))
        return self.bar

    def locate(self, i, timeout=5000):
        """the box of window i's label in the bar, by pixel difference"""
        for _ in range(3):  # again if far more than one tab changed: xfce4-panel sorts anew at the first title change
            r = self.ask(f"mark 300 {timeout} {i} 1")
            self.ask(f"mark 300 {timeout} {i} 0")
            if not r["timeout"] and r["px"] >= 10 and r["bbox"][2] - r["bbox"][0] < 300:
                return r["bbox"]
        return None

    def close(self):
        self.stop_panel()
        for name in ("probe", "picom", "openbox", "dbus-daemon", "Xvfb"):
            if name in self.proc:
                end_group(self.proc[name], 1.5)
        for p in self.tree.refresh().pids:  # services that D-Bus started for the panel
            try:
                os.kill(p, signal.SIGKILL)
            except OSError:
                pass
        self.err.close()
        shutil.rmtree(self.home, ignore_errors=True)


# ---------------------------------------------------------------- what is measured

def measure(name, cmd, setup, env, tabs, o):
    R = {"events": {}, "notes": []}
    note = R["notes"].append
    s = Session(setup, env, o.picom, o.a11y)
    slow = name == "korvane"  # may need up to 2 s to notice a window: wait longer before calling the picture final
    s.least, recq = (2.6, 2600) if slow else (1.6, 1600)
    m0, me0 = machine(), sum(os.times()[:4])
    try:
        R["rtt_ms"] = s.ask("rtt 300")
        # ---- 1. start, with 10 windows open. The first is a warm-up and finds the first tab.
        s.ask("open 10 20000")
        s.start_panel(cmd)
        s.settle(3.0, 30)
        if s.panel.poll() is not None and not s.tree.pids:
            R["error"] = "does not stay up: " + slurp(s.home + "/stderr").decode(errors="replace")[-400:]
            return R
        R["bar"] = s.find_bar()
        if not s.bar_found:
            note("no dock window found at the bottom: the bottom %d px are watched" % BAR)
        box = s.locate(0) if tabs else None
        if tabs and not box:
            note("first tab not found by pixel difference")
        if o.shots:
            shot(s, o, name, "10")
        s.stop_panel()
        starts = {"tab": [], "first": [], "final": []}
        for _ in range(o.starts):
            s.until(lambda: False, 0.4)
            s.ask(f"rec {recq} 25000")
            t0 = s.start_panel(cmd)
            r = s.read()
            if r["frames"]:
                starts["first"].append(r["first"] - t0)
                starts["final"].append(r["final"] - t0)
                if box:
                    starts["tab"].append(s.ask("recwhen %d %d %d %d" % tuple(box))["when"] - t0)
            s.tree.refresh()
            R.setdefault("start_cpu_ms", []).append(s.tree.cpu())
            s.stop_panel()
        R["start"] = starts
        s.ask("close 10 20000")
        # ---- 2. memory, from 0 windows up
        s.start_panel(cmd)
        s.settle()
        R["mem"] = {"0": s.tree.mem()}
        s.ask("open 10 20000")
        s.settle()
        R["mem"]["10"] = s.tree.mem()
        s.find_bar()
        # ---- 3. idle
        s.ask("move 5 5")
        s.settle()
        x0 = cpu_of(s.proc["Xvfb"].pid)
        c0, k0, w0 = s.tree.cpu(), s.tree.ticks(), s.tree.switches()
        time.sleep(o.idle)
        c1, k1, w1 = s.tree.cpu(), s.tree.ticks(), s.tree.switches()
        wake, pre = [sum(w1[t][i] - w0.get(t, (0, 0))[i] for t in w1) for i in (0, 1)]  # a thread that ended meanwhile does not count
        R["idle"] = {"s": o.idle, "cpu_ms": c1 - c0, "ticks_ms": k1 - k0, "wakeups_per_s": wake / o.idle, "preempted_per_s": pre / o.idle, "xserver_ms": cpu_of(s.proc["Xvfb"].pid) - x0}
        idle_rate = (c1 - c0) / o.idle  # ms per s
        if s.panel.poll() is not None:
            del R["idle"]  # a dead panel is very quiet
            R["error"] = "ended before the latency tests (exit %s)" % s.panel.poll()
            return R
        # ---- 4. latencies with 10 windows
        if tabs:
            ev = R["events"]
            jitter = (0.05, 0.2)
            misses = 0
            for k in range(o.events):
                for kind, text in (("map", "evmap 300 6000"), ("title", f"evtitle 300 6000 {1 + k % 8} {k}"), ("close", "evclose 300 6000")):
                    time.sleep(random.uniform(*jitter))
                    r = s.ask(text)
                    e = ev.setdefault(kind, {"first": [], "final": [], "list": [], "missed": 0})
                    if r["timeout"] or r["first"] < 0:
                        e["missed"] += 1
                        misses += 1
                        continue
                    for f in ("first", "final", "list"):
                        if r[f] >= 0:
                            e[f].append(r[f])
                if k == 1 and ev["map"]["first"] and statistics.median(ev["map"]["first"]) > 300:
                    jitter = (0.05, 2.0)  # it polls: do not stay in step with it
                if misses > 12:
                    note("latency stopped early: the bar often shows no change")
                    break
            # ---- 5. click
            s.ask("quiet 400 5000")
            boxes = {i: s.locate(i) for i in (1, 3, 5, 7)}
            boxes = {i: b for i, b in boxes.items() if b}
            e = ev["click"] = {"active": [], "first": [], "missed": 0}
            for k in range(o.events if len(boxes) > 1 else 0):
                i = sorted(boxes)[k % len(boxes)]
                b = boxes[i]
                s.ask("move %d %d" % ((b[0] + b[2]) // 2, (b[1] + b[3]) // 2))
                time.sleep(random.uniform(0.2, 0.3))
                r = s.ask(f"click {i} 3000 200")
                if "skip" in r:
                    continue
                if r["active"] >= 0:
                    e["active"].append(r["active"])
                else:
                    e["missed"] += 1
                if r["first"] >= 0:
                    e["first"].append(r["first"])
                s.ask("move 5 5")
                time.sleep(random.uniform(0.1, 0.2))
            if len(boxes) < 2:
                note("tabs not found: no click latency")
        # ---- 7. scale, and memory at 100 and 500
        R["scale"], R["fill"] = {}, {}
        n = 10
        for want in (10, 100, 500):
            if want > n:
                s.tree.refresh()
                c0, x0, t0 = s.tree.cpu(), cpu_of(s.proc["Xvfb"].pid), time.monotonic()
                r = s.ask(f"open {want - n} 60000")
                took = r["wm_ms"] / 1000 + s.settle(None, 90)
                R["fill"][str(want)] = {"windows": want - n, "cpu_ms": s.tree.cpu() - c0, "xserver_ms": cpu_of(s.proc["Xvfb"].pid) - x0, "listed": r["listed"], "settled_s": took}
                n = want
                R["mem"][str(want)] = s.tree.mem()
                if o.shots and tabs:
                    shot(s, o, name, str(want))
            if tabs:
                s.settle(1.0, 20)
                reps, gap = (20, 150) if not o.quick else (10, 150)
                c0, x0, b0, t0 = s.tree.cpu(), cpu_of(s.proc["Xvfb"].pid), cpu_of(s.proc["openbox"].pid), time.monotonic()
                s.ask(f"retitle 2 {reps} {gap}")
                s.settle(1.0, 60)
                dt = time.monotonic() - t0
                R["scale"][str(want)] = {"cpu_ms": max(0.0, s.tree.cpu() - c0 - idle_rate * dt) / reps, "xserver_ms": (cpu_of(s.proc["Xvfb"].pid) - x0) / reps, "openbox_ms": (cpu_of(s.proc["openbox"].pid) - b0) / reps}
                # one window more and less at this size
                c0, t0 = s.tree.cpu(), time.monotonic()
                for _ in range(5):
                    s.ask("open 1 5000"), time.sleep(0.15), s.ask("close 1 5000"), time.sleep(0.15)
                s.settle(1.0, 60)
                R["scale"][str(want)]["open_close_cpu_ms"] = max(0.0, s.tree.cpu() - c0 - idle_rate * (time.monotonic() - t0)) / 5
        if s.panel.poll() is not None and tabs:
            R["error"] = "ended during the scale test"
            return R
        s.ask(f"close {n - 10} 60000")
        s.settle(None, 60)
        if s.panel.poll() is not None:
            R["error"] = "ended before the churn test (exit %s)" % s.panel.poll()
            return R
        R["mem"]["back to 10"] = s.tree.mem()
        # ---- 6. churn
        s.ask("quiet 500 5000")
        s.ask("save")
        if o.shots and tabs:
            shot(s, o, name, "before-churn")
        stop, peak = threading.Event(), {"pss": 0.0}

        def sampler():
            t = Tree(s)
            while not stop.is_set():
                try:
                    peak["pss"] = max(peak["pss"], t.refresh().mem()["pss"])
                except Exception:
                    pass
                stop.wait(0.3)
        th = threading.Thread(target=sampler)
        s.tree.refresh()
        c0, x0, t0 = s.tree.cpu(), cpu_of(s.proc["Xvfb"].pid), time.monotonic()
        th.start()
        try:
            r = s.ask(f"churn {o.churn} 10")
            took = time.monotonic() - t0 + s.settle(None, 90)
        finally:
            stop.set()
            th.join()
        alive = s.panel.poll() is None
        s.ask("quiet 500 5000")
        d = s.ask("cmp")
        cpu = (s.tree.cpu() - c0) / 1000
        if d["diff"] and alive and tabs and o.shots:
            shot(s, o, name, "after-churn")
        # an unchanged picture proves nothing of a bar that hangs: it must still react to a title
        responds = None
        if tabs and alive:
            q = s.ask("evtitle 300 6000 2 25")
            responds = not q["timeout"] and q["first"] >= 0
        alive = s.panel.poll() is None
        if not alive:
            R["error"] = "ended in the churn test (exit %s)" % s.panel.poll()
        elif responds is False:
            R["error"] = "no longer reacts to a title after the churn (hangs?)"
        R["churn"] = {"cpu_s": cpu if alive else None, "responds": responds, "xserver_s": (cpu_of(s.proc["Xvfb"].pid) - x0) / 1000, "took_s": took if alive else None, "peak_pss": peak["pss"], "after_pss": s.tree.mem()["pss"], "alive": alive,
                      "diff_px": d["diff"], "diff_bbox": d["bbox"], "of_px": d["of"], "picture_right": bool(alive and responds is not False and d["diff"] <= 0.001 * d["of"]), "probe": r}
        R["rtt_after_ms"] = s.ask("rtt 300")
    except Exception as ex:  # one panel must not take the run with it
        R["error"] = f"{type(ex).__name__}: {ex}"
    finally:
        try:
            m1 = machine()
            own = sum(cpu_of(p.pid) for p in s.proc.values()) + s.tree.refresh().cpu() + (sum(os.times()[:4]) - me0) * 1000
            dt = m1["t"] - m0["t"]
            R["noise"] = {"seconds": dt / 1000, "busy_cores": (m1["busy"] - m0["busy"]) / dt, "steal_cores": (m1["steal"] - m0["steal"]) / dt, "own_cores": own / dt, "load1": os.getloadavg()[0]}
        except Exception:
            pass
        s.close()
    return R


def shot(s, o, name, what):
    path = f"{o.out}/{name}-{what}"
    s.ask("ppm " + path + ".ppm")
    if subprocess.run(["convert", path + ".ppm", path + ".png"], capture_output=True).returncode == 0:
        os.remove(path + ".ppm")


# ---------------------------------------------------------------- tables

def pct(v, q):
    v = sorted(v)
    return v[min(len(v) - 1, int(len(v) * q))] if v else None


def med(v):
    v = [x for x in v if x is not None]
    return statistics.median(v) if v else None


def get(d, *path):
    for p in path:
        if not isinstance(d, dict) or p not in d:
            return None
        d = d[p]
    return d


def summary(rounds):
    """one flat dict of medians per panel, over all rounds"""
    S = {}
    # A bar that ended or hung used no CPU and little memory from then on: nothing it did at 100 or 500 windows counts.
    # (When it stopped is not known exactly, so the idle and latency numbers stay only if they were finished before.)
    rounds = [dict({k: v for k, v in r.items() if k not in ("scale", "fill")}, mem={k: v for k, v in r.get("mem", {}).items() if k in ("0", "10")},
                   **({"churn": dict(r["churn"], cpu_s=None, took_s=None, peak_pss=None, after_pss=None, xserver_s=None)} if "churn" in r else {})) if "error" in r else r for r in rounds]
    S["ok"] = any("error" not in r for r in rounds)
    pool = lambda *path: [x for r in rounds for x in (get(r, *path) or [])]
    spread = {}

    def one(*path):
        v = [x for x in (get(r, *path) for r in rounds) if x is not None]
        m = med(v)
        if len(v) > 1 and min(v) >= 0 and max(v) > 1.5 * max(min(v), 1e-9) and max(v) - min(v) > 0.05:
            spread[m] = (min(v), max(v))  # the rounds disagree: the table says so
        return m
    st = pool("start", "tab") or pool("start", "final")
    S["start_tab_ms"], S["start_first_ms"], S["start_p95_ms"] = med(st), med(pool("start", "first")), pct(st, .95)
    S["start_cpu_ms"] = med(pool("start_cpu_ms"))
    for n in ("0", "10", "100", "500", "back to 10"):
        for k in ("pss", "uss", "anon"):
            S[f"{k}_{n.replace(' ', '_')}"] = one("mem", n, k)
    S["idle_cpu_ms_30s"] = med([r["idle"]["cpu_ms"] * 30 / r["idle"]["s"] for r in rounds if "idle" in r])
    S["wakeups_per_s"] = one("idle", "wakeups_per_s")
    for k in ("map", "title", "close"):
        for f in ("first", "final"):
            v = pool("events", k, f)
            S[f"{k}_{f}_ms"], S[f"{k}_{f}_p95_ms"] = med(v), pct(v, .95)
        S[f"{k}_events"], S[f"{k}_missed"] = len(pool("events", k, "first")), sum(get(r, "events", k, "missed") or 0 for r in rounds)
        S[f"{k}_list_ms"] = med(pool("events", k, "list"))
    v = pool("events", "click", "active")
    S["click_ms"], S["click_p95_ms"], S["click_events"], S["click_missed"] = med(v), pct(v, .95), len(v), sum(get(r, "events", "click", "missed") or 0 for r in rounds)
    S["click_first_ms"] = med(pool("events", "click", "first"))
    S["churn_cpu_s"], S["churn_peak_pss"], S["churn_took_s"], S["churn_after_pss"] = one("churn", "cpu_s"), one("churn", "peak_pss"), one("churn", "took_s"), one("churn", "after_pss")
    S["churn_x_s"] = one("churn", "xserver_s")
    c = [r["churn"] for r in rounds if "churn" in r]
    S["churn_alive"] = f"{sum(x['alive'] for x in c)}/{len(rounds)}"  # of all rounds: one that never got this far is not alive
    S["churn_right"] = f"{sum(x['picture_right'] for x in c)}/{len(rounds)}"
    for n in ("10", "100", "500"):
        S[f"title_cpu_{n}_ms"], S[f"title_x_{n}_ms"], S[f"openclose_cpu_{n}_ms"] = one("scale", n, "cpu_ms"), one("scale", n, "xserver_ms"), one("scale", n, "open_close_cpu_ms")
        S[f"fill_cpu_{n}_s"] = None if one("fill", n, "cpu_ms") is None else one("fill", n, "cpu_ms") / 1000
        S[f"fill_settled_{n}_s"] = one("fill", n, "settled_s")
    S["spread"] = {k: spread[v] for k, v in S.items() if isinstance(v, float) and v in spread}
    return S


def table(title, S, cols, floor_of):
    """cols: (heading, key, format, key of the p95 or None). Each value with its ratio to the best that is not a floor."""
    out = [f"\n### {title}\n", "| panel | " + " | ".join(c[0] for c in cols) + " |", "|---|" + "---:|" * len(cols)]
    best = {}
    for _, key, _, _ in cols:
        v = [S[n][key] for n in S if n not in FLOORS and isinstance(S[n].get(key), (int, float))]
        best[key] = max(min(v), floor_of.get(key, 1e-9)) if v else None
    for n in S:
        row = []
        for _, key, fmt, p95 in cols:
            v = S[n].get(key)
            if v is None or v == "0/0":
                row.append("-")
            elif isinstance(v, str):
                row.append(v)
            else:
                t = fmt % v
                if p95 and S[n].get(p95) is not None:
                    t += " / " + fmt % S[n][p95]
                if key in S[n].get("spread", {}):
                    t += " [" + fmt % S[n]["spread"][key][0] + "–" + fmt % S[n]["spread"][key][1] + "]"
                if best[key]:
                    t += " (×%.2g)" % (max(v, floor_of.get(key, 1e-9)) / best[key]) if max(v, floor_of.get(key, 1e-9)) / best[key] < 99.5 else " (×%.0f)" % (v / best[key])
                row.append(t)
        out.append(f"| {n} | " + " | ".join(row) + " |")
    return "\n".join(out)


LEAST = {"idle_cpu_ms_30s": 1.0, "wakeups_per_s": 0.1, "title_cpu_10_ms": 0.01, "title_cpu_100_ms": 0.01, "title_cpu_500_ms": 0.01, "churn_cpu_s": 0.001}  # below this it is all "nothing"


def markdown(results, o, took):
    S = {n: summary(r) for n, r in results.items()}
    out = [f"# Taskbar peers, {time.strftime('%Y-%m-%d %H:%M')}, {'quick' if o.quick else 'full'}, {o.rounds} round(s), {'with picom' if o.picom else 'no compositor'}, {took / 60:.0f} min",
           "\nEach cell: median (and / p95), then the ratio to the best row that is not a floor; [lowest–highest] where the rounds differ by more than 1.5×. `floor-*` rows are 100-line demonstrations, not products.",
           table("Start and memory (MiB, whole process tree)", S, [
               ("start → first tab, ms / p95", "start_tab_ms", "%.0f", "start_p95_ms"), ("start, CPU ms", "start_cpu_ms", "%.0f", None), ("PSS 0 win", "pss_0", "%.1f", None), ("PSS 10", "pss_10", "%.1f", None), ("PSS 100", "pss_100", "%.1f", None),
               ("PSS 500", "pss_500", "%.1f", None), ("USS 10", "uss_10", "%.1f", None), ("USS 500", "uss_500", "%.1f", None), ("anon 10", "anon_10", "%.1f", None), ("anon 500", "anon_500", "%.1f", None), ("PSS back at 10", "pss_back_to_10", "%.1f", None)], LEAST),
           table("Idle (10 windows) and latency (10 windows), ms, median / p95", S, [
               ("idle CPU ms per 30 s", "idle_cpu_ms_30s", "%.1f", None), ("wakeups/s", "wakeups_per_s", "%.2f", None), ("new window → pixels", "map_first_ms", "%.1f", "map_first_p95_ms"), ("… → final picture", "map_final_ms", "%.1f", "map_final_p95_ms"),
               ("title → pixels", "title_first_ms", "%.1f", "title_first_p95_ms"), ("close → pixels", "close_first_ms", "%.1f", "close_first_p95_ms"), ("… → final picture", "close_final_ms", "%.1f", "close_final_p95_ms"), ("click → bar reacts", "click_first_ms", "%.1f", None), ("click → active", "click_ms", "%.1f", "click_p95_ms")], LEAST),
           table("Churn (%d windows × 10 retitles) and scale (panel CPU ms for one title change)" % o.churn, S, [
               ("churn CPU s", "churn_cpu_s", "%.2f", None), ("… until settled, s", "churn_took_s", "%.1f", None), ("… peak PSS", "churn_peak_pss", "%.1f", None), ("… PSS after", "churn_after_pss", "%.1f", None), ("alive", "churn_alive", "%s", None), ("picture right", "churn_right", "%s", None),
               ("title @10", "title_cpu_10_ms", "%.2f", None), ("title @100", "title_cpu_100_ms", "%.2f", None), ("title @500", "title_cpu_500_ms", "%.2f", None),
               ("open+close @10", "openclose_cpu_10_ms", "%.1f", None), ("open+close @500", "openclose_cpu_500_ms", "%.1f", None), ("100→500 CPU s", "fill_cpu_500_s", "%.2f", None)], LEAST)]
    out.append("\n### Noise\n\n| panel | s | machine busy, cores | of that not ours | steal | X round trip p50 / p95 / max ms | events (map, title, close, click; missed) |\n|---|---:|---:|---:|---:|---:|---|")
    for n, rs in results.items():
        z = [r["noise"] for r in rs if "noise" in r]
        q = [r["rtt_ms"] for r in rs if "rtt_ms" in r]
        if z and q:
            m = lambda k: statistics.median(x[k] for x in z)
            out.append(f"| {n} | {m('seconds'):.0f} | {m('busy_cores'):.2f} | {max(0, m('busy_cores') - m('own_cores')):.2f} | {m('steal_cores'):.3f} | {med([x['p50'] for x in q]):.3f} / {med([x['p95'] for x in q]):.3f} / {max(x['max'] for x in q):.2f} | "
                       + ", ".join(f"{S[n][k + '_events']} ({S[n][k + '_missed']})" for k in ("map", "title", "close", "click")) + " |")
    for n, rs in results.items():
        for i, r in enumerate(rs):
            if "error" in r:
                out.append(f"\n- {n}, round {i + 1}: **{r['error']}**")
            for t in r.get("notes", []):
                out.append(f"\n- {n}, round {i + 1}: {t}")
    procs = "\n\nProcesses counted (PSS at 10 windows, MiB): " + "; ".join(f"{n}: " + ", ".join(f"{p} {v['pss'] / 1024:.1f}" for p, v in (get(rs[0], 'mem', '10', 'processes') or {}).items()) for n, rs in results.items())
    return "\n".join(out) + procs + "\n", S


def main():
    a = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    a.add_argument("--panels", default="tint2,lxqt-panel,xfce4-panel,mate-panel,lxpanel,plank,floor-xcb,floor-qt6")
    a.add_argument("--quick", action="store_true")
    a.add_argument("--full", action="store_true")
    a.add_argument("--rounds", type=int, help="each round measures every panel once, in another order (full: 2, quick: 1)")
    a.add_argument("--picom", action="store_true", help="with a compositor")
    a.add_argument("--a11y", action="store_true", help="let GTK start its accessibility bridge")
    a.add_argument("--korvane", metavar="CMD", help="command that starts Korvane; adds a row")
    a.add_argument("--out", default=HERE + "/results")
    a.add_argument("--no-shots", dest="shots", action="store_false")
    a.add_argument("--merge", metavar="JSON", nargs="*", default=[], help="only print the tables of these result files together")
    o = a.parse_args()
    if o.full:
        o.quick = False
    elif not o.quick:
        o.quick = True
    o.rounds = o.rounds or (1 if o.quick else 2)
    o.starts, o.events, o.idle, o.churn = (3, 6, 10, 500) if o.quick else (5, 20, 30, 500)
    o.out = os.path.abspath(o.out)  # the probe runs in another directory
    os.makedirs(o.out, exist_ok=True)
    names = [n for n in o.panels.split(",") if n]
    if o.korvane:
        PANELS["korvane"] = (o.korvane, conf_korvane, "Qt 6", {}, True)
        names = ["korvane"] + [n for n in names if n != "korvane"]
    unknown = [n for n in names if n not in PANELS]
    if unknown:
        a.error("unknown: " + ", ".join(unknown))
    results = {n: [] for n in names}
    t0 = time.monotonic()
    if o.merge:
        for f in o.merge:
            for n, rs in json.load(open(f))["results"].items():
                results.setdefault(n, []).extend(rs)
        results = {n: r for n, r in results.items() if r}
        o.rounds = max(len(r) for r in results.values())
        print(markdown(results, o, 0)[0])
        return
    build()
    atexit.register(end_all)
    for sig in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
        signal.signal(sig, lambda *_: sys.exit(1))
    tag = "quick" if o.quick else "full"
    tag += "-picom" if o.picom else ""
    for k in range(o.rounds):
        order = names[k % len(names):] + names[:k % len(names)]
        if k % 2:
            order = order[::-1]
        for n in order:
            cmd, setup, kit, env, tabs = PANELS[n]
            if not (shutil.which(cmd.split()[0]) or n == "korvane"):
                results[n].append({"error": "not installed"})
                continue
            t = time.monotonic()
            print(f"round {k + 1}/{o.rounds}: {n} ...", end=" ", file=sys.stderr, flush=True)
            r = measure(n, cmd, setup, env, tabs, o)
            results[n].append(r)
            print("%.0f s %s" % (time.monotonic() - t, r.get("error", "")), file=sys.stderr, flush=True)
            md, S = markdown({m: r for m, r in results.items() if r}, o, time.monotonic() - t0)  # after each, so that an interrupted run still leaves its numbers
            with open(f"{o.out}/{tag}.json", "w") as f:
                json.dump({"when": time.time(), "options": {k: v for k, v in vars(o).items() if k not in ("out", "merge")},  # no machine paths
                            "summary": S, "results": results}, f, indent=1)
            with open(f"{o.out}/{tag}.md", "w") as f:
                f.write(md)
    print(md)


if __name__ == "__main__":
    main()
