#!/usr/bin/env python3
"""The project's own gates, run by ./dev lint over the files that git knows.

A line that has to break a rule says so and why, on the line itself or in a comment above, which holds up to the next
empty line:
    // lint-allow(clock): the port's own adapter test compares with the real time
The names of the rules are the keys of RULES. Without a reason the mark does not count.
"""
import pathlib
import re
import subprocess
import sys

CJK = re.compile(r"[\u3400-\u9fff\u3000-\u303f\uff00-\uffef]")
LETTER = re.compile(r"[A-Za-z]")
DATE_PATTERN = re.compile(r"[yMdHhmsAaPpzt\s:,./年月日时分秒'-]*[yMdHhm][yMdHhmsAaPpzt\s:,./年月日时分秒'-]*")
LIMITS = {".h": 150, ".cpp": 450, ".qml": 250}
FUNCTION_LIMIT = 50
ALLOW = re.compile(r"lint-allow\((\w+)\):\s*\S.{7,}")


class Source:
    """One file: its text, the text with comments blanked out, and the place of its string literals."""

    def __init__(self, path, text):
        self.path, self.text = path, text
        self.suffix = pathlib.PurePosixPath(path).suffix
        self.code, self.literals = self._scan(text)
        self.bare = self._without_literals()

    @staticmethod
    def _scan(text):
        """Returns the text without comments (same length) and [(start, end, content)] of the string literals."""
        out, literals, i = list(text), [], 0
        while i < len(text):
            two = text[i:i + 2]
            if two == "//" or two == "/*":
                end = text.find("\n", i) if two == "//" else text.find("*/", i) + 2
                end = len(text) if end < i + 1 else end
                out[i:end] = [c if c == "\n" else " " for c in text[i:end]]
                i = end
            elif text[i] == "R" and (raw := re.match(r'R"([^(\s]*)\(', text[i:i + 20])):
                end = text.find(")" + raw[1] + '"', i)
                end = len(text) if end < 0 else end
                literals.append((i, end + len(raw[1]) + 2, text[i + raw.end():end]))
                i = literals[-1][1]
            elif text[i] in "\"'`":
                quote, start = text[i], i
                if quote == "'" and start and text[start - 1].isalnum():  # 1'000
                    i += 1
                    continue
                i += 1
                while i < len(text) and text[i] != quote and (text[i] != "\n" or quote == "`"):
                    i += 2 if text[i] == "\\" else 1
                i += 1
                literals.append((start, i, text[start + 1:i - 1]))
            else:
                i += 1
        return "".join(out), literals

    def _without_literals(self):
        out = list(self.code)
        for start, end, _ in self.literals:
            out[start + 1:end - 1] = ["\n" if c == "\n" else " " for c in out[start + 1:end - 1]]
        return "".join(out)

    def line(self, offset):
        return self.text.count("\n", 0, offset) + 1

    def is_allowed(self, rule, line):
        lines = self.text.split("\n")
        for number in range(line - 1, -1, -1):
            mark = ALLOW.search(lines[number])
            if mark and mark[1] == rule and (number == line - 1 or lines[number].lstrip().startswith("//")):
                return True
            if not lines[number].strip():
                return False
        return False

    def is_in(self, *folders):
        return self.path.startswith(folders)


def matches(source, pattern, text, message):
    for match in re.finditer(pattern, text):
        yield match.start(), message.format(match[0].strip())


def clock(source):
    """Time comes from the Clock port; only its adapters read the system's."""
    if source.suffix in (".cpp", ".h", ".qml", ".js") and not source.is_in("platform/", "bench/", "web/"):
        # A test may write down a fixed date; a view is given its dates.
        made_date = r"\bnew\s+Date\b(?!\(\d)" if source.is_in("tests/") else r"\bnew\s+Date\b"
        pattern = (r"\bcurrentDateTime(Utc)?\b|\bcurrent(M?Secs|MSecs)SinceEpoch\b|\bQ(Date::currentDate|Time::currentTime)\b"
                   r"|\bsystem_clock\b|" + made_date + r"|\bDate\.now\b|\bgettimeofday\b|\bCLOCK_REALTIME\b"
                   r"|\btime\s*\(\s*(nullptr|NULL|0)\s*\)")
        yield from matches(source, pattern, source.bare, "{0}: ask the Clock port")


