"""The real program: its window, its data and its ways to start.

usage: dbus-run-session -- python3 program_test.py PROGRAM
"""
import os
import pathlib
import shutil
import subprocess

from global_menu import GlobalMenu
from planner_driver import CHECKED, FOCUSED, PROGRAM, PlannerTestCase, descendants, has_state, main, press, wait_for
from small_disk import SmallDisk
from settings_portal import DARK, LIGHT, SettingsPortal
from shortcut_portal import ShortcutPortal

IDLE_SECONDS = 10


def focused_window():
    return subprocess.run(["xdotool", "getwindowfocus"], capture_output=True, text=True).stdout.strip()


class ProgramTest(PlannerTestCase):
    def test_what_was_typed_is_there_after_a_kill(self):
        planner = self.start()
        planner.wait("dialog", "欢迎来到 Tessaly")
        wait_for("the cursor in the field", lambda: has_state(planner.find("text", "我该如何称呼你？"), FOCUSED))
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
        wait_for("the focus", lambda: focused_window() == window)
        self.assertIsNone(first.process.poll())

    def test_the_desktops_own_menu_bar_has_the_commands(self):
        menu = GlobalMenu()
        self.addCleanup(menu.close)
        planner = self.start_answered()

        items = wait_for("the menu", lambda: (found := menu.items()).get("About Tessaly") and found)
        self.assertIn("请求通知权限", items)
        menu.choose(items["About Tessaly"])

        planner.wait("dialog", "Tessaly")

    def test_a_desktop_that_turns_light_is_followed(self):
        portal = SettingsPortal(DARK)
        self.addCleanup(portal.close)
        planner = self.start("--demo")
        planner.wait("list item", "Overview")

        def is_sidebar_dark():
            pixel = subprocess.run(["import", "-window", planner.window(), "-crop", "1x1+4+300", "-depth", "8", "gray:-"],
                                   capture_output=True, check=True).stdout
            return pixel[0] < 128

        wait_for("the dark planner", is_sidebar_dark)
        portal.change(LIGHT)
        wait_for("the light planner", lambda: not is_sidebar_dark())

    def test_the_background_shows_nothing_until_it_is_asked(self):
        resident = self.start("--background")
        wait_for("its data", lambda: (self.data / "planner.sqlite").exists())

        self.assertEqual(self.start("--background").end()[0], 0)
        resident.outlives(1)
        self.assertEqual(resident.visible_windows(), [])

        self.assertEqual(self.start().end()[0], 0)
        window = resident.window()
        wait_for("the focus", lambda: focused_window() == window)
        resident.wait("list item", "概览")
        self.assertIsNone(resident.process.poll())

    def test_the_field_that_finds_and_adds_opens_from_outside(self):
        planner = self.start_answered()
        self.assertEqual(self.start("--find").end()[0], 0)
        planner.wait("dialog", "查找与添加")
        planner.wait_state("text", "查找与添加", FOCUSED)
        planner.type_into("查找与添加", "Milk")
        planner.wait_like("list item", "添加待办“Milk”")
        planner.keys("key", "ctrl+Return")
        planner.wait_gone("dialog")
        planner.kill()

        resident = self.start("--background")
        resident.outlives(1)
        self.assertEqual(self.start("--find").end()[0], 0)
        resident.wait("dialog", "查找与添加")

    def test_the_key_for_every_program_works_without_a_window_too(self):
        portal = ShortcutPortal()
        self.addCleanup(portal.close)
        planner = self.start_answered()
        planner.keys("key", "F1")
        planner.press("check box", "在任何程序中查找与添加")
        planner.wait_state("check box", "在任何程序中查找与添加 · Ctrl+Alt+K", CHECKED)
        planner.press("push button", "完成")
        planner.wait_gone("dialog")
        portal.press()
        planner.wait("dialog", "查找与添加")
        planner.kill()

        portal.holder = None
        resident = self.start("--background")
        wait_for("the key", lambda: portal.holder)
        self.assertEqual(resident.visible_windows(), [])
        first = portal.holder
        portal.press()
        resident.wait("dialog", "查找与添加")
        resident.wait_state("text", "查找与添加", FOCUSED)
        wait_for("the window's own key", lambda: portal.holder != first)

    def test_reminders_outlive_the_window_and_the_session(self):
        planner = self.start_answered()
        planner.press("list item", "待办")
        planner.press("check box", "设置截止日期")
        planner.wait_state("check box", "设置截止日期", CHECKED)
        planner.type_into("待办名称", "Post the letter")
        planner.press("push button", "添加待办")
        autostart = pathlib.Path(self.home.name) / "autostart"
        entry = wait_for("the autostart entry", lambda: next(autostart.glob("tessaly-reminders-*.desktop"), None))
        self.assertIn(f"Exec={os.path.realpath(PROGRAM)} --background --data-dir {self.data} --calendar none\n", entry.read_text())
        self.assertFalse((autostart / "tessaly.desktop").exists())

        planner.close_window()
        wait_for("the window to close", lambda: not planner.visible_windows())
        planner.outlives(1)
        self.assertEqual(self.start().end()[0], 0)
        planner.window()
        planner.press("list item", "待办")
        press(planner.wait_like("push button", " – "))
        planner.press("check box", "Post the letter")
        wait_for("the end of the entry", lambda: not entry.exists())
        planner.close_window()
        self.assertEqual(planner.end()[0], 0)

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

    def test_an_open_week_uses_no_processor_time(self):
        planner = self.start("--demo")
        planner.press("list item", "Schedule")
        planner.wait_like("heading", "This week")
        self.assertLessEqual(planner.ticks_while_idle(IDLE_SECONDS), 1)

    def refusal(self, data, *parts, **more):
        """What a start says that cannot open its data; its window is left with the Esc key."""
        planner = self.start(data=data, **more)
        planner.wait("push button", "关闭 / Close")
        planner.keys("key", "Escape")
        code, output = planner.end()
        self.assertEqual(code, 1)
        for part in parts:
            self.assertIn(part, output)

    def start_on_small_disk(self):
        """A planner with a to-do that has no room on the disk, and the disk."""
        if not SmallDisk.is_possible():
            self.skipTest("a file system can be mounted neither as root nor in a user name space")
        disk = SmallDisk(self.data)
        planner = self.start_answered(launcher=disk.launcher)
        planner.press("list item", "待办")
        disk.fill(planner.process)
        planner.type_into("待办名称", "Water the plants")
        planner.press("push button", "添加待办")
        planner.wait("status bar", "有更改尚未保存")
        return planner, disk

    def test_closing_on_a_full_disk_asks_and_keeps_trying(self):
        planner, disk = self.start_on_small_disk()
        planner.close_window()
        planner.wait("dialog", "不保存就退出？")
        planner.keys("key", "Escape")
        planner.wait_gone("dialog")
        planner.wait("check box", "Water the plants")

        disk.make_room(planner.process)
        planner.wait_gone("status bar", "有更改尚未保存")
        disk.fill(planner.process)
        planner.press("check box", "Water the plants")
        planner.wait("status bar", "有更改尚未保存")
        planner.close_window()
        planner.press("push button", "不保存并退出")
        code, output = planner.end()
        self.assertEqual(code, 0)
        self.assertIn("Changes could not be saved and are lost.", output)

    def test_the_end_of_a_session_saves_what_it_can(self):
        planner, disk = self.start_on_small_disk()
        disk.make_room(planner.process)
        planner.process.terminate()
        code, output = planner.end()
        self.assertEqual(code, 0)
        self.assertNotIn("lost", output)

    def test_the_end_of_a_session_tells_what_is_lost(self):
        planner, _ = self.start_on_small_disk()
        planner.process.terminate()
        code, output = planner.end()
        self.assertEqual(code, 0)
        self.assertIn("Changes could not be saved and are lost.", output)

    def test_a_directory_that_cannot_be_written_is_reported(self):
        obstacle = pathlib.Path(self.home.name) / "file"
        obstacle.write_text("")
        self.refusal(obstacle / "data", "无法写入数据文件夹", f"文件夹：{obstacle}/data\n", "请检查该文件夹的权限",
                     "The data folder cannot be written", f"Folder: {obstacle}/data\n", "Check the permissions")

    def test_a_first_start_on_a_full_disk_is_reported(self):
        if not SmallDisk.is_possible():
            self.skipTest("a file system can be mounted neither as root nor in a user name space")
        disk = SmallDisk(self.data, is_full=True)
        self.refusal(self.data / "new", "磁盘空间不足", "请腾出磁盘空间", "The disk is full", "Free up disk space",
                     launcher=disk.launcher)

    def test_the_sample_data_is_in_the_language_of_the_desktop(self):
        for locale, overview in (("zh_CN.UTF-8", "概览"), ("de_DE.UTF-8", "Overview"), ("C.UTF-8", "Overview")):
            with self.subTest(locale=locale):
                self.start("--demo", environment={"LC_ALL": locale}).wait("list item", overview)

    def test_a_damaged_database_is_reported_and_left_alone(self):
        self.data.mkdir()
        database = self.data / "planner.sqlite"
        database.write_bytes(b"not a database" * 1000)
        self.refusal(self.data, "数据文件已损坏", f"文件：{database}\n", "请用备份替换该文件",
                     "The data file is damaged", f"File: {database}\n", "Replace the file with a backup")
        self.assertEqual(database.read_bytes(), b"not a database" * 1000)

    def test_a_value_that_cannot_be_put_together_is_reported_and_left_alone(self):
        planner = self.start_answered()
        planner.press("list item", "待办")
        for title in ("Water the plants", "Post the letter"):
            planner.type_into("待办名称", title)
            planner.press("push button", "添加待办")
            planner.wait("check box", title)
        planner.kill()
        database = self.data / "planner.sqlite"
        intact = self.data.with_name("intact")
        shutil.copytree(self.data, intact)
        for damage in ("update stored_value set content = x'7b22' where id = (select max(value_id) from preference)",
                       "delete from value_edit", "update value_edit set offset = 1000000"):
            with self.subTest(damage=damage):
                shutil.rmtree(self.data)
                shutil.copytree(intact, self.data)
                subprocess.run(["sqlite3", database, damage], check=True)
                before = database.read_bytes()
                self.refusal(self.data, "数据文件已损坏", "The data file is damaged")
                self.assertEqual(database.read_bytes(), before)

    def cleared(self):
        """A planner with a to-do that has been cleared away."""
        planner = self.start_answered()
        planner.press("list item", "待办")
        planner.type_into("待办名称", "Water the plants")
        planner.press("push button", "添加待办")
        planner.wait("check box", "Water the plants")
        planner.press("push button", "清空")
        dialog = planner.wait("dialog", "清空内容？")
        press(next(node for node in descendants(dialog) if node.get_name() == "清空"))
        planner.wait_gone("check box", "Water the plants")
        wait_for("the restore point", lambda: list((self.data / "Backups").glob("*-clear-*.sqlite")))
        return planner

    def test_what_was_cleared_comes_back_from_an_earlier_version(self):
        planner = self.cleared()
        planner.press("push button", "菜单")
        planner.press("menu item", "历史版本…")
        planner.wait_like("list item", "清空内容之前")
        planner.wait_state("check box", "找回, Water the plants", CHECKED)
        planner.press("push button", "恢复所选")
        planner.wait("status bar", "已恢复 1 项。")
        planner.wait_like("list item", "恢复之前")
        planner.press("push button", "完成")
        planner.wait("check box", "Water the plants")

    def lost_after_clearing(self, lose):
        """A planner that starts again after its database was lost."""
        planner = self.cleared()
        planner.kill()
        lose()
        return self.start()

    def test_a_damaged_database_gives_way_to_an_earlier_version(self):
        def lose():
            (self.data / "planner.sqlite").write_bytes(b"not a database" * 1000)
            (self.data / "planner.sqlite-wal").unlink(missing_ok=True)
        planner = self.lost_after_clearing(lose)
        planner.press("push button", "打开历史版本 / Open earlier version")
        planner.press("list item", "待办")
        planner.wait("check box", "Water the plants")
        damaged = [file.read_bytes() for file in self.data.glob("planner-damaged-*.sqlite")]
        self.assertEqual(damaged, [b"not a database" * 1000])

    def test_a_missing_database_gives_way_to_an_earlier_version_or_an_empty_one(self):
        def lose():
            for file in self.data.glob("planner.sqlite*"):
                file.unlink()
        planner = self.lost_after_clearing(lose)
        planner.press("push button", "从空白开始 / Start empty")
        planner.wait("list item", "待办")
        planner.kill()
        lose()
        planner = self.start()
        planner.press("push button", "打开历史版本 / Open earlier version")
        planner.press("list item", "待办")
        planner.wait("check box", "Water the plants")

    def test_the_login_item_starts_this_program_on_this_data(self):
        planner = self.start_answered()
        planner.choose("启动", "开机启动")
        entry = pathlib.Path(self.home.name) / "autostart" / "tessaly.desktop"
        text = wait_for("the autostart entry", lambda: entry.exists() and entry.read_text())
        self.assertIn(f"Exec={os.path.realpath(PROGRAM)} --background --data-dir {self.data} --calendar none\n", text)


if __name__ == "__main__":
    main()
