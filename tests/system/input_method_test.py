"""Chinese is written with a real input method into the fields of the real window.

usage: dbus-run-session -- python3 input_method_test.py PROGRAM
"""
import os
import pathlib
import re
import subprocess
import threading

from gi.repository import Gio, GLib

from planner_driver import CHECKED, FOCUSED, PlannerTestCase, has_state, main, text_in, wait_for

PROFILE = """\
[Groups/0]
Name=Default
Default Layout=us
DefaultIM=pinyin

[Groups/0/Items/0]
Name=keyboard-us

[Groups/0/Items/1]
Name=pinyin

[GroupOrder]
0=Default
"""

# Every window begins with pinyin, and nothing is learnt or shown besides the candidates.
CONFIG = """\
[Behavior]
ActiveByDefault=True
ShowInputMethodInformation=False
ShareInputState=All
"""


class InputMethod:
    """fcitx5 with pinyin, and what it tells the program of the text that is being composed."""

    def __init__(self, home):
        settings = pathlib.Path(home) / "fcitx5"
        settings.mkdir()
        (settings / "profile").write_text(PROFILE)
        (settings / "config").write_text(CONFIG)
        self.preedit = self.committed = ""
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        self.monitor = subprocess.Popen(
            ["dbus-monitor", "type='signal',interface='org.fcitx.Fcitx.InputContext1'"],
            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.reader = threading.Thread(target=self._follow, daemon=True)
        self.reader.start()
        self.process = subprocess.Popen(
            ["fcitx5", "--disable", "wayland,waylandim,notifications,notificationitem,clipboard,quickphrase,spell"],
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
            env=os.environ | {"XDG_CONFIG_HOME": home, "XDG_DATA_HOME": home, "LC_ALL": "C.UTF-8"})
        wait_for("the input method", lambda: self.call("CurrentInputMethod") is not None)

    def call(self, method):
        answer = self.bus.call_sync("org.fcitx.Fcitx5", "/controller", "org.fcitx.Fcitx.Controller1", method,
                                    None, None, Gio.DBusCallFlags.NO_AUTO_START, 5000).unpack()
        return answer[0] if answer else ""

    def _follow(self):
        """A preedit is an array of pieces of text with their formats, then the cursor; an empty one has no pieces."""
        member, pieces = "", []
        for line in self.monitor.stdout:
            if found := re.search(r"member=(\w+)", line):
                member, pieces = found[1], []
            elif found := re.match(r'\s+string "(.*)"', line):
                pieces.append(found[1])
                if member == "CommitString":
                    self.committed = found[1]
            elif member == "UpdateFormattedPreedit" and line.startswith("   int32 "):
                self.preedit = "".join(pieces)

    def has_focus(self):
        return "focus:1" in self.call("DebugInfo") and self.call("CurrentInputMethod") == "pinyin"

    def end(self):
        for process in (self.process, self.monitor):
            process.terminate()
            process.wait()
        self.reader.join()
        self.monitor.stdout.close()


class InputMethodFlow(PlannerTestCase):
    def setUp(self):
        super().setUp()
        self.composer = InputMethod(self.home.name)
        self.addCleanup(self.composer.end)
        self.planner = self.start_answered(environment={"QT_IM_MODULE": "fcitx"})
        # Without a window manager nothing else gives the window the keys, nor then the input method.
        subprocess.run(["xdotool", "windowfocus", "--sync", self.planner.window()], check=True)
        self.join()

    def join(self):
        """The window's first text field makes the window known to the input method. The answer comes later; when it
        comes while the keys are on their way to the window, only the next field is noticed."""
        def joined():
            self.planner.press("list item", "待办")
            self.planner.focus("text", "待办名称")
            self.planner.press("list item", "概览")
            self.planner.focus("text", "称呼")
            try:
                return wait_for("the input method's focus", self.composer.has_focus, limit=2)
            except AssertionError:
                return False
        wait_for("the input method", joined)

    def compose(self, keys, preedit):
        wait_for("the input method's focus", self.composer.has_focus)
        self.planner.keys("type", "--delay", "10", keys)
        wait_for(f"the preedit {preedit}, not {self.composer.preedit}", lambda: self.composer.preedit == preedit)

    def commit(self, key="space"):
        self.planner.keys("key", key)
        wait_for("the end of the preedit", lambda: self.composer.preedit == "")

    def write(self, name):
        """Writes "你好世界" into the empty field; what is composed neither gets into the text nor reaches the form."""
        with self.subTest(field=name):
            node = self.planner.focus("text", name)
            self.compose("nihao", "ni hao")
            self.assertEqual(text_in(node), "")
            self.commit("Escape")
            self.assertEqual(text_in(node), "")
            self.compose("nihao", "ni hao")
            self.commit("Return")
            self.planner.wait_text(name, "nihao")
            self.planner.keys("key", "ctrl+a")
            self.compose("nihao", "ni hao")
            self.commit()
            self.planner.wait_text(name, "你好")
            self.compose("shijie", "shi jie")
            self.commit()
            self.planner.wait_text(name, "你好世界")

    def test_the_forms_take_what_is_composed_and_only_that(self):
        for screen, form, names in (("日程", "日程名称", ("标签（可选）",)),
                                    ("待办", "待办名称", ("任务具体要求（可选）",)),
                                    ("目标", "主目标名称", ("内容概述（可选）", "类别标签（可选）"))):
            self.planner.press("list item", screen)
            self.planner.reach("text", form)
            self.write(form)
            for name in names:
                self.write(name)
            # Nothing was added by the Return that ended a composition.
            self.assertEqual(self.planner.find_all("push button", lambda name: name.startswith("编辑, ")), [])
            self.planner.focus("text", form)
            self.planner.keys("key", "Return")
            self.planner.wait_like("push button", "编辑, 你好世界")

    def test_a_record_is_corrected_in_place(self):
        self.planner.press("list item", "待办")
        self.planner.type_into("待办名称", "1")
        self.planner.keys("key", "Return")
        self.planner.press("push button", "编辑, 1")
        self.clear_and_write("待办名称, 1")
        self.clear_and_write("任务具体要求, 1")
        self.planner.keys("key", "ctrl+Return")
        self.planner.wait_state("check box", "你好世界", CHECKED, expected=False)
        self.planner.wait("label", "你好世界")

        self.planner.press("list item", "目标")
        self.planner.type_into("主目标名称", "2")
        self.planner.keys("key", "Return")
        self.planner.press("push button", "编辑, 2")
        self.clear_and_write("内容概述, 2")
        self.planner.keys("key", "Return")
        self.planner.wait("label", "你好世界")

    def clear_and_write(self, name):
        self.planner.focus("text", name)
        self.planner.keys("key", "ctrl+a", "BackSpace")
        self.planner.wait_text(name, "")
        self.write(name)

    def test_the_palette_finds_and_adds_what_is_composed(self):
        self.planner.keys("key", "ctrl+k")
        self.planner.wait("dialog", "查找与添加")
        self.write("查找与添加")
        self.planner.wait_like("list item", "添加待办“你好世界”")
        self.planner.keys("key", "ctrl+a")
        self.compose("mingtian", "ming tian")
        self.assertNotEqual(self.planner.find_all("list item", lambda name: "添加待办“你好世界”" in name), [])
        self.commit()
        self.compose("kaihui", "kai hui")
        self.commit()
        self.planner.wait_like("list item", "添加日程“开会”", "明天")
        self.planner.keys("key", "Return")
        self.planner.wait_like("push button", "编辑, 开会")

    def test_a_date_is_written_with_its_signs(self):
        for language, form, toggle, due, written in (
                ("中文", "待办名称", "设置截止日期", "截止", "2026年12月3日 "),
                ("English", "To-do name", "Set due date", "Due", "Dec 3, 2026, ")):
            with self.subTest(language=language):
                self.planner.press("list item", "待办" if language == "中文" else "To-dos")
                self.planner.wait("text", form)
                if not has_state(self.planner.wait("check box", toggle), CHECKED):
                    self.planner.press("check box", toggle)
                field = self.planner.focus("text", due)
                before = text_in(field)
                self.compose("nian", "nian")
                self.commit("Escape")
                self.assertEqual(text_in(field), before)
                for number, keys, sign in (("2026", "nian", "年"), ("12", "yue", "月"), ("3", "ri", "日")):
                    self.planner.keys("type", "--delay", "10", number)
                    self.write_sign(keys, sign)
                self.planner.focus("text", form)
                wait_for(f"{written} as the due date", lambda: self.planner.text_of("text", due).startswith(written))
            if language == "中文":
                self.planner.choose("语言", "English")

    def write_sign(self, keys, sign):
        """Chooses the sign among the candidates; the dictionary may offer another one first."""
        for choice in "12345":
            self.compose(keys, keys)
            self.commit(choice)
            if wait_for("what was chosen", lambda: self.composer.committed) == sign:
                self.composer.committed = ""
                return
            self.composer.committed = ""
            self.planner.keys("key", "BackSpace")
        self.fail(f"{sign} is not among the candidates for {keys}")


if __name__ == "__main__":
    main()
