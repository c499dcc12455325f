"""What a blind user hears: Orca reads the planner aloud and writes down each utterance.

usage: dbus-run-session -- python3 screen_reader_test.py PROGRAM
"""
import os
import pathlib
import re
import subprocess
import tempfile

from planner_driver import Gio, GLib, PlannerTestCase, main, wait_for

UTTERANCE = re.compile(r"SPEECH OUTPUT: '(.*?) ?'(?: ?\{.*)?$", re.MULTILINE)


class Orca:
    """The screen reader of the session. It has no voice here, but writes down what it would say."""

    def __init__(self):
        self.home = tempfile.TemporaryDirectory()
        self.transcript = pathlib.Path(self.home.name) / "transcript"
        self.transcript.touch()
        customizations = pathlib.Path(self.home.name) / "orca" / "orca-customizations.py"
        customizations.parent.mkdir()
        # Left to itself, Orca writes its debug file in blocks, long after it has spoken.
        customizations.write_text(f"""
import orca.debug, orca.settings
orca.debug.debugFile = open({str(self.transcript)!r}, "a", buffering=1)
orca.debug.debugLevel = orca.debug.LEVEL_INFO
orca.settings.speechFactoryModules = []
""")
        self.process = subprocess.Popen(
            ["orca", "--replace"], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
            env=os.environ | {"XDG_DATA_HOME": self.home.name, "LC_ALL": "C.UTF-8", "GSETTINGS_BACKEND": "memory"})
        self.understood = 0
        self.hear("Screen reader on.")

    def utterances(self):
        return UTTERANCE.findall(self.transcript.read_text(errors="replace"))

    def hear(self, *parts):
        """Waits until it has said all the parts, in one utterance or in several, in that order, since the last time."""
        def heard():
            said = self.utterances()
            wanted = list(parts)
            for number in range(self.understood, len(said)):
                rest = said[number]
                while wanted and wanted[0] in rest:
                    rest = rest.split(wanted.pop(0), 1)[1]
                if not wanted:
                    self.understood = number + 1
                    return True
            return False
        try:
            wait_for(f"{parts} to be said", heard)
        except AssertionError as silence:
            raise AssertionError(f"{silence}; said was {self.utterances()[self.understood:]}") from None

    def close(self):
        # Asked to end, it waits long for answers of programs that have ended.
        self.process.kill()
        self.process.wait()
        self.home.cleanup()


class ScreenReader(PlannerTestCase):
    """Each step waits for the words of the one before: no key is pressed into a silence."""

    def setUp(self):
        super().setUp()
        self.orca = Orca()
        self.addCleanup(self.orca.close)

    def test_screens_are_read_aloud(self):
        self.in_both_languages(("概览", "Overview"), self.flow)

    def flow(self, planner, text):
        self.planner, self.text = planner, text
        self.sidebar()
        self.todos()
        self.week()
        self.details()

    def press(self, key, *parts):
        self.planner.keys("key", key)
        self.orca.hear(*parts)

    def sidebar(self):
        self.planner.focus("text", self.text("称呼", "Name"))
        self.press("shift+Tab", self.text("菜单", "Menu"))
        self.press("shift+Tab", self.text("查找与添加", "Find and add"))
        self.press("shift+Tab", self.text("概览", "Overview"))
        self.press("Down", self.text("日程", "Schedule"))
        self.press("Down", self.text("待办", "To-dos"))

    def todos(self):
        text, planner = self.text, self.planner
        name = text("待办名称", "To-do name")
        planner.type_into(name, "Water the plants")
        self.orca.hear(name)
        planner.press("push button", text("添加待办", "Add to-do"))
        planner.focus("check box", "Water the plants")
        self.orca.hear("Water the plants check box not checked")
        self.press("Tab", text("编辑", "Edit"), "Water the plants push button")
        self.press("Tab", text("删除", "Delete"), "Water the plants push button")

    def week(self):
        text, planner = self.text, self.planner
        planner.press("list item", text("日程", "Schedule"))
        name = text("日程名称", "Schedule name")
        planner.type_into(name, "Lecture on trees")
        self.orca.hear(name)
        planner.press("push button", text("添加日程", "Add schedule"))
        planner.focus("page tab", text("周", "Week"))
        self.orca.hear(text("周", "Week"))
        self.press("Right", text("月", "Month"))
        self.press("Left", text("周", "Week"))
        planner.wait_like("push button", text("1 个日程", "1 schedule")).grab_focus()
        self.orca.hear(text("1 个日程", "1 schedule"), text("今天", "Today"))
        second, third = planner.find_all("push button", lambda found: text("个日程", " schedule") in found)[1:3]
        second.grab_focus()
        self.orca.hear(second.get_name())
        self.press("Right", third.get_name())

    def details(self):
        text, planner = self.text, self.planner
        block = planner.wait_like("push button", "Lecture on trees", " – ")
        block.grab_focus()
        self.orca.hear("Lecture on trees", " – ")
        self.press("Return", text("时间: ", "Time: "), text("标签: 无", "Tag: None"), text("备注: 无", "Notes: None"),
                   text("任务: 无", "Tasks: None"))
        self.press("Return", text("日程名称", "Name"))


if __name__ == "__main__":
    main()
