"""A day is planned without a mouse: to-dos are sent to the week, placed by hand, and ticked there.

usage: dbus-run-session -- python3 plan_flow_test.py PROGRAM
"""
from planner_driver import CHECKED, FOCUSED, PlannerTestCase, has_state, main, wait_for


class PlanFlow(PlannerTestCase):
    def test_a_day_is_planned_by_keys(self):
        self.in_both_languages(("待办", "To-dos"), self.flow)

    def flow(self, planner, text):
        for title in ("Call the bank", "Sort the letters"):
            planner.type_into(text("待办名称", "To-do name"), title)
            planner.keys("key", "Return")
            planner.wait_state("check box", title, CHECKED, expected=False)
        planner.keys("key", "ctrl+2")
        planner.wait_like("heading", text("本周", "This week"))
        # A day that is to come is free from its first hour on.
        planner.keys("key", "alt+Right")
        planner.keys("key", "p")
        self.wait_focused(planner, "Call the bank")
        planner.keys("key", "Return")
        self.wait_focused(planner, "Call the bank", text("已排在", "planned "), " 00:00")
        planner.wait_like("push button", "Call the bank", "00:00 – 01:00")
        self.place_by_hand(planner, text)
        self.tick(planner, text)
        planner.keys("key", "ctrl+shift+p")
        planner.wait_gone("push button", "Sort the letters", text("已排在", "planned "))

    def wait_focused(self, planner, *parts):
        return wait_for(f"the focus on {parts}", lambda: has_state(planner.wait_like("push button", *parts), FOCUSED))

    def place_by_hand(self, planner, text):
        planner.keys("key", "Down")
        self.wait_focused(planner, "Sort the letters")
        planner.keys("key", "p")
        planner.wait_like("status bar", text("01:00 至 02:00", "01:00 to 02:00"))
        planner.keys("key", "Down", "Down")
        planner.wait_like("status bar", text("01:30 至 02:30", "01:30 to 02:30"))
        planner.keys("key", "Return")
        self.wait_focused(planner, "Sort the letters", text("已排在", "planned "), " 01:30")
        planner.wait_like("push button", "Sort the letters", "01:30 – 02:30")

    def tick(self, planner, text):
        block = planner.wait_like("push button", "Call the bank", "00:00 – 01:00")
        wait_for("the focus on the block", lambda: block.grab_focus() and has_state(block, FOCUSED))
        planner.keys("key", "Return")
        planner.wait("dialog", "Call the bank")
        planner.press("check box", "Call the bank")
        planner.wait_state("check box", "Call the bank", CHECKED)
        planner.keys("key", "Escape")
        planner.wait_gone("dialog")
        planner.wait_gone("push button", "Call the bank", text("已排在", "planned "))


if __name__ == "__main__":
    main()
