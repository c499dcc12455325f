"""A to-do's life on the real window: added with and without a due date, ticked, found by month, opened again, deleted.

usage: dbus-run-session -- python3 todo_flow_test.py PROGRAM
"""
import re

from planner_driver import CHECKED, PlannerTestCase, main, press, wait_for


class TodoFlow(PlannerTestCase):
    def test_a_todo_is_added_ticked_reopened_and_deleted(self):
        self.in_both_languages(("待办", "To-dos"), self.flow)

    def flow(self, planner, text):
        planner.wait("heading", text("待办", "To-dos"))
        self.add_undated(planner, text)
        self.add_dated(planner, text)
        self.tick_and_reopen(planner, text)
        self.delete(planner, text)

    def add_undated(self, planner, text):
        planner.type_into(text("待办名称", "To-do name"), "Water the plants")
        planner.type_into(text("任务具体要求（可选）", "Task requirements (optional)"), "Not the cactus")
        planner.press("push button", text("添加待办", "Add to-do"))
        planner.wait_state("check box", "Water the plants", CHECKED, expected=False)
        planner.wait("label", "Not the cactus")

    def add_dated(self, planner, text):
        planner.type_into(text("待办名称", "To-do name"), "Post the letter")
        planner.press("check box", text("设置截止日期", "Set due date"))
        planner.wait_state("check box", text("设置截止日期", "Set due date"), CHECKED)
        planner.press("push button", text("添加待办", "Add to-do"))
        # Weeks begin closed.
        press(planner.wait_like("push button", " – "))
        planner.wait_state("check box", "Post the letter", CHECKED, expected=False)

    def tick_and_reopen(self, planner, text):
        planner.press("check box", "Water the plants")
        planner.wait_gone("check box", "Water the plants")
        planner.press("push button", text("已完成", "Completed"))
        # Whatever the system's locale calls the month, it names the year and is no span of days.
        press(wait_for("the month", lambda: planner.find_all(
            "push button", lambda name: re.search(r"\d{4}", name) and " – " not in name))[0])
        planner.wait_state("check box", "Water the plants", CHECKED)
        planner.press("check box", "Water the plants")
        planner.wait_state("check box", "Water the plants", CHECKED, expected=False)

    def delete(self, planner, text):
        for title in ("Water the plants", "Post the letter"):
            planner.press("push button", text("删除, ", "Delete, ") + title)
            planner.wait_gone("check box", title)


if __name__ == "__main__":
    main()
