"""The settings portal of a desktop that is dark or light."""
import subprocess

from gi.repository import Gio, GLib

from planner_driver import wait_for

NAME, PATH, INTERFACE = "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop", "org.freedesktop.portal.Settings"
NAMESPACE = "org.freedesktop.appearance"
DARK, LIGHT = 1, 2


class SettingsPortal:
    """What a desktop tells of itself (org.freedesktop.portal.Settings)."""

    def __init__(self, scheme):
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        self.process = subprocess.Popen(["/usr/bin/python3", "-m", "dbusmock", "--session", NAME, PATH, INTERFACE],
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        answer = f"ret = {{'{NAMESPACE}': {{'color-scheme': dbus.UInt32({scheme}, variant_level=1)}}}}"
        wait_for("the portal", lambda: self._ask("AddMethod", GLib.Variant(
            "(sssss)", (INTERFACE, "ReadAll", "as", "a{sa{sv}}", answer))) or True)

    def change(self, scheme):
        arguments = [GLib.Variant("s", NAMESPACE), GLib.Variant("s", "color-scheme"), GLib.Variant("v", GLib.Variant("u", scheme))]
        self._ask("EmitSignal", GLib.Variant("(sssav)", (INTERFACE, "SettingChanged", "ssv", arguments)))

    def _ask(self, method, arguments):
        return self.bus.call_sync(NAME, PATH, "org.freedesktop.DBus.Mock", method, arguments, None, 0, 5000)

    def close(self):
        self.process.terminate()
        self.process.wait()
