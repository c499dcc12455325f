#include "model/RecordCodec.h"
#include "tests/support/TestMain.h"

using namespace tessaly;

namespace {

const QByteArray upperID = "0F8FAD5B-D9CB-469F-A165-70867728950E";
const QByteArray lowerID = upperID.toLower();

/// JSON with ' for ", which moc reads better than raw strings.
QByteArray json(const char *text)
{
    return QByteArray(text).replace('\'', '"');
}

QByteArray envelope(const QByteArray &schedules, const QByteArray &reminders = {}, const QByteArray &goals = {})
{
    return json("{'schedules':[") + schedules + json("],'reminders':[") + reminders + json("],'goals':[") + goals +
           "]}";
}

QByteArray schedule(const QByteArray &moreMembers)
{
    return json("{'title':'t','date':1") + moreMembers + "}";
}

/// "key":value with a comma before it.
QByteArray member(const QByteArray &key, const QByteArray &value)
{
    return ",\"" + key + "\":" + value;
}

/// Values of JSON with what they are; a key takes those of its own kind only.
QList<QPair<QByteArray, QByteArray>> valuesOfEveryKind()
{
    return {{"text", json("'x'")},
            {"text", json("'\\u0031'")},
            {"flag", "true"},
            {"flag", "false"},
            {"number", "0"},
            {"number", "1"},
            {"number", "-2.5e3"},
            {"list", "[]"},
            {"object", "{}"},
            {"list of null", "[null]"},
            {"list of text", json("['x']")},
            {"list of lists", "[[]]"},
            {"list of blanks", "[{}]"},
            {"id", '"' + upperID + '"'},
            {"id", '"' + lowerID + '"'},
            {"not an id", "\"{" + upperID + "}\""},
            {"not an id", '"' + upperID.chopped(1) + '"'},
            {"not an id", '"' + upperID.chopped(1) + "g\""},
            {"not an id", '"' + QByteArray(upperID).replace('-', '0') + '"'}};
}

} // namespace

class RecordDecodingTest : public QObject
{
    Q_OBJECT

private slots:
    void aScheduleOfTitleAndDateGetsDefaults()
    {
        const auto data = decodeSavedData(envelope(json("{'title':'Lunch','date':790000000.25}")));

        QVERIFY(data);
        const ScheduleItem &item = data->schedules.constFirst();
        QVERIFY(!item.id.isNull());
        QCOMPARE(item, (ScheduleItem{.id = item.id, .title = QStringLiteral("Lunch"), .date = {790000000.25}}));
        QVERIFY(decodeSavedData(envelope(schedule({})))->schedules.constFirst().id != item.id);
    }

    void goalsAndToDosGetTheirDefaults()
    {
        const auto data = decodeSavedData(
            envelope({}, json("{'title':'r'}"),
                     json("{'title':'g'},{'title':'g','subgoals':[{'title':'s','tasks':[{'title':'t'}]}]}")));

        QVERIFY(data);
        const ReminderItem &reminder = data->reminders.constFirst();
        QCOMPARE(reminder, (ReminderItem{.id = reminder.id, .title = QStringLiteral("r")}));
        const Goal &goal = data->goals.constFirst();
        QCOMPARE(goal, (Goal{.id = goal.id, .title = QStringLiteral("g")}));
        const Subgoal &subgoal = data->goals.at(1).subgoals->constFirst();
        const GoalTask &task = subgoal.tasks->constFirst();
        QCOMPARE(task, (GoalTask{.id = task.id, .title = QStringLiteral("t")}));
        QVERIFY(!reminder.id.isNull() && !goal.id.isNull() && !subgoal.id.isNull() && !task.id.isNull());
    }

    void aSingleLinkedTaskBecomesTheTaskList_data()
    {
        QTest::addColumn<QByteArray>("members");
        QTest::addColumn<int>("tasks");
        QTest::addColumn<bool>("isComplete");

        QTest::newRow("complete") << json(",'isTaskComplete':true,'taskTitle':'old'") << 1 << true;
        QTest::newRow("open") << json(",'taskTitle':'old'") << 1 << false;
        QTest::newRow("tasks null") << json(",'taskTitle':'old','tasks':null") << 1 << false;
        QTest::newRow("tasks empty") << json(",'taskTitle':'old','tasks':[]") << 0 << false;
        QTest::newRow("no title") << json(",'isTaskComplete':true") << 0 << true;
        QTest::newRow("title null") << json(",'isTaskComplete':true,'taskTitle':null") << 0 << true;
    }

