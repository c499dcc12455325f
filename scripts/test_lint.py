#!/usr/bin/env python3
"""The gates of lint.py refuse what they should and let pass what they should."""
import unittest

from lint import findings, sizes

REFUSED = [
    ("clock", "store/A.cpp", "auto now = QDateTime::currentDateTimeUtc();"),
    ("clock", "store/A.cpp", "auto today = QDate::currentDate();"),
    ("clock", "tests/store/ATest.cpp", "std::chrono::system_clock::now();"),
    ("clock", "model/A.cpp", "auto seconds = time(nullptr);"),
    ("clock", "views/a/A.qml", "property date day: new Date()"),
    ("clock", "views/a/A.qml", "property date day: new Date(2026, 8, 11)"),
    ("clock", "tests/views/tst_A.qml", "property date day: new Date()"),
    ("clock", "views/a/A.qml", "onClicked: start = Date.now()"),
    ("instant", "views/a/A.cpp", "return dateTime.toMSecsSinceEpoch() / 1000.0;"),
    ("instant", "store/A.cpp", "const QDateTime due(day, QTime(9, 0), zone);"),
    ("instant", "ui/A.cpp", "return QDateTime{date, time};"),
    ("instant", "model/A.cpp", "const time_t seconds = mktime(&fields);"),
    ("instant", "views/a/A.qml", "onEdited: value => form.due = value.getTime()"),
    ("colour", "views/a/A.qml", 'color: "#FF0000"'),
    ("colour", "views/a/A.qml", 'border.color: isOn ? "red" : Theme.line'),
    ("colour", "ui/Button.qml", "color: Qt.rgba(0.2, 0, 0, 1)"),
    ("colour", "views/a/A.cpp", 'return QColor(12, 13, 14);'),
    ("colour", "views/a/A.cpp", "return QColor(Qt::darkGray);"),
    ("text", "views/a/A.qml", 'text: "Save"'),
    ("text", "views/a/A.qml", 'Accessible.name: isOpen ? Language.text("关", "Close") : "Open"'),
    ("text", "views/a/A.qml", 'title: qsTr("Save")'),
    ("text", "views/a/A.qml", 'placeholderText: "保存"'),
    ("text", "views/a/A.qml", 'readonly property string heading: "今天"'),
    ("text", "views/a/A.qml", 'text: Language.text("Save", "保存")'),
    ("text", "store/A.cpp", 'message = QStringLiteral("同步失败");'),
    ("text", "store/A.cpp", 'setCalendarSyncMessage(QStringLiteral("Sync failed"));'),
    ("text", "store/A.cpp", 'f(isEnglish, u"Week"_s);\n}\n\nauto g()\n{\n    return u"周"_s;\n'),
    ("arrows", "model/A.cpp", '#include "store/PlannerStore.h"'),
    ("arrows", "store/A.cpp", '#include "platform/common/SystemClock.h"'),
    ("arrows", "app/main.cpp", '#include "platform/linux/LoginItem.h"'),
    ("arrows", "ui/A.h", '#include "model/Goal.h"'),
    ("arrows", "views/todos/A.cpp", '#include "views/goals/GoalList.h"'),
    ("arrows", "platform/Clock.h", '#include "platform/common/SystemClock.h"'),
    ("files", "platform/linux/A.cpp", "QSaveFile file(path);"),
    ("files", "store/A.cpp", "file.open(QIODevice::WriteOnly | QIODevice::Text);"),
    ("sleep", "tests/store/ATest.cpp", "QTest::qWait(100);"),
    ("sleep", "tests/system/ATest.cpp", "std::this_thread::sleep_for(100ms);"),
    ("reach", "views/a/A.qml", "width: parent.parent.width"),
    ("papers", "model/A.h", "/// As " + "Part " + "1.1 demands."),
    ("papers", "docs/A.md", "See ../" + "shared/notes.md"),
]

