#include "model/CalendarGroups.h"
#include "tests/support/TestMain.h"

using namespace tessaly;

namespace {

CalendarOption calendar(const QString &id, const QString &source)
{
    return {id, id, source, {}};
}

} // namespace

class CalendarGroupsTest : public QObject
{
    Q_OBJECT

private slots:
    void accountsAreSortedAndKeepTheOrderOfTheirCalendars()
    {
        const CalendarOption b = calendar(QStringLiteral("b"), QStringLiteral("iCloud"));
        const CalendarOption a = calendar(QStringLiteral("a"), QStringLiteral("iCloud"));
        const CalendarOption other = calendar(QStringLiteral("o"), QStringLiteral("Nextcloud"));
        const CalendarOption emoji = calendar(QStringLiteral("e"), QString::fromUcs4(U"\U0001F600"));
        const CalendarOption wide = calendar(QStringLiteral("w"), QStringLiteral("\uFF21"));

        const QList<CalendarGroup> groups = groupCalendars({b, emoji, other, a, wide});

        QCOMPARE(groups, (QList<CalendarGroup>{{QStringLiteral("Nextcloud"), {other}},
                                               {QStringLiteral("iCloud"), {b, a}},
                                               {wide.sourceTitle, {wide}},
                                               {emoji.sourceTitle, {emoji}}}));
    }

    void anAccountIsChosenWhenAllItsCalendarsAre()
    {
        const CalendarGroup group = groupCalendars({calendar(QStringLiteral("a"), QStringLiteral("iCloud")),
                                                    calendar(QStringLiteral("b"), QStringLiteral("iCloud"))})
                                        .first();
        QSet<QString> chosen = {QStringLiteral("other"), QStringLiteral("a")};
        QCOMPARE(groupChoice(group, chosen), GroupChoice::Some);

        chosen = withChoice(chosen, {QStringLiteral("b")}, true);
        QCOMPARE(groupChoice(group, chosen), GroupChoice::All);

        chosen = withChoice(chosen, identifiersOf(group.calendars), false);
        QCOMPARE(groupChoice(group, chosen), GroupChoice::None);
        QCOMPARE(chosen, QSet<QString>{QStringLiteral("other")});
    }
};

TESSALY_TEST_MAIN(CalendarGroupsTest)
#include "CalendarGroupsTest.moc"
