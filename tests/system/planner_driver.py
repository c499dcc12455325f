"""Drives the real program on a virtual screen, through the accessibility bus and real keys.

usage of a test file that imports it: dbus-run-session -- python3 FILE PROGRAM
"""
import ctypes
import os
import pathlib
import struct
import subprocess
import sys
import tempfile
import time
import unittest

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, Gio, GLib

PROGRAM = sys.argv.pop(1)
LIMIT = 30
CHECKED, EXPANDED, FOCUSED, SELECTED = (getattr(Atspi.StateType, name) for name in ("CHECKED", "EXPANDED", "FOCUSED", "SELECTED"))


# A sanitized program on a busy machine answers late.
Atspi.set_timeout(10_000, 30_000)


def wait_for(what, condition, limit=LIMIT):
    """The first true answer of the condition; a failure when there is none in time."""
    deadline = time.monotonic() + limit
    while time.monotonic() < deadline:
        try:
            if answer := condition():
                return answer
        except GLib.Error:
            pass  # The tree changes while it is read.
        time.sleep(0.05)
    raise AssertionError(f"waited in vain for {what}")


def descendants(node):
    if node is None:
        return
    yield node
    for index in range(node.get_child_count()):
        yield from descendants(node.get_child_at_index(index))


def has_state(node, state):
    return node.get_state_set().contains(state)


def text_in(node):
    return Atspi.Text.get_text(node, 0, Atspi.Text.get_character_count(node))