def instant(source):
    """Wall-clock times become points in time in one place, which knows what clock changes do."""
    if source.suffix not in (".cpp", ".h", ".qml", ".js") or source.is_in("tests/", "bench/", "web/", "platform/"):
        return
    if source.path not in ("model/UserCalendar.cpp", "model/ZoneTransitions.cpp"):
        declared = r"(?!\s*(const\b|[\w:]+(\s+|\s*[&*]\s*)\w+\s*[,)=]))"
        yield from matches(source, r"\bto(M?Secs|MSecs)SinceEpoch\b|\b(mktime|timegm)\s*\(|\.getTime\s*\("
                           r"|\bQDateTime(\s+\w+)?\s*[({]" + declared + r"([^;{}()]|\([^()]*\))*?,",
                           source.bare, "{0}: ask UserCalendar::instant")


def colour(source):
    """Colours are design tokens: literals stand in ui/Theme*.qml alone."""
    if not source.is_in("ui/", "views/", "app/") or re.match(r"ui/Theme\w*\.qml$", source.path):
        return
    if source.suffix not in (".qml", ".cpp", ".h", ".js"):
        return
    for start, _, content in source.literals:
        if re.fullmatch(r"#([0-9A-Fa-f]{3,4}|[0-9A-Fa-f]{6}|[0-9A-Fa-f]{8})", content):
            yield start, f"{content}: use a token of Theme"
        if source.suffix == ".qml" and re.fullmatch(r"[a-z]+", content) and content != "transparent":
            before = source.code[:start].rsplit("\n", 1)[-1]
            if re.search(r"\b\w*[cC]olor\s*:[^\"]*$", before) and not re.search(r"[=!]==?\s*$", before):
                yield start, f"\"{content}\": use a token of Theme"
    yield from matches(source, r"\bQt\.(rgba|hsla|hsva)\(\s*[\d.]+\s*,|\bQColor(::fromRgb\w*)?\s*[({]\s*\d|\bqRgba?\(\s*\d"
                       r"|\bQColorConstants::(?!Transparent)\w+"
                       r"|\bQt::(black|white|red|green|blue|cyan|magenta|yellow|gray|(dark|light)\w*)\b",
                       source.bare, "{0}: use a token of Theme")


def is_partner(source, index, other):
    """Whether the literals index and other are the two members of one pair: nothing but wrapping stands between."""
    low, high = sorted((index, other))
    if low < 0 or high >= len(source.literals):
        return False
    between = source.bare[source.literals[low][1]:source.literals[high][0]]
    rest = re.sub(r"\.arg\([\w.,\s]+\)|\bQStringLiteral\b|\bQLatin1String\b|\bQStringView\b|_(s|L1|qs|sv)\b|\bu8?\b|[\s(){}]", "", between)
    return rest in (",", ":", "?") and not CJK.search(source.literals[other][2])


def is_after_english_branch(source, index):
    """if (isEnglish) return "…"; return "…"; in the same function."""
    start = source.literals[index][0]
    before = source.bare[max(0, start - 700):start]
    branch = max(before.rfind("isEnglish"), before.rfind("AppLanguage::English"))
    if branch <= before.rfind("\n}\n"):
        return False
    branch += start - len(before)
    return any(begin > branch and not CJK.search(content) for begin, _, content in source.literals[:index])


def call_before(source, offset):
    """The name of the call whose bracket encloses the offset directly, wrappers of literals aside."""
    depth = 0
    for i in range(offset - 1, max(-1, offset - 600), -1):
        char = source.bare[i]
        if char in ")]}":
            depth += 1
        elif char in "([{":
            if depth:
                depth -= 1
                continue
            name = re.search(r"([\w.]*)\s*$", source.bare[max(0, i - 60):i])[1] if char == "(" else ""
            if name in ("QStringLiteral", "QLatin1String", "QString") or (char == "(" and not name):
                continue
            return name
    return ""


