"""The portal that grants keys for every program, on a desktop whose user agrees to all of them."""
import threading

from gi.repository import Gio, GLib

NAME, PATH = "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop"
INTERFACE, SESSION = "org.freedesktop.portal.GlobalShortcuts", PATH + "/session/one"
DESCRIPTION = f"""<node><interface name="{INTERFACE}">
  <method name="CreateSession"><arg type="a{{sv}}" direction="in"/><arg type="o" direction="out"/></method>
  <method name="BindShortcuts"><arg type="o" direction="in"/><arg type="a(sa{{sv}})" direction="in"/>
    <arg type="s" direction="in"/><arg type="a{{sv}}" direction="in"/><arg type="o" direction="out"/></method>
  <property name="version" type="u" access="read"/>
</interface></node>"""


class ShortcutPortal:
    def __init__(self):
        self.holder = None
        address = Gio.dbus_address_get_for_bus_sync(Gio.BusType.SESSION)
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self.context, ready = GLib.MainContext(), threading.Event()

        def serve():
            self.context.push_thread_default()
            self.bus = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)
            self.bus.register_object(PATH, Gio.DBusNodeInfo.new_for_xml(DESCRIPTION).interfaces[0], self._answer,
                                     lambda *_: GLib.Variant("u", 1), None)
            self.bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
                               GLib.Variant("(su)", (NAME, 0)), None, 0, 5000)
            self.loop = GLib.MainLoop(self.context)
            ready.set()
            self.loop.run()

        self.thread = threading.Thread(target=serve, daemon=True)
        self.thread.start()
        ready.wait()

    def _answer(self, _bus, sender, _path, _interface, method, arguments, call):
        options = arguments.unpack()[-1]
        handle = f"{PATH}/request/{sender[1:].replace('.', '_')}/{options['handle_token']}"
        if method == "CreateSession":
            results = {"session_handle": GLib.Variant("s", SESSION)}
        else:
            self.holder = sender
            names = [(name, {"trigger_description": GLib.Variant("s", "Ctrl+Alt+K")}) for name, _ in arguments.unpack()[1]]
            results = {"shortcuts": GLib.Variant("a(sa{sv})", names)}
        call.return_value(GLib.Variant("(o)", (handle,)))
        self.bus.emit_signal(sender, handle, "org.freedesktop.portal.Request", "Response",
                             GLib.Variant("(ua{sv})", (0, results)))

    def press(self):
        self.bus.emit_signal(self.holder, PATH, INTERFACE, "Activated",
                             GLib.Variant("(osta{sv})", (SESSION, "find", 5, {})))

    def close(self):
        self.loop.quit()
        self.thread.join()
        self.bus.close_sync(None)
