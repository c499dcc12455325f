"""Calendars on the real window: a folder of files that another program writes too, and the desktop's calendar service.

usage: dbus-run-session -- python3 calendar_flow_test.py PROGRAM PEER
"""
import datetime
import pathlib
import re
import subprocess
import sys
import tempfile
import urllib.parse

from planner_driver import PlannerTestCase, main, wait_for

PEER = sys.argv.pop(1)


def event(uid, title):
    today = datetime.datetime.now(datetime.timezone.utc).strftime("%Y%m%d")
    return (f"BEGIN:VEVENT\r\nUID:{uid}\r\nSUMMARY:{title}\r\nDTSTART:{today}T120000Z\r\nDTEND:{today}T130000Z\r\n"
            "X-OTHER-PROGRAM:kept\r\nEND:VEVENT\r\n")


def calendar_file(uid, title):
    return f"BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//other//EN\r\n{event(uid, title)}END:VCALENDAR\r\n"


class Peer:
    """Another program that works with the calendar service."""

    def __init__(self):
        self.process = subprocess.Popen([PEER], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)

    def ask(self, command, *fields):
        print(command, *(urllib.parse.quote(field, safe="") for field in fields), file=self.process.stdin, flush=True)
        status, *answer = self.process.stdout.readline().split()
        assert status == "ok", command
        return [urllib.parse.unquote(field) for field in answer]

    def close(self):
        self.process.stdin.close()
        self.process.wait()
        self.process.stdout.close()


class CalendarFlow(PlannerTestCase):
    def start_with_consent(self, calendar):
        planner = self.start("--calendar", calendar)
        planner.wait("dialog", "欢迎来到 Tessaly")
        planner.press("push button", "稍后再说")
        planner.wait("dialog", "允许 Tessaly 使用此系统的日历？")
        self.assertFalse(planner.has_loaded("libecal"))
        planner.press("push button", "允许")
        planner.wait_gone("dialog")
        return planner

    def open_schedules(self, planner):
        planner.press("list item", "日程")
        planner.wait_like("heading", "本周")

    def rename(self, planner, title, new_title):
        planner.press("push button", f"编辑, {title}")
        planner.wait("dialog", "编辑日程")
        planner.type_into("日程名称", new_title)
        planner.press("push button", "保存")
        planner.wait_gone("dialog")

    def test_a_folder_and_the_planner_follow_each_other(self):
        folder = pathlib.Path(self.home.name) / "calendars" / "home"
        folder.mkdir(parents=True)
        (folder / "dentist.ics").write_text(calendar_file("dentist", "Dentist"), newline="")

        planner = self.start_answered("--calendar", f"vdir:{folder.parent}")
        self.open_schedules(planner)
        planner.wait("push button", "编辑, Dentist")

        (folder / "lunch.ics").write_text(calendar_file("lunch", "Lunch"), newline="")
        planner.wait("push button", "编辑, Lunch")

        self.rename(planner, "Dentist", "Surgeon")
        file = wait_for("the edit in the file", lambda: (
            text := (folder / "dentist.ics").read_bytes().decode()) and "SUMMARY:Surgeon\r\n" in text and text)
        self.assertEqual(re.sub("LAST-MODIFIED:.*\r\n", "", file), calendar_file("dentist", "Surgeon"))

        planner.press("push button", "删除, Surgeon")
        wait_for("the end of the file", lambda: not (folder / "dentist.ics").exists())

        (folder / "lunch.ics").unlink()
        planner.wait_gone("push button", "编辑, Lunch")

    def test_many_removals_wait_for_an_answer(self):
        folder = pathlib.Path(self.home.name) / "calendars" / "home"
        folder.mkdir(parents=True)
        for number in range(25):
            (folder / f"{number}.ics").write_text(calendar_file(f"event-{number}", f"Course {number}"), newline="")
        planner = self.start_answered("--calendar", f"vdir:{folder.parent}")
        self.open_schedules(planner)
        planner.wait("push button", "编辑, Course 1")
        for number in range(1, 25):
            (folder / f"{number}.ics").unlink()
        planner.press("push button", "打开")
        planner.wait("dialog", "日历同步")
        self.assertIsNotNone(planner.find("push button", "保留"))
        planner.press("push button", "移除")
        wait_for("the removal", lambda: planner.find("push button", "移除") is None)
        planner.press("push button", "完成")
        planner.wait_gone("push button", "编辑, Course 1")
        self.assertIsNotNone(planner.find("push button", "编辑, Course 0"))

    def test_a_sync_writes_what_was_added_into_the_folder(self):
        pathlib.Path(self.home.name, "calendars", "home").mkdir(parents=True)
        planner = self.start_answered("--calendar", f"vdir:{self.home.name}/calendars")
        self.open_schedules(planner)
        planner.type_into("日程名称", "Seminar")
        planner.press("push button", "添加日程")
        planner.wait("push button", "编辑, Seminar")
        planner.press("push button", "同步设置")
        planner.wait("dialog", "日历同步")
        planner.press("push button", "立即同步")

        def files():
            return [file.read_text() for file in pathlib.Path(self.home.name, "calendars").glob("*/*.ics")]

        [text] = wait_for("the file of the schedule", files)
        self.assertIn("SUMMARY:Seminar", text)

    def test_the_service_is_used_once_the_user_says_yes(self):
        home = tempfile.TemporaryDirectory()
        self.addCleanup(home.cleanup)
        folders = {name: f"{home.name}/{name}" for name in
                   ("HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME")}
        for folder in folders.values():
            pathlib.Path(folder).mkdir()
        subprocess.run(["dbus-update-activation-environment", "GSETTINGS_BACKEND=keyfile", "GIO_USE_VFS=local",
                        *(f"{name}={folder}" for name, folder in folders.items())], check=True)
        peer = Peer()
        self.addCleanup(peer.close)
        [calendar] = peer.ask("add-local", "Work")
        peer.ask("put", calendar, event("dentist", "Dentist"))

        planner = self.start_with_consent("eds")
        self.open_schedules(planner)
        planner.wait("push button", "编辑, Dentist")

        peer.ask("put", calendar, event("lunch", "Lunch"))
        planner.wait("push button", "编辑, Lunch")

        self.rename(planner, "Dentist", "Surgeon")
        text = wait_for("the edit in the service", lambda: next(
            (text for text in peer.ask("texts", calendar, "dentist") if "SUMMARY:Surgeon" in text), None))
        self.assertIn("X-OTHER-PROGRAM:kept", text)

        peer.ask("drop", calendar, "lunch")
        planner.wait_gone("push button", "编辑, Lunch")


if __name__ == "__main__":
    main()