def text(source):
    """Every visible text is a Chinese/English pair."""
    if source.suffix not in (".qml", ".cpp", ".h") or source.is_in("tests/", "bench/", "fuzz/"):
        return
    yield from matches(source, r"\b(qsTr|tr|QT_TR_NOOP|QT_TRANSLATE_NOOP|qsTrId)\s*\(", source.bare,
                       "{0}…): a visible text is a Chinese/English pair, text(\"中文\", \"English\")")
    for index, (start, _, content) in enumerate(source.literals):
        # A text for both languages at once, where the language is not known yet.
        is_both = re.search(r" / [A-Z]", content)
        if CJK.search(content) and not DATE_PATTERN.fullmatch(content) and not is_both:
            if re.search(r"(^|\.)text$", call_before(source, start)) and index:
                if is_partner(source, index, index - 1) and LETTER.search(source.literals[index - 1][2]):
                    yield start, f"\"{content}\" stands second: the Chinese member of a pair is the first"
                    continue
                if is_partner(source, index, index + 1) or CJK.search(source.literals[index - 1][2]):
                    continue
            elif is_partner(source, index, index + 1) or is_partner(source, index, index - 1):
                continue
            if re.search(r"(^|\.)text$", call_before(source, start)):
                continue
            if is_after_english_branch(source, index):
                continue
            yield start, f"\"{content}\": its English member is missing beside it"
    if source.suffix == ".qml":
        yield from bare_english(source)
    else:
        yield from matches(source, r"\b(setCalendarSyncMessage|setWindowTitle|showMessage|setToolTip)\(\s*(QStringLiteral\(\s*|QLatin1String\(\s*|u)?\"\s*[^\"]*\"",
                           source.bare, "{0}: a visible text is a Chinese/English pair")


VISIBLE = re.compile(r"(?m)^\s*(?:property string |(?:required )?)(?:\w+\.)?(text|title|placeholderText|label|subtitle|caption|"
                     r"hint|message|toolTip|tooltip|emptyText|name|description|acceptLabel|rejectLabel|informativeText)\s*:")


def bare_english(source):
    for match in VISIBLE.finditer(source.bare):
        prefix = match[0]
        if match[1] in ("name", "description") and "Accessible." not in prefix:
            continue
        end = binding_end(source.bare, match.end())
        for start, stop, content in source.literals:
            if not match.end() <= start < end or not LETTER.search(content):
                continue
            if re.search(r"(^|\.)(text|dateText|formatted|toLocaleString|arg)$", call_before(source, start)):
                continue
            around = source.bare[max(0, start - 4):start] + source.bare[stop:stop + 4]
            if re.search(r"[=!]=|\bcase\b|\[\s*$", around) or (CJK.search(content) and " / " in content):
                continue
            yield start, f"\"{content}\" in {match[1]}: a visible text is a Chinese/English pair"


def binding_end(code, start):
    depth = 0
    for i in range(start, len(code)):
        if code[i] in "([{":
            depth += 1
        elif code[i] in ")]}":
            depth -= 1
            if depth < 0:
                return i
        elif code[i] in "\n;" and depth == 0:
            following = code[i + 1:].lstrip()[:2]
            if code[i] == "\n" and (following[:1] in ("?", ":", "+", ".", "|", "&")
                                    or code[start:i].rstrip()[-1:] in ("?", ":", "+", "|", "&", ",", "=", "")):
                continue
            return i
    return len(code)


def arrows(source):
    """Includes point down only: model <- platform <- store <- views (+ ui) <- app."""
    if source.suffix not in (".cpp", ".h"):
        return
    top = source.path.split("/")[0]
    reach = {
        "model": ("model/",),
        "ui": ("ui/",),
        "store": ("store/", "model/", "platform/"),
        "views": ("views/", "store/", "model/", "platform/", "ui/"),
        "platform": ("platform/", "model/"),
    }.get(top)
    is_composition = re.match(r"app/(Composition|SystemParts|Demo)\w*\.(h|cpp)$", source.path)
    for match in re.finditer(r'(?m)^[ \t]*#\s*include\s+"([^"]+)"', source.code):
        target = match[1]
        is_adapter = re.match(r"platform/(common|linux|macos|quick|fake)/", target)
        if reach and "/" in target and not target.startswith(reach):
            yield match.start(), f"{target}: {top}/ does not reach up"
        elif is_adapter and (top in ("store", "views") or (top == "app" and not is_composition)
                             or re.match(r"platform/[^/]+$", source.path)):
            yield match.start(), f"{target}: only app/Composition and app/SystemParts name an adapter"
        elif top == "views" and (screen := re.match(r"views/(\w+)/", target)):
            if screen[1] not in ("shell", source.path.split("/")[1]):
                yield match.start(), f"{target}: a screen does not know another screen"


