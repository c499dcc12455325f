"""The overview of the real window: what the other screens are given shows in its figures and lists.

usage: dbus-run-session -- python3 overview_flow_test.py PROGRAM
"""
from planner_driver import PlannerTestCase, main


class OverviewFlow(PlannerTestCase):
    def test_the_overview_follows_the_other_screens(self):
        self.in_both_languages(("概览", "Overview"), self.flow)

    def flow(self, planner, text):
        planner.wait("heading", text("概览", "Overview"))
        planner.wait("label", text("久待你的再度光临。", "Your return has been awaited with quiet joy."))
        planner.wait("label", text("还没有安排日程，给今天留一点空间吧。", "No schedules yet. Leave space for your day."))
        planner.wait("label", text("建立一个目标，让每一天都有方向。", "Create a goal to give each day direction."))
        for title in (text("待办事项", "Open to-dos"), text("今日剩余日程", "Remaining today"), text("进行中的目标", "Active goals")):
            self.wait_figure(planner, title, 0)

        planner.type_into(text("称呼", "Name"), "Ada")
        planner.wait("label", text("Ada，久待你的再度光临。", "Ada, your return has been awaited with quiet joy."))

        planner.press("list item", text("待办", "To-dos"))
        planner.type_into(text("待办名称", "To-do name"), "Water the plants")
        planner.press("push button", text("添加待办", "Add to-do"))
        planner.wait("check box", "Water the plants")
        planner.press("list item", text("目标", "Goals"))
        planner.type_into(text("主目标名称", "Main goal name"), "Sail around the island")
        planner.press("push button", text("新建主目标", "New main goal"))
        planner.wait("label", "Sail around the island")

        planner.press("list item", text("概览", "Overview"))
        self.wait_figure(planner, text("待办事项", "Open to-dos"), 1)
        self.wait_figure(planner, text("进行中的目标", "Active goals"), 1)
        planner.wait("progress bar", "Sail around the island")
        planner.press("push button", "Sail around the island, 0%")
        planner.wait("check box", "Sail around the island")

    def wait_figure(self, planner, title, value):
        planner.wait_like("push button", title, str(value))


if __name__ == "__main__":
    main()
