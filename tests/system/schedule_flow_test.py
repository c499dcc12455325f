"""A schedule's life on the real window: added, found in list, week and month, noted, ticked, deleted; its note after a
kill.

usage: dbus-run-session -- python3 schedule_flow_test.py PROGRAM
"""
from planner_driver import (CHECKED, FOCUSED, SELECTED, Atspi, PlannerTestCase, has_state, main, press, text_in,
                            wait_for)


class ScheduleFlow(PlannerTestCase):
    def test_a_schedule_is_added_noted_ticked_and_deleted(self):
        self.in_both_languages(("日程", "Schedule"), self.flow)

    def test_a_note_that_is_not_saved_survives_a_kill(self):
        planner = self.start_answered()
        planner.press("list item", "日程")
        planner.type_into("日程名称", "Seminar")
        planner.press("push button", "添加日程")
        planner.press("push button", "编辑, Seminar")
        planner.wait("dialog", "编辑日程")
        planner.wait_state("text", "日程名称", FOCUSED)
        planner.type_into("备注", "typed and not saved")
        log = self.data / "planner.sqlite-wal"
        wait_for("the draft on the disk", lambda: b"typed and not saved" in log.read_bytes())
        planner.kill()

        planner = self.start()
        planner.press("list item", "日程")
        planner.press("push button", "编辑, Seminar")
        planner.wait_text("备注", "typed and not saved")

    def flow(self, planner, text):
        planner.wait_like("heading", text("本周", "This week"))
        planner.wait("label", text("当天还没有日程。", "No schedules for this day."))
        self.look_for_calendars(planner, text)
        self.add(planner, text)
        self.write_note_and_task(planner, text)
        self.tick_task(planner, text)
        self.find_in_month(planner, text)
        self.delete(planner, text)

    def look_for_calendars(self, planner, text):
        """This desktop has no calendar service, and the sheet says so instead of waiting for it."""
        planner.press("push button", text("导入设置", "Import settings"))
        planner.wait("dialog", text("导入日历", "Import calendars"))
        planner.wait("label", text("启动 Tessaly 时关闭了日历功能。", "Calendars were turned off when Tessaly was started."))
        planner.press("push button", text("完成", "Done"))
        planner.wait_gone("dialog")

    def add(self, planner, text):
        planner.type_into(text("日程名称", "Schedule name"), "Lecture on trees")
        planner.type_into(text("标签（可选）", "Tag (optional)"), "Forest")
        self.choose_minute(planner, text("开始", "Start"))
        planner.press("push button", text("添加日程", "Add schedule"))
        planner.wait("push button", text("编辑, Lecture on trees", "Edit, Lecture on trees"))
        planner.wait("label", "Lecture on trees")
        planner.wait_gone("label", text("当天还没有日程。", "No schedules for this day."))
        block = planner.wait_like("push button", "Lecture on trees", ":30 – ", "Forest")
        self.assertIn(text("星期", "day, "), block.get_name())

    def choose_minute(self, planner, name):
        """A screen reader is told the date-time as an editable text, the chosen part as its selection."""
        field = planner.focus("text", name)
        states = [has_state(field, state) for state in (Atspi.StateType.EDITABLE, Atspi.StateType.READ_ONLY)]
        self.assertEqual(states, [True, False])
        planner.keys("key", "End")
        planner.keys("type", "30")
        wait_for("half past", lambda: text_in(field).endswith(":30"))
        chosen = Atspi.Text.get_selection(field, 0)
        self.assertEqual(text_in(field)[chosen.start_offset:chosen.end_offset], "30")

    def write_note_and_task(self, planner, text):
        planner.press("push button", text("编辑, Lecture on trees", "Edit, Lecture on trees"))
        planner.wait("dialog", text("编辑日程", "Edit schedule"))
        planner.wait_state("text", text("日程名称", "Name"), FOCUSED)
        planner.type_into(text("备注", "Notes"), "Bring the map")
        planner.type_into(text("添加任务", "Add task"), "Print the map")
        planner.press("push button", text("添加", "Add"))
        planner.wait_text(text("任务 1", "Task 1"), "Print the map")
        planner.press("push button", text("保存", "Save"))
        planner.wait_gone("dialog")

    def open_block(self, planner):
        press(planner.wait_like("push button", "Lecture on trees", " – "))
        planner.wait("dialog", "Lecture on trees")

    def tick_task(self, planner, text):
        self.open_block(planner)
        planner.wait_like("label", text("备注: Bring the map", "Notes: Bring the map"))
        planner.wait_state("check box", "Print the map", CHECKED, expected=False)
        planner.press("check box", "Print the map")
        planner.wait_gone("dialog")

        self.open_block(planner)
        planner.wait_state("check box", "Print the map", CHECKED)
        planner.press("push button", text("关闭", "Close"))
        planner.wait_gone("dialog")

    def find_in_month(self, planner, text):
        planner.press("page tab", text("月", "Month"))
        planner.wait_state("page tab", text("月", "Month"), SELECTED)
        planner.wait_like("push button", text("1 个日程", "1 schedule"))
        planner.wait_like("label", "Lecture on trees", " – ", "Forest")
        planner.press("page tab", text("周", "Week"))

    def delete(self, planner, text):
        planner.wait_like("push button", "Lecture on trees", " – ")
        planner.press("push button", text("删除, Lecture on trees", "Delete, Lecture on trees"))
        planner.wait_gone("push button", "Lecture on trees")
        planner.wait("label", text("当天还没有日程。", "No schedules for this day."))


if __name__ == "__main__":
    main()