ACCEPTED = [
    ("platform/common/SystemClock.cpp", "std::chrono::system_clock::now();"),
    ("tests/views/tst_A.qml", "property date day: new Date(2026, 8, 11)"),
    ("model/UserCalendar.cpp", "return start.toMSecsSinceEpoch();"),
    ("views/a/A.cpp", "void setStart(const QDateTime &start, int row);\nauto a = QDateTime(), b = f(c, d);"),
    ("ui/A.h", "QDateTime momentOf(QDate date, QTime time);\nQDateTime momentRead(const Match &match, const QDateTime &now);"),
    ("store/A.cpp", "// currentDateTime() would be wrong here\nauto now = m_ports.clock.now();"),
    ("store/A.cpp", "// lint-allow(clock): the file name needs the machine's time\nQDateTime::currentDateTime();"),
    ("app/A.cpp", "// lint-allow(colour): sample records\nauto a = u\"#FF0000\";\nauto b = u\"#00FF00\";\n"),
    ("ui/Theme.qml", 'readonly property color bg: "#FFFFFF"'),
    ("ui/ThemeDark.qml", 'readonly property color bg: "#000000"'),
    ("views/a/A.qml", 'color: "transparent"'),
    ("views/a/A.qml", "color: Qt.rgba(base.r, base.g, base.b, 0.5)"),
    ("views/a/A.qml", 'color: state === "open" ? Theme.accent : Theme.bg'),
    ("model/A.cpp", 'schedule.customColorHex = QStringLiteral("#FF0000");'),
    ("views/a/A.qml", 'text: Language.text("保存", "Save")'),
    ("views/a/A.qml", 'text: Language.text("共 %1 项",\n                "%1 items").arg(count)'),
    ("app/A.qml", 'text: "关闭 / Close"'),
    ("store/A.cpp", 'return {QStringLiteral("共 %1 项").arg(name.chinese, count), QStringLiteral("%1 items").arg(count)};'),
    ("store/A.cpp", 'if (isEnglish)\n    return f(u", ");\nreturn f(u"年", u"月", u"日");'),
    ("views/a/A.qml", 'text: name + " · " + size'),
    ("views/a/A.qml", 'text: mode === "edit" ? draft : saved'),
    ("views/a/A.qml", 'objectName: "saveButton"'),
    ("views/a/A.qml", 'readonly property string heading: PlannerStore.isEnglish ? "Today" : "今天"'),
    ("store/A.cpp", 'return text(QStringLiteral("同步失败"), QStringLiteral("Sync failed"));'),
    ("store/A.cpp", 'static const Pair words{u"周"_s, u"Week"_s};'),
    ("store/A.cpp", 'return {QStringLiteral("共 %1 项").arg(name.chinese, count), QStringLiteral("%1 items").arg(count)};'),
    ("store/A.cpp", 'if (isEnglish)\n    return u"Week"_s;\nreturn u"周"_s;\n'),
    ("store/A.cpp", 'return locale.toString(local, u"yyyy年M月d日 HH:mm");'),
    ("tests/store/ATest.cpp", 'QCOMPARE(store.text(), QStringLiteral("同步失败"));'),
    ("app/Composition.cpp", '#include "platform/linux/LoginItem.h"'),
    ("views/todos/A.cpp", '#include "views/shell/Page.h"'),
    ("store/A.cpp", "file.open(QIODevice::ReadOnly);"),
    ("tests/store/ATest.cpp", "QVERIFY(spy.wait());"),
    ("model/A.h", "/// Reads the subset of RFC 5545, 3.3.5."),
]


class GatesTest(unittest.TestCase):
    def test_each_bad_sample_is_refused_by_its_rule(self):
        for rule, path, text in REFUSED:
            with self.subTest(rule=rule, text=text):
                self.assertEqual({name for _, name, _ in findings(path, text)}, {rule})

    def test_good_samples_pass(self):
        for path, text in ACCEPTED:
            with self.subTest(text=text):
                self.assertEqual(findings(path, text), [])

    def test_a_mark_without_a_reason_or_for_another_rule_does_not_count(self):
        for mark in ("lint-allow(clock):", "lint-allow(colour): a reason that is long enough"):
            self.assertEqual(len(findings("store/A.cpp", f"// {mark}\nQDateTime::currentDateTime();")), 1)

    def test_a_mark_ends_with_its_paragraph(self):
        text = "// lint-allow(clock): a reason that is long enough\nf();\n\nQDateTime::currentDateTime();"
        self.assertEqual(len(findings("store/A.cpp", text)), 1)

    def test_the_line_of_a_finding_is_the_line_of_the_fault(self):
        text = '/* two\n   lines */ const char *words = "// no comment";\nauto day = QDate::currentDate();\n'
        self.assertEqual([line for line, _, _ in findings("store/A.cpp", text)], [3])

    def test_long_files_and_functions_are_named(self):
        body = "void f()\n{\n" + "    g();\n" * 51 + "}\n"
        self.assertEqual([line for line, _ in sizes("store/A.cpp", body)], [2 - 1])
        self.assertEqual(len(list(sizes("views/a/A.qml", "\n" * 300))), 1)
        self.assertEqual(list(sizes("store/A.cpp", body.replace("    g();\n", "", 1))), [])


if __name__ == "__main__":
    unittest.main()