    void aSingleLinkedTaskBecomesTheTaskList()
    {
        QFETCH(const QByteArray, members);
        QFETCH(const int, tasks);
        QFETCH(const bool, isComplete);

        const auto data = decodeSavedData(envelope(schedule(members)));

        QVERIFY(data);
        const ScheduleItem &item = data->schedules.constFirst();
        QCOMPARE(item.isTaskComplete, isComplete);
        QCOMPARE(item.tasks->size(), tasks);
        if (tasks == 1) {
            QCOMPARE(item.taskTitle, QStringLiteral("old"));
            QCOMPARE(item.tasks->constFirst().title, QStringLiteral("old"));
            QCOMPARE(item.tasks->constFirst().isComplete, isComplete);
            QVERIFY(!item.tasks->constFirst().id.isNull());
        }
    }

    void everyKeyChecksItsType_data();
    void everyKeyChecksItsType();

    void requiredKeysMustBeThere_data();
    void requiredKeysMustBeThere();

    void onlyWellFormedTextDecodes_data();
    void onlyWellFormedTextDecodes();

    void everyTruncationFails()
    {
        const QByteArray whole = envelope(schedule(json(",'notes':'aé\\n','tasks':[],'tag':null")));
        QVERIFY(decodeSavedData(whole));
        for (qsizetype length = 0; length < whole.size(); ++length)
            QVERIFY2(!decodeSavedData(whole.first(length)), whole.first(length).constData());
    }

    void identifiersAreReadInEitherCaseAndWrittenUpperCase()
    {
        const auto feeds = decodeCalendarFeeds(json("[{'id':'") + lowerID + json("','name':'','urlString':''}]"));
        QVERIFY(feeds);
        QCOMPARE(encodeCalendarFeeds(*feeds), json("[{'id':'") + upperID + json("','name':'','urlString':''}]"));
    }

    void stringsAreReadExactly_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<QString>("text");

        QTest::newRow("short escapes") << json("'\\'\\\\\\/\\b\\f\\n\\r\\t'") << QStringLiteral("\"\\/\b\f\n\r\t");
        QTest::newRow("code units") << json("'\\u0041\\u00e9\\u4f1A\\u0000z'")
                                    << QStringLiteral("A\u00e9\u4f1a") + QChar(u'\0') + QLatin1Char('z');
        QTest::newRow("a surrogate pair") << json("'\\ud83d\\udeb2'") << QStringLiteral("🚲");
        QTest::newRow("UTF-8 of each length") << QByteArray("\"a\xC3\xA9\xE4\xBC\x9A\xF0\x9F\x9A\xB2\xF4\x8F\xBF\xBF\"")
                                              << QStringLiteral("aé会🚲\U0010FFFF");
        QTest::newRow("escapes over a long text")
            << "\"" + json("ab\\n").repeated(5000) + "\"" << QStringLiteral("ab\n").repeated(5000);
    }

    void stringsAreReadExactly()
    {
        QFETCH(const QByteArray, value);

        const auto data = decodeSavedData(envelope(schedule(member("notes", value))));
        QVERIFY(data);
        QTEST(data->schedules.constFirst().notes, "text");
    }
};

void RecordDecodingTest::everyKeyChecksItsType_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<int>("place"); // 0 … 4: schedule, to-do, goal, subgoal, goal task
    QTest::addColumn<QByteArray>("kind");

    const auto add = [](int place, const char *kind, const QList<QByteArray> &keys) {
        for (const QByteArray &key : keys)
            QTest::addRow("%d %s", place, key.constData()) << key << place << QByteArray(kind);
    };
    for (int place = 0; place < 5; ++place) {
        add(place, "id", {"id"});
        add(place, "required text", {"title"});
        if (place > 0)
            add(place, "flag", {"isComplete"});
    }
    add(0, "required number", {"date"});
    add(0, "number", {"endDate"});
    add(0, "text", {"notes", "taskTitle", "tag", "colorName", "customColorHex"});
    add(0, "text", {"calendarEventIdentifier", "calendarIdentifier", "calendarColorHex"});
    add(0, "number", {"leadMinutes"});
    add(0, "flag", {"isTaskComplete", "calendarExportRequested"});
    add(0, "list", {"tasks"});
    add(1, "number", {"dueDate", "completedAt", "recurrenceStart"});
    add(1, "text", {"recurrenceRule"});
    add(1, "flag", {"recursAfterCompletion"});
    add(1, "text", {"requirement"});
    add(2, "text", {"summary", "category", "colorName"});
    add(2, "number", {"targetDate", "progress"});
    add(2, "list", {"subgoals"});
    add(3, "list", {"tasks"});
    add(4, "number", {"weight"});
}

