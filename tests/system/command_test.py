"""Commands without a window, beside a running planner and without one.

usage: dbus-run-session -- python3 command_test.py PROGRAM
"""
import json
import os
import subprocess
import zipfile

from planner_driver import PROGRAM, PlannerTestCase, main


class CommandTest(PlannerTestCase):
    def run_command(self, *arguments, data=None):
        """Status, standard output and standard error."""
        done = subprocess.run([PROGRAM, "--data-dir", str(data or self.data), "--calendar", "none", *arguments],
                              capture_output=True, text=True, timeout=60, cwd=self.home.name,
                              env=os.environ | {"LC_ALL": "C.UTF-8"})
        return done.returncode, done.stdout, done.stderr

    def succeed(self, *arguments, data=None):
        status, output, errors = self.run_command(*arguments, data=data)
        self.assertEqual((status, errors), (0, ""))
        return output

    def records(self, data=None):
        self.succeed("export", "state.zip", data=data)
        with zipfile.ZipFile(f"{self.home.name}/state.zip") as archive:
            return json.loads(archive.read("data.json"))

    def flow(self, planner):
        self.succeed("add", "Buy  milk")
        if planner:
            planner.press("list item", "待办")
            planner.wait("check box", "Buy milk")
        agenda = json.loads(self.succeed("agenda", "--json", "--days", "3"))
        self.assertEqual([item["title"] for item in agenda["undated"]], ["Buy milk"])
        self.assertEqual(len(agenda["days"]), 3)
        self.assertIn("Buy milk", self.succeed("agenda"))

        self.succeed("export", "all.zip")
        self.succeed("add", "Later")
        before = self.records()
        with open(f"{self.home.name}/all.zip", "rb") as archive:
            whole = archive.read()
        with open(f"{self.home.name}/cut.zip", "wb") as archive:
            archive.write(whole[:-30])
        status, output, errors = self.run_command("import", "cut.zip")
        self.assertEqual((status, output), (1, ""))
        self.assertIn("cut.zip", errors)
        self.assertEqual(self.records(), before)

        self.succeed("import", "all.zip")
        self.assertEqual([item["title"] for item in self.records()["reminders"]], ["Buy milk"])
        if planner:
            planner.wait_gone("check box", "Later")
        self.assertFalse((self.data / "Import").exists())
        self.succeed("verify")

    def test_a_calendar_file_is_looked_at_before_its_events_are_imported(self):
        path = os.path.join(self.home.name, "fair.ics")
        with open(path, "w", encoding="utf-8") as calendar:
            calendar.write("BEGIN:VCALENDAR\r\nX-WR-CALNAME:Fairs\r\nBEGIN:VEVENT\r\nDTSTART:20261122T080000Z\r\n"
                           "DTEND:20261122T090000Z\r\nSUMMARY:Fair\\, open\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n")
        planner = self.start_answered("--calendar", "none")
        self.succeed("fair.ics")
        planner.wait("dialog", "导入日历")
        planner.wait_like("status bar", "Fairs", "1 个日程")
        self.assertEqual(self.records()["schedules"], [])
        planner.press("push button", "导入为自己的日程")
        planner.wait_like("status bar", "已从日历文件导入 1 个日程")
        self.assertEqual([item["title"] for item in self.records()["schedules"]], ["Fair, open"])
        planner.kill()

        planner = self.start("--calendar", "none", "webcal://127.0.0.1:9/a.ics")
        planner.wait("dialog", "导入日历")
        planner.wait_like("status bar", "无法读取", "服务器没有回应")
        self.assertEqual(planner.text_of("text", "https://…/timetable.ics"), "https://127.0.0.1:9/a.ics")

    def test_a_planner_in_the_background_carries_out_commands_and_opens_its_window_for_a_calendar(self):
        self.start_answered("--calendar", "none").kill()
        planner = self.start("--background")
        self.succeed("add", "Buy milk")
        with open(f"/proc/{planner.process.pid}/maps", encoding="utf-8") as maps:
            self.assertNotIn("Quick", maps.read())
        with open(os.path.join(self.home.name, "fair.ics"), "w", encoding="utf-8") as calendar:
            calendar.write("BEGIN:VCALENDAR\r\nX-WR-CALNAME:Fairs\r\nBEGIN:VEVENT\r\nDTSTART:20261122T080000Z\r\n"
                           "DTEND:20261122T090000Z\r\nSUMMARY:Fair\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n")
        self.succeed("fair.ics")
        planner.wait("dialog", "导入日历")
        planner.wait_like("status bar", "Fairs", "1 个日程")
        self.succeed("add", "Buy bread")
        self.assertEqual([item["title"] for item in self.records()["reminders"]], ["Buy milk", "Buy bread"])

    def test_times_in_words_are_understood(self):
        self.succeed("add", "Call Ann by tomorrow 3pm")
        self.succeed("add", "明天12:30-13:30 午饭")
        state = self.records()
        self.assertEqual([item["title"] for item in state["reminders"]], ["Call Ann"])
        self.assertIn("dueDate", state["reminders"][0])
        lunch = state["schedules"][0]
        self.assertEqual((lunch["title"], lunch["endDate"] - lunch["date"]), ("午饭", 3600))

    def test_without_a_window(self):
        self.flow(None)

    def test_beside_a_window(self):
        self.flow(self.start_answered())

    def test_documents_come_along(self):
        planner = self.start_answered()
        planner.press("list item", "文档")
        planner.type_into("新建 Markdown 文档", "Plan")
        planner.press("push button", "新建")
        planner.wait("text", "Markdown 源文本")
        planner.press("push button", "关闭")
        planner.wait_gone("text", "Markdown 源文本")
        [text] = (self.data / "Documents").glob("*.md")
        picture = self.data / "Documents" / "Assets" / f"{text.stem}-picture.png"
        picture.parent.mkdir()
        picture.write_bytes(b"picture")
        text.write_text(f"# Plan\n\n![](file://{picture}) ![](file:///elsewhere/Assets/other.png)\n")
        self.succeed("export", "all.zip")

        other = self.data.with_name("other")
        self.succeed("import", "all.zip", data=other)
        copy = other / "Documents" / "Assets" / picture.name
        self.assertEqual(copy.read_bytes(), b"picture")
        self.assertEqual((other / "Documents" / text.name).read_text(),
                         f"# Plan\n\n![](file://{copy}) ![](file:///elsewhere/Assets/other.png)\n")
        planner = self.start_answered(data=other)
        planner.press("list item", "文档")
        planner.wait("push button", "Plan")

    def test_damage_is_found_and_named(self):
        self.succeed("add", "Buy milk")
        self.succeed("export", "all.zip")
        self.succeed("import", "all.zip")
        self.succeed("verify")
        [generation] = (self.data / "Backups").glob("*.sqlite")
        sound = generation.read_bytes()
        generation.write_bytes(sound[:5000] + bytes([sound[5000] ^ 1]) + sound[5001:])
        status, output, errors = self.run_command("verify")
        self.assertEqual((status, output), (1, ""))
        self.assertIn("历史版本已损坏", errors)

    def test_reading_where_there_is_nothing_makes_nothing(self):
        nowhere = self.data.with_name("nowhere")
        for arguments in (("verify",), ("agenda",), ("export", "all.zip")):
            with self.subTest(arguments=arguments):
                status, output, errors = self.run_command(*arguments, data=nowhere)
                self.assertEqual((status, output), (1, ""))
                self.assertIn(str(nowhere), errors)
                self.assertFalse((nowhere / "planner.sqlite").exists())

    def test_a_missing_archive_is_not_called_damaged(self):
        status, _, errors = self.run_command("import", "nowhere.zip")
        self.assertEqual(status, 1)
        self.assertIn("nowhere.zip", errors)
        self.assertNotIn("损坏", errors)

    def test_wrong_arguments_are_refused(self):
        for arguments in (("export",), ("import", "a", "b"), ("agenda", "x"), ("frobnicate",), ("agenda", "--days", "0"),
                          ("verify", "--json"), ("add",), ("add", "  ")):
            with self.subTest(arguments=arguments):
                status, output, errors = self.run_command(*arguments)
                self.assertEqual((status, output), (2, ""))
                self.assertNotEqual(errors, "")


if __name__ == "__main__":
    main()
