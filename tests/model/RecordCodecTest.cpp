#include "model/RecordCodec.h"
#include "tests/support/RecordGenerator.h"
#include "tests/support/TestMain.h"

#include <nlohmann/json.hpp>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <bit>
#include <cmath>
#include <limits>

using namespace tessaly;

namespace {

/// JSON with ' for ", which moc reads better than raw strings.
QByteArray json(const char *text)
{
    return QByteArray(text).replace('\'', '"');
}

const QUuid someID = QUuid::fromString(QLatin1String("{0f8fad5b-d9cb-469f-a165-70867728950e}"));

SavedData onlySchedule(const ScheduleItem &item)
{
    return {.schedules = {item}};
}

} // namespace

class RecordCodecTest : public QObject
{
    Q_OBJECT

private slots:
    void recordsAreWrittenCompactlyAndWithoutAbsentMembers()
    {
        const SavedData data{
            .schedules = {{.id = someID, .title = QStringLiteral("会"), .date = {1.5}, .tasks = std::nullopt}},
            .reminders = {{.id = someID, .title = QStringLiteral("r"), .completedAt = Instant{-0.0}}},
            .goals = {{.id = someID, .title = QStringLiteral("g")}}};
        QCOMPARE(*encodeSavedData(data),
                 json("{'schedules':[{'id':'0F8FAD5B-D9CB-469F-A165-70867728950E','title':'会','date':1.5,'notes':'',"
                      "'isTaskComplete':false}],'reminders':[{'id':'0F8FAD5B-D9CB-469F-A165-70867728950E','title':'r',"
                      "'isComplete':false,'completedAt':-0}],'goals':[{'id':'0F8FAD5B-D9CB-469F-A165-70867728950E',"
                      "'title':'g','progress':0,'colorName':'blue','isComplete':false,'subgoals':[]}]}"));
    }

    void everyMemberSurvives()
    {
        const QString text = QStringLiteral("x");
        const Instant date{12.25};
        const ScheduleItem schedule{
            someID, text, date, date, text, text, true, QList<ScheduleTask>{{someID, text, true}},
            text,   text, text, true, text, text, text};
        const GoalTask task{someID, text, 2.5, true, date};
        const Goal goal{
            someID, text, text, text, date, 0.5, text, true, QList<Subgoal>{{someID, text, {{task}}, true, date}}};
        const SavedData data{{schedule}, {{someID, text, date, text, true, date}}, {goal}};
        QCOMPARE(decodeSavedData(*encodeSavedData(data)), data);

        const DocumentLibraryData library{{{someID, text}}, {{someID, text, someID, date}, {someID, text, {}, date}}};
        QCOMPARE(decodeDocumentLibrary(*encodeDocumentLibrary(library)), library);
        const QList<CalendarFeed> feeds{{someID, text, text, date}, {someID, text, text, std::nullopt}};
        QCOMPARE(decodeCalendarFeeds(*encodeCalendarFeeds(feeds)), feeds);
        QCOMPARE(decodeCalendarFeeds(*encodeCalendarFeeds({})), QList<CalendarFeed>());
    }

    void librariesNeedTheirKeys_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("isLibrary");
        QTest::addColumn<bool>("isFeeds");

