"""A desktop that shows menu bars outside the windows."""
import threading

from gi.repository import Gio, GLib


class GlobalMenu:
    """A desktop that shows the menu bars of its windows itself (com.canonical.AppMenu.Registrar)."""

    DESCRIPTION = """<node><interface name="com.canonical.AppMenu.Registrar">
        <method name="RegisterWindow"><arg type="u" direction="in"/><arg type="o" direction="in"/></method>
        <method name="UnregisterWindow"><arg type="u" direction="in"/></method></interface></node>"""

    def __init__(self):
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        self.menus = []
        # Answered from a thread: the planner waits for the answer while this one waits for the planner.
        self.context = GLib.MainContext.new()
        self.loop = GLib.MainLoop.new(self.context, False)
        ready = threading.Event()
        self.thread = threading.Thread(target=self._run, args=[ready])
        self.thread.start()
        ready.wait()

    def _run(self, ready):
        self.context.push_thread_default()
        interface = Gio.DBusNodeInfo.new_for_xml(self.DESCRIPTION).interfaces[0]
        served = self.bus.register_object("/com/canonical/AppMenu/Registrar", interface, self._called)
        name = Gio.bus_own_name_on_connection(self.bus, interface.name, Gio.BusNameOwnerFlags.NONE,
                                              lambda *_: ready.set(), None)
        self.loop.run()
        Gio.bus_unown_name(name)
        self.bus.unregister_object(served)
        self.context.pop_thread_default()

    def _called(self, bus, sender, path, interface, method, arguments, invocation):
        if method == "RegisterWindow":
            self.menus.append((sender, arguments.unpack()[1]))
        invocation.return_value(None)

    def items(self):
        """The ids of the registered window's menu items, by their labels."""
        found = {}
        for menu in self.menus[-1:]:
            _, root = self._ask(menu, "GetLayout", GLib.Variant("(iias)", (0, -1, [])))

            def take(node):
                number, properties, children = node
                found[properties.get("label")] = number
                for child in children:
                    take(child)
            take(root)
        return found

    def choose(self, number):
        self._ask(self.menus[-1], "Event", GLib.Variant("(isvu)", (number, "clicked", GLib.Variant("i", 0), 0)))

    def _ask(self, menu, method, arguments):
        return self.bus.call_sync(*menu, "com.canonical.dbusmenu", method, arguments, None, 0, 5000).unpack() or None

    def close(self):
        self.loop.quit()
        self.thread.join()
