"""A document's life on the real window, with the real web engine: filed, written, previewed, copied, found again after
a kill, deleted.

usage: dbus-run-session -- python3 document_flow_test.py PROGRAM
"""
import subprocess

from planner_driver import PlannerTestCase, main, press, text_in, wait_for


class DocumentFlow(PlannerTestCase):
    def test_a_document_is_filed_written_copied_and_deleted(self):
        self.in_both_languages(("文档", "Documents"), self.flow)

    def test_a_document_survives_a_kill(self):
        planner = self.start_answered()
        planner.press("list item", "文档")
        planner.type_into("新建 Markdown 文档", "Diary")
        planner.press("push button", "新建")
        self.write(planner, "Markdown 源文本", "kept")
        planner.keys("key", "ctrl+s")
        wait_for("the text on the disk", lambda: self.texts(self.data) == ["# Diary\nkept"])
        planner.keys("type", " and typed")
        draft = self.data / "Drafts"
        wait_for("the draft", lambda: any("and typed" in path.read_text() for path in draft.glob("*.json")))
        planner.kill()
        assert self.texts(self.data) == ["# Diary\nkept"], self.texts(self.data)

        planner = self.start()
        planner.press("list item", "文档")
        planner.press("push button", "Diary")
        planner.wait_text("Markdown 源文本", "# Diary\u2029kept and typed")
        planner.press("push button", "关闭")
        wait_for("the text on the disk", lambda: self.texts(self.data) == ["# Diary\nkept and typed"])
        assert not list(draft.glob("*.json"))

    def test_pictures_show_when_a_document_is_opened_again(self):
        planner = self.start_answered()
        planner.press("list item", "文档")
        planner.type_into("新建 Markdown 文档", "Plan")
        planner.press("push button", "新建")
        planner.wait("text", "Markdown 源文本")
        planner.press("push button", "关闭")
        planner.wait_gone("text", "Markdown 源文本")
        folder = self.data / "Documents"
        subprocess.run(["convert", "-size", "200x100", "xc:#ff0000", str(folder / "red.png")], check=True)
        next(folder.glob("*.md")).write_text("![red](red.png)\n")

        planner.press("push button", "编辑, Plan")

        def is_red_shown():
            window = subprocess.run(["import", "-window", planner.window(), "-depth", "8", "rgb:-"],
                                    capture_output=True, check=True).stdout
            return window.count(b"\xff\0\0" * 200) >= 100
        wait_for("the picture", is_red_shown)

    def test_the_engine_writes_nothing_on_the_terminal(self):
        for backend in ("software", ""):
            with self.subTest(backend=backend or "OpenGL"):
                environment = {"QT_QUICK_BACKEND": backend}
                if not backend:
                    # Mesa's compiler registers its frames under a lock that a sanitizer's deep stacks wait for, for
                    # ever; the other pass looks for leaks.
                    environment["ASAN_OPTIONS"] = "new_delete_type_mismatch=0:detect_leaks=0"
                planner = self.start_answered(data=self.data.with_name(f"quiet-{backend}"), environment=environment)
                planner.press("list item", "文档")
                planner.type_into("新建 Markdown 文档", "Quiet")
                planner.press("push button", "新建")
                wait_for("the engine", lambda: planner.has_loaded("libQt6WebEngineCore"))
                # The copy is a page of its own, and done when the engine is well under way.
                self.copy(planner, lambda chinese, english: chinese, "<h1")
                planner.process.terminate()
                self.assertEqual(planner.end()[1], "")

    def flow(self, planner, text):
        data = self.data.with_name("data-" + text("0", "1"))
        self.file(planner, text)
        source = text("Markdown 源文本", "Markdown source")
        self.write(planner, source, "A **word**")
        self.copy(planner, text, "<strong", "word</strong>")
        planner.press("push button", text("关闭", "Close"))
        planner.wait_gone("text", source)
        assert self.texts(data) == ["# Plan\nA **word**"], self.texts(data)
        self.delete(planner, text)
        assert self.texts(data) == [], self.texts(data)
        # No desktop is there to ask, so that the dialog is Qt's.
        planner.press("push button", text("导入 Markdown", "Import Markdown"))
        planner.wait("push button", text("打开", "Open"))
        planner.press("push button", text("取消", "Cancel"))

    @staticmethod
    def texts(data):
        return [path.read_text() for path in (data / "Documents").glob("*.md")]

    @staticmethod
    def write(planner, source, words):
        planner.focus("text", source)
        planner.keys("key", "ctrl+End")
        planner.keys("type", "--delay", "5", words)
        wait_for(words, lambda: text_in(planner.find("text", source)).endswith(words))

    def file(self, planner, text):
        planner.wait("heading", text("文档", "Documents"))
        planner.type_into(text("新建分类", "New category"), "Work")
        planner.press("push button", text("添加", "Add"))
        planner.press("push button", text("编辑, ", "Edit, ") + "Work")
        planner.type_into(text("分类名称", "Category name"), "Office")
        planner.press("push button", text("完成, ", "Done, ") + "Office")
        planner.type_into(text("新建 Markdown 文档", "New Markdown document"), "Plan")
        planner.choose(text("分类", "Category"), "Office")
        assert not planner.has_loaded("libQt6WebEngineCore"), "the engine is there before a document is open"
        planner.press("push button", text("新建", "New"))

    def copy(self, planner, text, *expected):
        def copied():
            html = subprocess.run(["xclip", "-selection", "clipboard", "-o", "-t", "text/html"],
                                  capture_output=True, text=True, timeout=20).stdout
            return all(part in html for part in expected)
        planner.press("push button", text("复制到公众号", "Copy for WeChat"))
        wait_for(f"{expected} on the clipboard", copied)
        assert planner.has_loaded("libQt6WebEngineCore")

    def delete(self, planner, text):
        group = planner.reach("push button", "Office")
        press(group)
        planner.wait("push button", "Plan")
        planner.press("push button", text("删除, ", "Delete, ") + "Office")
        planner.wait_gone("push button", "Office")
        planner.press("push button", text("删除, ", "Delete, ") + "Plan")
        planner.wait_gone("push button", "Plan")
        planner.wait("label", text("暂无文档", "No documents"))


if __name__ == "__main__":
    main()
