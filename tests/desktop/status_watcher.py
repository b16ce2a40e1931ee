#!/usr/bin/python3
"""A status area with nothing to see: the StatusNotifierWatcher and host of a desktop.

status_watcher.py: registers on the session bus, prints "registered ITEM" for each item that comes, and
runs until it is ended.
"""

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

WATCHER = "org.kde.StatusNotifierWatcher"
PROPERTIES = {"RegisteredStatusNotifierItems": "as", "IsStatusNotifierHostRegistered": "b", "ProtocolVersion": "i"}


class Watcher(dbus.service.Object):
    def __init__(self, bus):
        self._items = []
        self._bus_name = dbus.service.BusName(WATCHER, bus)
        super().__init__(bus, "/StatusNotifierWatcher")
        bus.add_signal_receiver(self._owner_changed, "NameOwnerChanged", "org.freedesktop.DBus")

    def _owner_changed(self, name, _old, new):
        for item in [i for i in self._items if i.split("/")[0] == name and not new]:
            self._items.remove(item)
            self.StatusNotifierItemUnregistered(item)

    @dbus.service.method(WATCHER, "s", "", sender_keyword="sender")
    def RegisterStatusNotifierItem(self, service, sender=None):
        item = sender + service if service.startswith("/") else service + "/StatusNotifierItem"
        if item not in self._items:
            self._items.append(item)
        print("registered", item, flush=True)
        self.StatusNotifierItemRegistered(item)

    @dbus.service.signal(WATCHER, "s")
    def StatusNotifierItemRegistered(self, item):
        pass

    @dbus.service.signal(WATCHER, "s")
    def StatusNotifierItemUnregistered(self, item):
        pass

    def _values(self):
        return {"RegisteredStatusNotifierItems": dbus.Array(self._items, "s"),
                "IsStatusNotifierHostRegistered": True, "ProtocolVersion": dbus.Int32(0)}

    @dbus.service.method(dbus.PROPERTIES_IFACE, "ss", "v")
    def Get(self, _interface, name):
        return self._values()[name]

    @dbus.service.method(dbus.PROPERTIES_IFACE, "s", "a{sv}")
    def GetAll(self, _interface):
        return self._values()

    # Some programs read only those properties that the introspection names, and dbus-python names none.
    @dbus.service.method(dbus.INTROSPECTABLE_IFACE, "", "s", path_keyword="path", connection_keyword="connection")
    def Introspect(self, path=None, connection=None):
        named = "".join(f'<property name="{name}" type="{kind}" access="read"/>' for name, kind in PROPERTIES.items())
        opening = f'<interface name="{WATCHER}">'
        return super().Introspect(path, connection).replace(opening, opening + named)


if __name__ == "__main__":
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    watcher = Watcher(dbus.SessionBus())
    print("watching", flush=True)
    GLib.MainLoop().run()
