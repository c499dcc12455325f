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
        self.succeed("export", "all.zip")

        other = self.data.with_name("other")
        self.succeed("import", "all.zip", data=other)
        self.assertEqual((other / "Documents" / text.name).read_text(), "# Plan\n")
        self.assertEqual((other / "Documents" / "Assets" / picture.name).read_bytes(), b"picture")
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

    def test_wrong_arguments_are_refused(self):
        for arguments in (("export",), ("import", "a", "b"), ("agenda", "x"), ("frobnicate",), ("agenda", "--days", "0"),
                          ("verify", "--json"), ("add",), ("add", "  ")):
            with self.subTest(arguments=arguments):
                status, output, errors = self.run_command(*arguments)
                self.assertEqual((status, output), (2, ""))
                self.assertNotEqual(errors, "")


if __name__ == "__main__":
    main()
