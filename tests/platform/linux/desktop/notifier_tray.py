"""A tray that takes status items over the session bus, and shows them to nobody."""
import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

WATCHER = 'org.kde.StatusNotifierWatcher'
# Applications ask only for properties that they have been told of.
INTROSPECTION = f"""<node><interface name="{WATCHER}">
<property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
<property name="RegisteredStatusNotifierItems" type="as" access="read"/>
</interface></node>"""


class Tray(dbus.service.Object):
    items = []

    @dbus.service.method(WATCHER, in_signature='s', sender_keyword='sender')
    def RegisterStatusNotifierItem(self, service, sender=None):
        item = (sender if service.startswith('/') else service) + '/StatusNotifierItem'
        self.items.append(item)
        self.StatusNotifierItemRegistered(item)
        bus.watch_name_owner(item.split('/')[0], lambda owner: owner or self.forget(item))

    def forget(self, item):
        if item in self.items:
            self.items.remove(item)
            self.StatusNotifierItemUnregistered(item)

    @dbus.service.signal(WATCHER, signature='s')
    def StatusNotifierItemRegistered(self, item):
        pass

    @dbus.service.signal(WATCHER, signature='s')
    def StatusNotifierItemUnregistered(self, item):
        pass

    @dbus.service.method(dbus.INTROSPECTABLE_IFACE, out_signature='s')
    def Introspect(self):
        return INTROSPECTION

    @dbus.service.method(dbus.PROPERTIES_IFACE, in_signature='s', out_signature='a{sv}')
    def GetAll(self, interface):
        return {'IsStatusNotifierHostRegistered': True,
                'RegisteredStatusNotifierItems': dbus.Array(self.items, signature='s')}

    @dbus.service.method(dbus.PROPERTIES_IFACE, in_signature='ss', out_signature='v')
    def Get(self, interface, name):
        return self.GetAll(interface)[name]


dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
bus = dbus.SessionBus()
tray = Tray(bus, '/StatusNotifierWatcher')
name = dbus.service.BusName(WATCHER, bus)
GLib.MainLoop().run()
