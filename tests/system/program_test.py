"""The real program in a virtual display with a session bus of its own, seen through the accessibility bus.

usage: dbus-run-session -- python3 program_test.py PROGRAM
"""
import os
import pathlib
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


class Desktop:
    """A virtual screen and an accessibility bus."""

    def __init__(self):
        reader, writer = os.pipe()
        self.screen = subprocess.Popen(["Xvfb", "-displayfd", str(writer), "-screen", "0", "1440x1000x24", "-nolisten", "tcp"],
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
    """One run of the program."""

    def __init__(self, data, *options, environment=None):
        self.process = subprocess.Popen(
            [PROGRAM, "--data-dir", str(data), *options], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
            stderr=subprocess.PIPE, text=True,
            env=os.environ | {"QT_QPA_PLATFORM": "xcb", "QT_QUICK_BACKEND": "software",
                              "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "LC_ALL": "C.UTF-8",
                              "XDG_RUNTIME_DIR": os.environ["XDG_RUNTIME_DIR"]} | (environment or {}))

    def _application(self):
        desktop = Atspi.get_desktop(0)
        for index in range(desktop.get_child_count()):
            child = desktop.get_child_at_index(index)
            if child is not None and child.get_process_id() == self.process.pid:
                return child
        return None

    def find(self, role, name):
        return next((node for node in descendants(self._application())
                     if node.get_role_name() == role and node.get_name() == name
                     and node.get_state_set().contains(Atspi.StateType.SHOWING)), None)

    def wait(self, role, name):
        return wait_for(f"{role} {name}", lambda: self.find(role, name))

    def text_of(self, role, name):
        node = self.wait(role, name)
        return Atspi.Text.get_text(node, 0, Atspi.Text.get_character_count(node))

    def window(self):
        return wait_for("the window", lambda: subprocess.run(
            ["xdotool", "search", "--onlyvisible", "--pid", str(self.process.pid), "--name", "^Tessaly$"],
            capture_output=True, text=True).stdout.split())[0]

    def keys(self, *arguments):
        subprocess.run(["xdotool", "windowfocus", "--sync", self.window()], check=True)
        subprocess.run(["xdotool", *arguments], check=True)

    def kill(self):
        if self.process.poll() is None:
            self.process.kill()
            self.process.communicate()

    def end(self):
        """Waits for the program's own end: exit code and error output."""
        output = self.process.communicate(timeout=LIMIT)[1]
        return self.process.returncode, output


class ProgramTest(unittest.TestCase):
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

    def test_what_was_typed_is_there_after_a_kill(self):
        planner = self.start()
        planner.wait("dialog", "欢迎来到 Tessaly")
        wait_for("the cursor in the field", lambda: planner.find("text", "例如：Brennic").get_state_set().contains(
            Atspi.StateType.FOCUSED))
        planner.keys("type", "Ada")
        planner.keys("key", "Return")
        wait_for("the name in the settings", lambda: planner.text_of("text", "称呼") == "Ada")
        planner.kill()

        planner = self.start()
        wait_for("the name", lambda: planner.text_of("text", "称呼") == "Ada")
        self.assertIsNone(planner.find("dialog", "欢迎来到 Tessaly"))

    def test_a_second_start_brings_the_first_to_the_front(self):
        first = self.start()
        first.wait("list item", "概览")
        window = first.window()
        other = self.start(data=self.data.with_name("other"))
        subprocess.run(["xdotool", "windowfocus", "--sync", other.window()], check=True)

        second = self.start()

        self.assertEqual(second.end()[0], 0)
        wait_for("the focus", lambda: subprocess.run(["xdotool", "getwindowfocus"], capture_output=True,
                                                     text=True).stdout.strip() == window)
        self.assertIsNone(first.process.poll())

    def test_size_and_position_come_back(self):
        planner = self.start()
        planner.wait("list item", "概览")
        window = planner.window()

        def geometry(of):
            words = subprocess.run(["xdotool", "getwindowgeometry", "--shell", of], capture_output=True, text=True).stdout
            values = dict(line.split("=") for line in words.split())
            return [int(values[key]) for key in ("X", "Y", "WIDTH", "HEIGHT")]

        log = self.data / "planner.sqlite-wal"

        def is_written_after(*command):
            before = log.stat().st_mtime_ns
            subprocess.run(["xdotool", *command], check=True)
            try:
                return wait_for("a write", lambda: log.stat().st_mtime_ns != before, limit=3)
            except AssertionError:
                return False

        # The place that the window first comes to is not written; only once it rests there, changes are.
        heights = iter(range(650, 690))
        wait_for("the first write", lambda: is_written_after("windowsize", window, "1000", str(next(heights))))
        self.assertTrue(is_written_after("windowsize", window, "1000", "700"))
        self.assertTrue(is_written_after("windowmove", window, "60", "80"))
        planner.kill()

        planner = self.start()
        planner.wait("list item", "概览")
        wait_for("the former place", lambda: geometry(planner.window()) == [60, 80, 1000, 700])

    def refusal(self, data, chinese, english):
        """What a start says that cannot open its data; its window is left with the Esc key."""
        planner = self.start(data=data)
        planner.wait("push button", "关闭 / Close")
        planner.keys("key", "Escape")
        code, output = planner.end()
        self.assertEqual(code, 1)
        self.assertIn(chinese, output)
        self.assertIn(english, output)

    def test_a_directory_that_cannot_be_written_is_told(self):
        obstacle = pathlib.Path(self.home.name) / "file"
        obstacle.write_text("")
        self.refusal(obstacle / "data", "无法写入数据文件夹", "The data folder cannot be written")

    def test_a_damaged_database_is_told_and_left_alone(self):
        self.data.mkdir()
        database = self.data / "planner.sqlite"
        database.write_bytes(b"not a database" * 1000)
        self.refusal(self.data, "数据文件已损坏", "The data file is damaged")
        self.assertEqual(database.read_bytes(), b"not a database" * 1000)

    def test_the_login_item_starts_this_program_on_this_data(self):
        planner = self.start()
        planner.wait("dialog", "欢迎来到 Tessaly")
        planner.keys("key", "Escape")
        box = planner.wait("combo box", "启动")
        wait_for("the focus", lambda: box.grab_focus() and box.get_state_set().contains(Atspi.StateType.FOCUSED))
        planner.keys("key", "space")
        planner.wait("list item", "开机启动")
        planner.keys("key", "Up")
        planner.keys("key", "Return")
        entry = pathlib.Path(self.home.name) / "autostart" / "tessaly.desktop"
        text = wait_for("the autostart entry", lambda: entry.exists() and entry.read_text())
        self.assertIn(f"Exec={os.path.realpath(PROGRAM)} --background --data-dir {self.data}\n", text)


if __name__ == "__main__":
    unittest.main(verbosity=2)