void RecordDecodingTest::everyKeyChecksItsType()
{
    QFETCH(const QByteArray, key);
    QFETCH(const int, place);
    QFETCH(const QByteArray, kind);

    // The key comes last, so it overrides the required ones that stand before it.
    const auto decodes = [&](const QByteArray &value) {
        const QByteArray record = schedule(member(key, value));
        switch (place) {
        case 0:
            return decodeSavedData(envelope(record)).has_value();
        case 1:
            return decodeSavedData(envelope({}, record)).has_value();
        case 2:
            return decodeSavedData(envelope({}, {}, record)).has_value();
        case 3:
            return decodeSavedData(envelope({}, {}, schedule(member("subgoals", "[" + record + "]")))).has_value();
        default:
            const QByteArray subgoal = schedule(member("tasks", "[" + record + "]"));
            return decodeSavedData(envelope({}, {}, schedule(member("subgoals", "[" + subgoal + "]")))).has_value();
        }
    };

    for (const auto &[valueKind, value] : valuesOfEveryKind()) {
        const bool isText = valueKind == "text" || valueKind == "id" || valueKind == "not an id";
        const bool fits = kind.endsWith("text") ? isText : kind.endsWith(valueKind);
        QVERIFY2(decodes(value) == fits, value.constData());
        // Of duplicate keys the last counts, whatever the first one was.
        const QByteArray good = kind.endsWith("text")     ? json("'x'")
                                : kind.endsWith("number") ? "7"
                                : kind == "flag"          ? "true"
                                : kind == "id"            ? '"' + upperID + '"'
                                                          : "[]";
        QVERIFY2(decodes(value + member(key, good)), value.constData());
        QVERIFY2(decodes(good + member(key, value)) == fits, value.constData());
    }
    QCOMPARE(decodes("null"), !kind.startsWith("required"));
}

void RecordDecodingTest::requiredKeysMustBeThere_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("decodes");

    const QByteArray id = json("'id':'") + upperID + '"';
    const auto task = [](const QByteArray &members) {
        return envelope(schedule(json(",'tasks':[{") + members + "}]"));
    };
    QTest::newRow("task") << task(id + json(",'title':'','isComplete':false")) << true;
    QTest::newRow("task without id") << task(json("'title':'','isComplete':false")) << false;
    QTest::newRow("task without title") << task(id + json(",'isComplete':false")) << false;
    QTest::newRow("task without isComplete") << task(id + json(",'title':''")) << false;
    QTest::newRow("task with null isComplete") << task(id + json(",'title':'','isComplete':null")) << false;
    QTest::newRow("task with isComplete 0") << task(id + json(",'title':'','isComplete':0")) << false;
    QTest::newRow("schedule without date") << envelope(json("{'title':''}")) << false;
    QTest::newRow("schedule without title") << envelope(json("{'date':1}")) << false;
    QTest::newRow("to-do without title") << envelope({}, "{}") << false;
    QTest::newRow("goal without title") << envelope({}, {}, "{}") << false;
    QTest::newRow("subgoal without title") << envelope({}, {}, json("{'title':'','subgoals':[{}]}")) << false;
    QTest::newRow("goal task without title")
        << envelope({}, {}, json("{'title':'','subgoals':[{'title':'','tasks':[{}]}]}")) << false;
    QTest::newRow("empty envelope") << envelope({}) << true;
    QTest::newRow("no schedules") << json("{'reminders':[],'goals':[]}") << false;
    QTest::newRow("no reminders") << json("{'schedules':[],'goals':[]}") << false;
    QTest::newRow("no goals") << json("{'schedules':[],'reminders':[]}") << false;
    QTest::newRow("goals null") << json("{'schedules':[],'reminders':[],'goals':null}") << false;
    QTest::newRow("goals an object") << json("{'schedules':[],'reminders':[],'goals':{}}") << false;
    QTest::newRow("a bad record among good ones") << envelope(schedule({}) + ",{}," + schedule({})) << false;
    QTest::newRow("a bad list replaced by a good one")
        << json("{'goals':[{}],'schedules':[7],'reminders':[],'goals':[],'schedules':[]}") << true;
}

