"""A goal's life on the real window: added, given subgoals and tasks, renamed, ticked, deleted.

usage: dbus-run-session -- python3 goal_flow_test.py PROGRAM
"""
from planner_driver import CHECKED, PlannerTestCase, main


class GoalFlow(PlannerTestCase):
    def test_a_goal_is_planned_worked_on_and_deleted(self):
        self.in_both_languages(("目标", "Goals"), self.flow)

    def flow(self, planner, text):
        planner.wait("heading", text("目标", "Goals"))
        self.plan(planner, text)
        self.rename(planner, text)
        self.work(planner, text)
        self.delete(planner, text)

    def plan(self, planner, text):
        planner.type_into(text("主目标名称", "Main goal name"), "Sail around the island")
        planner.type_into(text("类别标签（可选）", "Category tag (optional)"), "Sea")
        planner.press("push button", text("新建主目标", "New main goal"))
        planner.wait("label", "Sail around the island")
        planner.type_into(text("添加子目标", "Add a subgoal"), "Repair the boat")
        planner.press("push button", text("添加子目标", "Add subgoal"))
        planner.wait("label", "0%")
        for task in ("Paint the hull", "Mend the sail"):
            planner.type_into(text("添加具体任务", "Add a task"), task)
            planner.press("push button", text("添加任务", "Add task"))
            planner.wait_state("check box", task, CHECKED, expected=False)

    def rename(self, planner, text):
        planner.press("push button", text("编辑, ", "Edit, ") + "Sail around the island")
        planner.type_into(text("总目标", "Main goal"), "Sail around the isle")
        planner.press("push button", text("完成, ", "Done, ") + "Sail around the isle")
        planner.wait("label", "Sail around the isle")

    def work(self, planner, text):
        planner.press("check box", "Mend the sail")
        planner.wait_state("check box", "Mend the sail", CHECKED)
        planner.wait("push button", "50%, Sail around the isle")
        planner.press("check box", "Sail around the isle")
        planner.press("push button", text("已完成", "Completed"))
        planner.press("push button", "Sea")
        planner.wait_state("check box", "Sail around the isle", CHECKED)
        planner.wait("label", "100%")

    def delete(self, planner, text):
        planner.press("push button", text("删除, ", "Delete, ") + "Sail around the isle")
        planner.wait_gone("check box", "Sail around the isle")


if __name__ == "__main__":
    main()
