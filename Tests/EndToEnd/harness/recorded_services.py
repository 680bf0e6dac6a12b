"""Services of a login session that answer as logind and a desktop's screen saver were seen to. A program of its own:

    recorded_services.py login [SESSION-OF-CALLER|none]      on the system bus
    recorded_services.py screensaver                          on the session bus

Each line on its standard input is a word and perhaps a value; each is answered by a line on standard output when it
was done: "active on", "locked off", "lock", "unlock", "saver on".
"""

import sys
import threading

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

LOGIN = "org.freedesktop.login1"
SESSION = LOGIN + ".Session"
PROPERTIES = "org.freedesktop.DBus.Properties"
DESKTOP_PATH = "/org/freedesktop/login1/session/_32"
OTHER_PATH = "/org/freedesktop/login1/session/_33"
USER_PATH = "/org/freedesktop/login1/user/self"
SAVER = "org.freedesktop.ScreenSaver"


class NoSession(dbus.DBusException):
    _dbus_error_name = LOGIN + ".NoSessionForPID"


class Manager(dbus.service.Object):
    def __init__(self, bus, has_session):
        super().__init__(bus, "/org/freedesktop/login1")
        self._has_session = has_session

    @dbus.service.method(LOGIN + ".Manager", "u", "o")
    def GetSessionByPID(self, _pid):
        if not self._has_session:
            raise NoSession("PID belongs to no session")
        return dbus.ObjectPath(DESKTOP_PATH)

    @dbus.service.method(LOGIN + ".Manager", "u", "o")
    def GetUser(self, _uid):
        return dbus.ObjectPath(USER_PATH)


class User(dbus.service.Object):
    @dbus.service.method(PROPERTIES, "ss", "v")
    def Get(self, _interface, name):
        if name != "Display":
            raise ValueError(name)
        return dbus.Struct(("2", dbus.ObjectPath(DESKTOP_PATH)), signature="so", variant_level=1)


class Session(dbus.service.Object):
    def __init__(self, bus, path):
        super().__init__(bus, path)
        self._properties = {"Id": "2", "Active": True, "LockedHint": False, "VTNr": dbus.UInt32(2)}

    @dbus.service.method(PROPERTIES, "s", "a{sv}")
    def GetAll(self, _interface):
        return self._properties

    @dbus.service.signal(PROPERTIES, "sa{sv}as")
    def PropertiesChanged(self, _interface, _changed, _invalidated):
        pass

    @dbus.service.signal(SESSION)
    def Lock(self):
        pass

    @dbus.service.signal(SESSION)
    def Unlock(self):
        pass

    def change(self, name, value):
        self._properties[name] = value
        self.PropertiesChanged(SESSION, {name: dbus.Boolean(value, variant_level=1)}, [])


class ScreenSaver(dbus.service.Object):
    def __init__(self, bus):
        super().__init__(bus, "/org/freedesktop/ScreenSaver")
        self._is_active = False

    @dbus.service.method(SAVER, "", "b")
    def GetActive(self):
        return self._is_active

    @dbus.service.signal(SAVER, "b")
    def ActiveChanged(self, is_active):
        self._is_active = bool(is_active)


def main(kind, *options):
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    if kind == "login":
        bus = dbus.SystemBus()
        _manager, _user = Manager(bus, "none" not in options), User(bus, USER_PATH)
        session, other = Session(bus, DESKTOP_PATH), Session(bus, OTHER_PATH)
        name = LOGIN
        actions = {
            "active": lambda value: session.change("Active", value == "on"),
            "locked": lambda value: session.change("LockedHint", value == "on"),
            "other": lambda value: other.change("LockedHint", value == "on"),
            "lock": lambda _: session.Lock(),
            "unlock": lambda _: session.Unlock(),
        }
        if "locked" in options:
            session._properties["LockedHint"] = True
    else:
        bus = dbus.SessionBus()
        saver = ScreenSaver(bus)
        name = SAVER
        actions = {"saver": lambda value: saver.ActiveChanged(value == "on")}
    loop = GLib.MainLoop()

    def do(line):
        word, _, value = line.strip().partition(" ")
        actions[word](value)
        bus.flush()
        print(f"done {line.strip()}", flush=True)

    def read():
        for line in sys.stdin:
            GLib.idle_add(do, line)
        GLib.idle_add(loop.quit)

    _name = dbus.service.BusName(name, bus)
    print("ready", flush=True)
    threading.Thread(target=read, daemon=True).start()
    loop.run()


main(*sys.argv[1:])