void RecordDecodingTest::requiredKeysMustBeThere()
{
    QFETCH(const QByteArray, text);
    QTEST(decodeSavedData(text).has_value(), "decodes");
}

void RecordDecodingTest::onlyWellFormedTextDecodes_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("decodes");

    const auto unknown = [](const QByteArray &value) { return envelope(schedule(member("unknown", value))); };
    const auto notes = [](const QByteArray &text) { return envelope(schedule(member("notes", '"' + text + '"'))); };
    const auto nested = [&](int depth) {
        return unknown(QByteArray("[").repeated(depth) + QByteArray("]").repeated(depth));
    };
    QTest::newRow("unknown values") << unknown(json("{'title':7,'tasks':[{}],'a':[1,'x',null,{'b':[true]}]}")) << true;
    QTest::newRow("blanks") << QByteArray(" {\t\"schedules\"\r\n: [ ] , \"reminders\":[\n],\"goals\":[]} \n") << true;
    QTest::newRow("nesting within bounds") << nested(61) << true;
    QTest::newRow("nesting beyond bounds") << nested(62) << false;
    QTest::newRow("nesting far beyond bounds") << nested(200000) << false;
    QTest::newRow("unclosed nesting") << QByteArray("[").repeated(1000000) << false;
    QTest::newRow("nothing") << QByteArray() << false;
    QTest::newRow("blanks only") << QByteArray("  ") << false;
    for (const char *root : {"null", "true", "7", "\"x\"", "[]", "{}", "[{}]"})
        QTest::addRow("root %s", root) << QByteArray(root) << false;
    QTest::newRow("text after the end") << envelope({}) + "x" << false;
    QTest::newRow("a second value") << envelope({}) + envelope({}) << false;
    QTest::newRow("a zero byte after the end") << envelope({}) + QByteArray(1, '\0') << false;
    QTest::newRow("byte-order mark") << "\xEF\xBB\xBF" + envelope({}) << false;
    QTest::newRow("comment") << envelope("/**/") << false;
    QTest::newRow("trailing comma") << envelope(schedule({}) + ",") << false;
    QTest::newRow("single quotes") << unknown("'x'") << false;
    QTest::newRow("key without quotes") << envelope("{title:\"\"}") << false;
    for (const char *number :
         {"01", "1.", ".5", "+1", "1e", "-", "0x1", "NaN", "Infinity", "-Infinity", "nan", "1e400", "-1e400"})
        QTest::addRow("number %s", number) << envelope(schedule(member("endDate", number))) << false;
    for (const char *number :
         {"-0", "0e5", "1E+2", "1e-400", "123456789012345678901234567890", "1.0000000000000000000001"})
        QTest::addRow("number %s", number) << envelope(schedule(member("endDate", number))) << true;
    QTest::newRow("malformed unknown value") << unknown("[1,]") << false;
    QTest::newRow("raw line break") << notes("a\nb") << false;
    QTest::newRow("raw control") << notes("a\x01") << false;
    QTest::newRow("unknown escape") << notes("\\x41") << false;
    QTest::newRow("short escape") << notes("\\u12") << false;
    for (const char *text : {"\\ud800", "\\udc00", "\\ud800x", "\\ud800\\u0041", "\\ud800\\ud800", "\\udc00\\ud800"})
        QTest::addRow("lone surrogate %s", text) << notes(text) << false;
    const QList<QByteArray> malformed = {
        "\x80",         "\xC3",         "\xC0\x80",         "\xC1\xBF",         "\xE0\x80\x80",
        "\xED\xA0\x80", "\xED\xB0\x80", "\xF0\x80\x80\x80", "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80",
        "\xFF",         "\xE4\xBC"};
    for (const QByteArray &bytes : malformed) {
        QTest::addRow("bad UTF-8 %s", bytes.toHex().constData()) << notes(bytes) << false;
        QTest::addRow("bad UTF-8 %s in an unknown value", bytes.toHex().constData())
            << unknown('"' + bytes + '"') << false;
        QTest::addRow("bad UTF-8 %s in a key", bytes.toHex().constData())
            << envelope(schedule(member(bytes, "1"))) << false;
    }
}

void RecordDecodingTest::onlyWellFormedTextDecodes()
{
    QFETCH(const QByteArray, text);
    QTEST(decodeSavedData(text).has_value(), "decodes");
}

TESSALY_TEST_MAIN(RecordDecodingTest)
#include "RecordDecodingTest.moc"
