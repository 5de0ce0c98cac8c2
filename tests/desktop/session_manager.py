"""Stands in for the session manager of the system's bus. Says "ready"; then each line on its input, such as
"Active false" or "LockedHint true", changes that property of the one session there is."""

import sys

from gi.repository import Gio, GLib

SERVICE = "org.freedesktop.login1"
SESSION = "/org/freedesktop/login1/session/one"
INTERFACES = Gio.DBusNodeInfo.new_for_xml("""
<node>
  <interface name="org.freedesktop.login1.Manager">
    <method name="GetSession"><arg type="s" direction="in"/><arg type="o" direction="out"/></method>
  </interface>
  <interface name="org.freedesktop.login1.Session">
    <property name="Active" type="b" access="read"/>
    <property name="LockedHint" type="b" access="read"/>
  </interface>
</node>""").interfaces

values = {"Active": True, "LockedHint": False}
flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
bus = Gio.DBusConnection.new_for_address_sync(sys.argv[1], flags, None, None)


def say(text):
    print(text, flush=True)


def called(_bus, _sender, _path, _interface, _method, _arguments, invocation):
    invocation.return_value(GLib.Variant("(o)", (SESSION,)))


def read(_bus, _sender, _path, _interface, name):
    return GLib.Variant("b", values[name])


def command(source, _condition):
    line = source.readline().split()
    if not line:
        loop.quit()
        return False
    name, value = line[0], line[1] == "true"
    values[name] = value
    bus.emit_signal(None, SESSION, "org.freedesktop.DBus.Properties", "PropertiesChanged",
                    GLib.Variant("(sa{sv}as)", (INTERFACES[1].name, {name: GLib.Variant("b", value)}, [])))
    bus.flush_sync(None)
    say("done")
    return True


bus.register_object("/org/freedesktop/login1", INTERFACES[0], called, None, None)
bus.register_object(SESSION, INTERFACES[1], None, read, None)
loop = GLib.MainLoop()
GLib.io_add_watch(sys.stdin, GLib.IO_IN | GLib.IO_HUP, command)
Gio.bus_own_name_on_connection(bus, SERVICE, Gio.BusNameOwnerFlags.NONE, lambda *_: say("ready"), None)
loop.run()