class Desktop:
    """A virtual screen and an accessibility bus."""

    def __init__(self):
        reader, writer = os.pipe()
        self.screen = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writer), "-screen", "0", "1440x1000x24", "-nolisten", "tcp", "-noreset"],
            pass_fds=[writer], stderr=subprocess.DEVNULL)
        os.close(writer)
        with os.fdopen(reader) as numbers:
            os.environ["DISPLAY"] = ":" + numbers.readline().strip()
        self.launcher = subprocess.Popen(["/usr/libexec/at-spi-bus-launcher", "--launch-immediately"],
                                         stderr=subprocess.DEVNULL)
        bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        wait_for("the accessibility bus", lambda: bus.call_sync(
            "org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties", "Set",
            GLib.Variant("(ssv)", ("org.a11y.Status", "IsEnabled", GLib.Variant("b", True))), None, 0, 1000) or True)
        # A program that registers before the registry is there is never seen.
        address = bus.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None, 0, 1000)
        accessibility = Gio.DBusConnection.new_for_address_sync(
            address.unpack()[0], Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
            | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
        wait_for("the registry", lambda: accessibility.call_sync(
            "org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root", "org.a11y.atspi.Accessible", "GetChildren",
            None, None, 0, 5000))

    def close(self):
        for process in (self.launcher, self.screen):
            process.terminate()
            process.wait()


class Planner:
    """One run of the program. Roles and names are those that a screen reader gets."""

    def __init__(self, data, *options, environment=None, launcher=()):
        place = [] if "--demo" in options else ["--data-dir", str(data)]
        if "--demo" not in options and "--calendar" not in options:
            place += ["--calendar", "none"]
        self.process = subprocess.Popen(
            [*launcher, PROGRAM, *place, *options], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
            stderr=subprocess.PIPE, text=True,
            env=os.environ | {"QT_QPA_PLATFORM": "xcb", "QT_QUICK_BACKEND": "software",
                              "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "LC_ALL": "C.UTF-8",
                              "XDG_RUNTIME_DIR": os.environ["XDG_RUNTIME_DIR"]} | (environment or {}))

    def _application(self):
        desktop = Atspi.get_desktop(0)
        desktop.clear_cache()
        for index in range(desktop.get_child_count()):
            try:
                child = desktop.get_child_at_index(index)
                if child is not None and child.get_process_id() == self.process.pid:
                    return child
            except GLib.Error:
                pass  # A program that ended while it registered can stay in the list.
        return None

    def find_all(self, role, matches):
        return [node for node in descendants(self._application())
                if node.get_role_name() == role and matches(node.get_name()) and has_state(node, Atspi.StateType.SHOWING)]

    def find(self, role, name):
        return next(iter(self.find_all(role, lambda found: found == name)), None)

    def wait(self, role, name):
        return wait_for(f"{role} {name}", lambda: self.find(role, name))

    def wait_like(self, role, *parts):
        """The first whose name holds all the parts."""
        return wait_for(f"{role} with {parts}", lambda: next(
            iter(self.find_all(role, lambda found: all(part in found for part in parts))), None))

    def wait_gone(self, role, *parts):
        wait_for(f"the end of {role} {parts}", lambda: not self.find_all(
            role, lambda found: all(part in found for part in parts)))

    def wait_state(self, role, name, state, expected=True):
        """The node, once it has the state, or once it has it not."""
        return wait_for(f"{role} {name} with {'' if expected else 'no '}{state.value_nick}", lambda: next(
            (node for node in self.find_all(role, lambda found: found == name) if has_state(node, state) == expected), None))

    def press(self, role, name):
        press(self.reach(role, name))

    def reach(self, role, name):
        """The control, in view: what is beyond the window's edge comes there with the focus."""
        def shown():
            node = self.find(role, name)
            if node is None:
                for candidate in descendants(self._application()):
                    if candidate.get_role_name() == role and candidate.get_name() == name:
                        candidate.grab_focus()
            return node
        return wait_for(f"{role} {name}", shown)

    def focus(self, role, name):
        """Gives the keys to the control, as a screen reader does."""
        def focused():
            node = self.reach(role, name)
            return node.grab_focus() and has_state(node, FOCUSED) and node
        return wait_for(f"the focus on {role} {name}", focused)

    def text_of(self, role, name):
        return text_in(self.wait(role, name))

    def type_into(self, name, text):
        """Replaces the text of the field by real keys."""
        self.focus("text", name)
        self.keys("key", "ctrl+a")
        self.keys("type", "--delay", "5", text)
        self.wait_text(name, text)

    def wait_text(self, name, text):
        """The field, once it holds the text."""
        try:
            return wait_for(f"{text!r} in {name}", lambda: self.find("text", name) if self.text_of("text", name) == text else None)
        except AssertionError as waited:
            focused = [(node.get_role_name(), node.get_name()) for node in descendants(self._application()) if has_state(node, FOCUSED)]
            raise AssertionError(f"{waited}: {self.text_of('text', name)!r}, the focus is on {focused}") from None

    def choose(self, name, entry):
        """Chooses an entry of a combo box."""
        self.press("combo box", name)
        self.press("list item", entry)
        self.wait_gone("list item", entry)

    def visible_windows(self):
        return subprocess.run(["xdotool", "search", "--onlyvisible", "--pid", str(self.process.pid), "--name", "^Tessaly$"],
                              capture_output=True, text=True).stdout.split()

    def window(self):
        return wait_for("the window", self.visible_windows)[0]

    def keys(self, *arguments):
        subprocess.run(["xdotool", "windowfocus", "--sync", self.window()], check=True)
        subprocess.run(["xdotool", *arguments], check=True)

    def close_window(self):
        """What the close button of a window's frame does; there is no window manager here that would do it."""
        x11 = ctypes.CDLL("libX11.so.6")
        for name, result, *arguments in (("XOpenDisplay", ctypes.c_void_p, ctypes.c_char_p),
                                         ("XInternAtom", ctypes.c_ulong, ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int),
                                         ("XSendEvent", ctypes.c_int, ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int,
                                          ctypes.c_long, ctypes.c_void_p),
                                         ("XCloseDisplay", ctypes.c_int, ctypes.c_void_p)):
            function = getattr(x11, name)
            function.restype, function.argtypes = result, arguments
        display = x11.XOpenDisplay(None)
        protocols, deletion = (x11.XInternAtom(display, name, 0) for name in (b"WM_PROTOCOLS", b"WM_DELETE_WINDOW"))
        window, client_message = int(self.window()), 33
        # XClientMessageEvent, in the space of an XEvent.
        event = struct.pack("@iLiPLLi5l96x", client_message, 0, 1, display, window, protocols, 32, deletion, 0, 0, 0, 0)
        x11.XSendEvent(display, window, 0, 0, event)
        x11.XCloseDisplay(display)

    def has_loaded(self, library):
        return library in pathlib.Path(f"/proc/{self.process.pid}/maps").read_text()

    def processor_ticks(self):
        """Processor time used so far, in hundredths of a second."""
        fields = pathlib.Path(f"/proc/{self.process.pid}/stat").read_text().rsplit(")", 1)[1].split()
        return int(fields[11]) + int(fields[12])

    def ticks_while_idle(self, seconds):
        """Processor time used while idle, once what was begun before is over."""
        def is_still():
            before = self.processor_ticks()
            self.outlives(1)
            return self.processor_ticks() == before
        wait_for("rest", is_still)
        before = self.processor_ticks()
        self.outlives(seconds)
        return self.processor_ticks() - before

    def outlives(self, seconds):
        """Lets time pass in which nothing may happen, least of all the program's end."""
        try:
            raise AssertionError(f"the program ended with {self.process.wait(seconds)}")
        except subprocess.TimeoutExpired:
            pass

    def kill(self):
        if self.process.poll() is None:
            self.process.kill()
            self.process.communicate()

    def end(self):
        """Waits for the program's own end: exit code and error output."""
        output = self.process.communicate(timeout=LIMIT)[1]
        return self.process.returncode, output


def press(node):
    """What a screen reader does to press."""
    actions = [Atspi.Action.get_action_name(node, index) for index in range(Atspi.Action.get_n_actions(node))]
    if "Press" not in actions:
        raise AssertionError(f"{node.get_role_name()} {node.get_name()} cannot be pressed, only {actions}")
    Atspi.Action.do_action(node, actions.index("Press"))


class PlannerTestCase(unittest.TestCase):
    """A fresh home for each test, one desktop for all of them."""

    @classmethod
    def setUpClass(cls):
        cls.runtime = tempfile.TemporaryDirectory()
        os.environ["XDG_RUNTIME_DIR"] = cls.runtime.name
        cls.desktop = Desktop()

    @classmethod
    def tearDownClass(cls):
        cls.desktop.close()
        cls.runtime.cleanup()

    def setUp(self):
        self.home = tempfile.TemporaryDirectory()
        self.addCleanup(self.home.cleanup)
        os.environ["XDG_CONFIG_HOME"] = self.home.name
        self.data = pathlib.Path(self.home.name) / "data"

    def start(self, *options, data=None, **more):
        planner = Planner(data or self.data, *options, **more)
        self.addCleanup(planner.kill)
        return planner

    def start_answered(self, *options, **more):
        """A first start whose question for a name has been answered with "Later"."""
        planner = self.start(*options, **more)
        planner.wait("dialog", "欢迎来到 Tessaly")
        planner.press("push button", "稍后再说")
        planner.wait_gone("dialog")
        return planner

    def in_both_languages(self, screen, flow):
        """Runs the flow on a screen, given as its pair of names, of a fresh planner in each language."""
        for language in range(2):
            with self.subTest(language=["Chinese", "English"][language]):
                planner = self.start_answered(data=self.data.with_name(f"data-{language}"))
                try:
                    if language == 1:
                        planner.choose("语言", "English")
                    planner.press("list item", screen[language])
                    flow(planner, lambda chinese, english, language=language: (chinese, english)[language])
                finally:
                    planner.kill()


def main():
    unittest.main(verbosity=2)