        const QByteArray id = "'id':'0F8FAD5B-D9CB-469F-A165-70867728950E',";
        const auto documents = [&](const QByteArray &members) {
            return "{'categories':[],'documents':[{" + id + members + "}]}";
        };
        const auto add = [](const char *name, const QByteArray &text, bool isLibrary, bool isFeeds) {
            QTest::newRow(name) << json(text) << isLibrary << isFeeds;
        };
        add("document", documents("'title':'','updatedAt':1"), true, false);
        add("document of null category", documents("'title':'','updatedAt':1,'categoryID':null"), true, false);
        add("document of bad category", documents("'title':'','updatedAt':1,'categoryID':'x'"), false, false);
        add("document without updatedAt", documents("'title':''"), false, false);
        add("document without title", documents("'updatedAt':1"), false, false);
        add("document without id", "{'categories':[],'documents':[{'title':'','updatedAt':1}]}", false, false);
        add("category without id", "{'categories':[{'name':''}],'documents':[]}", false, false);
        add("category without name", "{'categories':[{" + id.chopped(1) + "}],'documents':[]}", false, false);
        add("no categories", "{'documents':[]}", false, false);
        add("no documents", "{'categories':[]}", false, false);
        add("feed", "[{" + id + "'name':'','urlString':''}]", false, true);
        add("feed of null date", "[{" + id + "'name':'','urlString':'','lastUpdated':null}]", false, true);
        add("feed of bad date", "[{" + id + "'name':'','urlString':'','lastUpdated':'1'}]", false, false);
        add("feed without id", "[{'name':'','urlString':''}]", false, false);
        add("feed without name", "[{" + id + "'urlString':''}]", false, false);
        add("feed without urlString", "[{" + id + "'name':''}]", false, false);
        add("feeds with a null", "[null]", false, false);
        add("no feeds", "[]", false, true);
        add("two lists", "[][]", false, false);
    }

    void librariesNeedTheirKeys()
    {
        QFETCH(const QByteArray, text);
        QTEST(decodeDocumentLibrary(text).has_value(), "isLibrary");
        QTEST(decodeCalendarFeeds(text).has_value(), "isFeeds");
    }

    void doublesSurviveBitForBit()
    {
        QList<double> numbers = {0.0,
                                 -0.0,
                                 5e-324,
                                 2.2250738585072014e-308,
                                 1.7976931348623157e308,
                                 1e22,
                                 1e23,
                                 9007199254740991.0,
                                 9007199254740992.0 + 2,
                                 -9007199254740992.0,
                                 0.1,
                                 790000000.123456789};
        std::mt19937_64 random(11);
        while (numbers.size() < 200'000) {
            const double number = std::bit_cast<double>(random());
            if (std::isfinite(number))
                numbers.append(number);
            numbers.append(double(random() >> 11) * 0x1p-23);
        }
        SavedData data;
        for (const double number : numbers)
            data.reminders.append({.id = someID, .dueDate = Instant{number}});

        const auto decoded = decodeSavedData(*encodeSavedData(data));

        QVERIFY(decoded);
        for (qsizetype i = 0; i < numbers.size(); ++i)
            QCOMPARE(std::bit_cast<quint64>(decoded->reminders[i].dueDate->seconds),
                     std::bit_cast<quint64>(numbers[i]));
    }

    void valuesWithoutJsonFormAreRefused()
    {
        constexpr double nan = std::numeric_limits<double>::quiet_NaN();
        constexpr double infinity = std::numeric_limits<double>::infinity();
        for (const double number : {nan, infinity, -infinity}) {
            QVERIFY(!encodeSavedData(onlySchedule({.date = {number}})));
            QVERIFY(!encodeSavedData({.goals = {{.progress = number}}}));
            QVERIFY(!encodeDocumentLibrary({.documents = {{.updatedAt = {number}}}}));
            QVERIFY(!encodeCalendarFeeds({{.lastUpdated = Instant{number}}}));
        }
    }

    void aSurrogateWithoutItsPartnerIsWrittenAsReplacement_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("written");

        const QChar high(u'\xD83D');
        const QChar low(u'\xDEB2');
        const QChar instead(QChar::ReplacementCharacter);
        QTest::newRow("high at the end") << QStringLiteral("ab") + high << QStringLiteral("ab") + instead;
        QTest::newRow("high before text") << high + QStringLiteral("ab") << instead + QStringLiteral("ab");
        QTest::newRow("low") << low + QStringLiteral("12345678") << instead + QStringLiteral("12345678");
        QTest::newRow("low before high") << QString(low) + high << QString(instead) + instead;
        QTest::newRow("two high, one low") << QString(high) + high + low << QString(instead) + high + low;
    }

    void aSurrogateWithoutItsPartnerIsWrittenAsReplacement()
    {
        QFETCH(const QString, text);
        const auto decoded = decodeSavedData(*encodeSavedData(onlySchedule({.title = text})));
        QVERIFY(decoded);
        QTEST(decoded->schedules.constFirst().title, "written");
    }

    /// Every code point, at every place in the runs of eight that both directions work in.
    void everyCharacterSurvivesAtEveryPlace()
    {
        SavedData data;
        for (char32_t point = 0; point <= 0x10FFFF; point += point < 0x3000 ? 1 : 0x101) {
            if (point >= 0xD800 && point <= 0xDFFF)
                continue;
            const QString before = QStringLiteral("abcdefghijklmnop").left(qsizetype(point % 17));
            const QString text = before + QString::fromUcs4(&point, 1) + QStringLiteral("0123456789");
            data.reminders.append({.id = someID, .title = text});
        }

        const QByteArray encoded = *encodeSavedData(data);
        const auto decoded = decodeSavedData(encoded);
        const QJsonArray byQt = QJsonDocument::fromJson(encoded).object().value(QLatin1String("reminders")).toArray();

        QVERIFY(decoded);
        QCOMPARE(byQt.size(), data.reminders.size());
        for (qsizetype i = 0; i < data.reminders.size(); ++i) {
            QCOMPARE(decoded->reminders[i].title, data.reminders[i].title);
            QCOMPARE(byQt[i].toObject().value(QLatin1String("title")).toString(), data.reminders[i].title);
        }
    }

    void otherLibrariesReadAndWriteTheSame()
    {
        for (quint64 seed = 1; seed <= 5; ++seed) {
            const SavedData data = RecordGenerator(seed).savedData(300, 300, 100);
            const QByteArray ours = *encodeSavedData(data);
            QCOMPARE(decodeSavedData(ours), data);

            QJsonParseError error;
            const QJsonDocument document = QJsonDocument::fromJson(ours, &error);
            QVERIFY2(error.error == QJsonParseError::NoError, qPrintable(error.errorString()));
            QCOMPARE(decodeSavedData(document.toJson(QJsonDocument::Compact)), data);
            QCOMPARE(decodeSavedData(document.toJson(QJsonDocument::Indented)), data);

            const auto tree = nlohmann::json::parse(ours.constBegin(), ours.constEnd());
            const bool asAscii = seed % 2 == 0;
            const std::string theirs = tree.dump(-1, ' ', asAscii);
            QCOMPARE(decodeSavedData(QByteArrayView(theirs.data(), qsizetype(theirs.size()))), data);
        }
    }

    /// One byte of valid text changed or dropped: where a strict library refuses, so must we.
    void damagedTextIsNotReadWhereAStrictLibraryRefuses()
    {
        RecordGenerator random(21);
        const QByteArray whole = *encodeSavedData(random.savedData(4, 3, 2));
        int refused = 0;
        for (int i = 0; i < 4000; ++i) {
            QByteArray damaged = whole;
            const qsizetype place = random.below(whole.size());
            if (random.happens(0.5))
                damaged[place] = char(random.below(256));
            else
                damaged.remove(place, 1);
            if (nlohmann::json::accept(damaged.constBegin(), damaged.constEnd()))
                continue;
            ++refused;
            QVERIFY2(!decodeSavedData(damaged), damaged.constData());
        }
        QVERIFY(refused > 500);
    }
};

TESSALY_TEST_MAIN(RecordCodecTest)
#include "RecordCodecTest.moc"
