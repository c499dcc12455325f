import QtQuick
import Tessaly.Schedule
import Tessaly.Store
import Tessaly.Test
import Tessaly.Ui

Item {
    id: root

    width: 948
    height: 1300

    ScheduleCase {
        page: root
        name: "ScheduleTurns"

        /// What is to be seen of an item and in it: places, texts, colours, names.
        function seen(item: Item): var {
            if (!item.visible || item.opacity === 0)
                return [];
            let lines = [[item.x, item.y, item.width, item.height, item.text ?? "", item.color ?? "", item.border?.width ?? 0, item.Accessible.name].join(" ")];
            for (let i = 0; i < item.children.length; ++i)
                lines = lines.concat(seen(item.children[i]).map(line => "  " + line));
            return lines;
        }

        function cards(item: Item): var {
            if (item instanceof WeekTimeline || item instanceof CalendarGrid || item instanceof DayList)
                return seen(item);
            let lines = [];
            for (let i = 0; i < item.children.length; ++i)
                lines = lines.concat(cards(item.children[i]));
            return lines;
        }

        function shownNow(): var {
            mouseMove(root, 2, 2);
            waitForRendering(screen);
            return cards(screen);
        }

        function test_turned_pages_look_like_fresh_ones_data() {
            return [
                {tag: "to a full week and back", steps: ["Previous", "Today"]},
                {tag: "to an emptier week and back", steps: ["Next", "Today"]},
                {tag: "far away and back", steps: ["Next", "Next", "Previous", "Previous", "Previous", "Today"]},
                {tag: "to another day and back", steps: ["Monday, September 7, 2026", "Today"]},
                {tag: "to the month and back", steps: ["Month", "Next", "Week", "Today"]},
                {tag: "the month, turned", steps: ["Month", "Next", "Previous", "Today"], scope: "Month"},
                {tag: "the month after turned weeks", steps: ["Next", "Month", "Today", "Week", "Previous", "Month", "Today"], scope: "Month"},
                {tag: "a schedule deleted meanwhile", steps: ["Next", "Delete, after 1", "Today", "Delete, now 3"]},
                {tag: "a schedule chosen meanwhile", steps: ["Wednesday, September 9, 2026, now 3", "Close", "Next", "Previous", "Today"], chosen: "Wednesday, September 9, 2026, now 3"}
            ];
        }

        function test_turned_pages_look_like_fresh_ones(data) {
            for (let i = 0; i < 14; ++i)
                TestPlanner.addSchedule("before " + i, 2, (8 + i % 6) + ":00", (10 + i % 8) + ":30", i % 3 ? "" : "Tag");
            for (let i = 0; i < 7; ++i)
                TestPlanner.addSchedule("now " + i, i % 2 ? 9 : 10, (8 + i) + ":00", (11 + i) + ":15", i % 2 ? "" : "Tag");
            for (let i = 0; i < 3; ++i)
                TestPlanner.addSchedule("after " + i, 16, (8 + i) + ":00", (9 + i) + ":00", "");
            waitForRendering(screen);

            for (const step of data.steps) {
                press(step);
                if (step === "Close")
                    tryVerify(() => named("Close") === null);
            }
            const turned = shownNow();

            open();
            if (data.scope !== undefined)
                press(data.scope);
            if (data.chosen !== undefined) {
                press(data.chosen);
                press("Close");
                tryVerify(() => named("Close") === null);
                press("Today");
            }
            const fresh = shownNow();
            verify(fresh.length > 100);
            for (let i = 0; i < Math.max(turned.length, fresh.length); ++i)
                compare(turned[i], fresh[i]);
        }

        function tints(item: Item): int {
            let count = item instanceof Flash && item.opacity > 0 || item instanceof EventBlock && item.flash > 0 ? 1 : 0;
            for (let i = 0; i < item.children.length; ++i)
                count += tints(item.children[i]);
            return count;
        }

        function test_what_undo_brings_back_is_tinted_until_the_page_turns() {
            TestPlanner.addSchedule("here", 9, "9:00", "10:00", "");
            TestPlanner.addSchedule("there", 16, "9:00", "10:00", "");
            press("Delete, here");
            verify(named("Wednesday, September 9, 2026, here") === null);
            PlannerStore.undo();
            compare(tints(screen), 2);
            press("Next");
            tryVerify(() => tints(screen) === 0, 200);
            verify(shown("Wednesday, September 16, 2026, there") !== null);
        }

        function test_the_tab_key_goes_through_a_long_day() {
            for (let i = 0; i < 60; ++i)
                TestPlanner.addSchedule("s" + i, 9, (8 + Math.floor(i / 6)) + ":" + i % 6 + "0", "20:00", "");
            root.height = 620;
            waitForRendering(screen);
            let first = shown("Edit, s0");
            first.forceActiveFocus(Qt.TabFocusReason);
            for (let i = 0; i < 60; ++i) {
                const title = "s" + i;
                tryVerify(() => shown("Edit, " + title).activeFocus, 1000, title);
                keyClick(Qt.Key_Tab);
                verify(shown("Delete, " + title).activeFocus, title);
                keyClick(Qt.Key_Tab);
            }
            verify(shown("Schedule name").activeFocus);
            keyClick(Qt.Key_Tab, Qt.ShiftModifier);
            verify(shown("Delete, s59").activeFocus);
        }
    }
}