def files(source):
    """One function writes files: it knows how a full disk shows itself."""
    if source.suffix in (".cpp", ".h") and not source.is_in("tests/", "bench/", "platform/common/LocalFileSystem.cpp"):
        yield from matches(source, r"\bQSaveFile\b|\bQFile::(copy|WriteOnly|Append|ReadWrite)\b|\bofstream\b|\bfopen\b"
                           r"|\bQIODevice(Base)?::(WriteOnly|Append|ReadWrite)\b", source.bare, "{0}: use replaceFile()")


def sleep(source):
    """Tests wait for what they expect, never for a time."""
    if source.is_in("tests/") and source.suffix in (".cpp", ".h", ".qml"):
        yield from matches(source, r"\bQTest::q(Wait|Sleep)\s*\(\s*[\w.]+\s*\)|\bsleep_(for|until)\b|\bu?sleep\s*\("
                           r"|\bQThread::m?u?sleep\b|(?<![\w.])wait\(\s*\d+\s*\)",
                           source.bare, "{0}: wait for a condition (QTRY_*, QSignalSpy::wait)")


def reach(source):
    """A QML file knows its own ids and properties."""
    if source.suffix == ".qml" and not source.is_in("tests/"):
        yield from matches(source, r"\bparent\.parent\b|\bapplicationWindow\(\)", source.bare, "{0}: hand it in as a property")


def papers(source):
    """A reader has this repository and the public standards, nothing else."""
    if source.path.endswith("package-lock.json"):
        return
    yield from matches(source, r"\bPart \d+\.\d+|(?i:\bthe spec(ification)?\b(?! of))|\.\./shared\b|(?<![\w.:/$}])/(home|root|work)/\w",
                       source.text, "{0}: refers to something outside the repository")


RULES = {rule.__name__: rule for rule in (clock, instant, colour, text, arrows, files, sleep, reach, papers)}


def findings(path, content):
    """[(line, rule, message)] for one file, which need not exist."""
    source = Source(path, content)
    found = []
    for name, rule in RULES.items():
        for offset, message in rule(source):
            line = source.line(offset)
            if not source.is_allowed(name, line):
                found.append((line, name, message))
    return sorted(set(found))


def sizes(path, content):
    """[(line, message)]: files and functions that should be split; a warning, not a refusal."""
    suffix = pathlib.PurePosixPath(path).suffix
    lines = content.split("\n")
    if len(lines) > LIMITS.get(suffix, len(lines)):
        yield 1, f"{len(lines)} lines; look for a second room past {LIMITS[suffix]}"
    if suffix == ".cpp" and not path.startswith("tests/"):
        start = None
        for number, line in enumerate(lines, 1):
            if line == "{":
                start = number
            elif line == "}" and start:
                if number - start - 1 > FUNCTION_LIMIT:
                    yield start - 1, f"a function of {number - start - 1} lines; split past {FUNCTION_LIMIT}"
                start = None


def main():
    listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "-z"], capture_output=True, check=True)
    refused = 0
    for path in sorted(filter(None, listed.stdout.decode().split("\0"))):
        file = pathlib.Path(path)
        if path.startswith(("scripts/lint.py", "scripts/test_lint.py")) or not file.is_file():
            continue
        try:
            content = file.read_text(encoding="utf-8")
        except UnicodeDecodeError:
            continue
        for line, message in sizes(path, content):
            print(f"{path}:{line}: warning: {message}")
        for line, rule, message in findings(path, content):
            print(f"{path}:{line}: [{rule}] {message}")
            refused += 1
    print(f"lint.py: {refused} refused")
    return 1 if refused else 0


if __name__ == "__main__":
    sys.exit(main())
