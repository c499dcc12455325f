#include "model/ScheduleColors.h"
#include "tests/support/TestMain.h"

using namespace tessaly;

class ScheduleColorsTest : public QObject
{
    Q_OBJECT

private slots:
    void hexTextIsReadStrictly_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");

        const auto row = [](const char *name, const char *text, const char *expected) {
            QTest::newRow(name) << QString::fromUtf8(text) << QString::fromUtf8(expected);
        };
        row("plain", "#2C66D8", "#2C66D8");
        row("lower case, without a sign", "2c66d8", "#2C66D8");
        row("signs on both ends", "##2C66D8#", "#2C66D8");
        row("a sign inside", "#2C#6D8", "");
        row("five digits", "#2C66D", "");
        row("seven digits", "#2C66D80", "");
        row("a prefix is no digit", "0x12AB", "");
        row("a plus is no digit", "+12345", "");
        row("full-width digits", "１２３４５６", "");
        row("empty", "", "");
    }

    void hexTextIsReadStrictly()
    {
        QFETCH(const QString, text);

        const std::optional<RgbColor> color = colorFromHex(text);

        QTEST(color ? colorHex(*color) : QString(), "expected");
    }

    void componentsAreRoundedToTheNearestStep()
    {
        QCOMPARE(colorHex({1, 0, 0}), QStringLiteral("#FF0000"));
        QCOMPARE(colorHex({0.5, 0.498, 10 / 255.0}), QStringLiteral("#807F0A"));
        QCOMPARE(colorHex({2, -1, 1.0001}), QStringLiteral("#FF00FF"));
    }

    void anIdentifierAlwaysGetsTheSameColour_data()
    {
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<QString>("expected");

        // Worked out by hand: h = (31 h + scalar) mod 8, in the order blue, orange, green, purple, pink, teal, red,
        // indigo.
        QTest::newRow("empty") << ""
                               << "blue";
        QTest::newRow("a = 97, 97 mod 8 = 1") << "a"
                                              << "orange";
        QTest::newRow("ab: (31 * 1 + 98) mod 8 = 1") << "ab"
                                                     << "orange";
        QTest::newRow("work: 7, 0, 2, 1") << "work"
                                          << "orange";
        QTest::newRow("one scalar of two units, 0x1F600 mod 8 = 0") << QString::fromUcs4(U"\U0001F600") << "blue";
        QTest::newRow("0x1F607 mod 8 = 7") << QString::fromUcs4(U"\U0001F607") << "indigo";
    }

    void anIdentifierAlwaysGetsTheSameColour()
    {
        QFETCH(const QString, identifier);

        QTEST(paletteColor(identifier), "expected");
    }

    void theFirstColourThatIsKnownCounts_data()
    {
        QTest::addColumn<QString>("custom");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("calendarHex");
        QTest::addColumn<QString>("calendar");
        QTest::addColumn<QString>("expected");

        const auto row = [](const char *name, const char *custom, const char *schedule, const char *calendarHex,
                            const char *calendar, const char *expected) {
            QTest::newRow(name) << QString::fromLatin1(custom) << QString::fromLatin1(schedule)
                                << QString::fromLatin1(calendarHex) << QString::fromLatin1(calendar)
                                << QString::fromLatin1(expected);
        };
        row("the own colour", "#010203", "pink", "#040506", "a", "#010203");
        row("the named colour", "red", "pink", "#040506", "a", "pink");
        row("a name outside the five", "", "teal", "#040506", "a", "#040506");
        row("the identifier's colour", "", "", "none", "a", "orange");
        row("blue", "", "", "", "", "blue");
    }

    void theFirstColourThatIsKnownCounts()
    {
        QFETCH(const QString, custom);
        QFETCH(const QString, name);
        QFETCH(const QString, calendarHex);
        QFETCH(const QString, calendar);
        const auto given = [](const QString &text) { return text.isEmpty() ? std::nullopt : std::optional(text); };
        ScheduleItem schedule;
        schedule.customColorHex = given(custom);
        schedule.colorName = given(name);
        schedule.calendarColorHex = given(calendarHex);
        schedule.calendarIdentifier = given(calendar);

        QTEST(scheduleColor(schedule), "expected");
    }
};

TESSALY_TEST_MAIN(ScheduleColorsTest)
#include "ScheduleColorsTest.moc"
