#include "model/SavedDataEncoder.h"
#include "model/RecordCodec.h"
#include "tests/support/RecordGenerator.h"
#include "tests/support/TestMain.h"

#include <limits>

using namespace tessaly;

using Section = SavedDataEncoder::Section;
using Kind = RowsChange::Kind;

namespace {

/// Changes up to four neighbouring rows of the list in a random way, sometimes all rows.
template <class Record, class MakeRecord>
RowsChange changeSomeRows(QList<Record> &list, RecordGenerator &random, MakeRecord make)
{
    const auto kind = list.isEmpty() ? Kind::Inserted : Kind(1 + random.below(3));
    if (random.happens(0.01)) {
        list.clear();
        for (qsizetype count = random.below(6); count > 0; --count)
            list.append(make());
        return {};
    }
    if (kind == Kind::Inserted) {
        const RowsChange change{kind, random.below(list.size() + 1), random.below(5)};
        for (qsizetype i = 0; i < change.count; ++i)
            list.insert(change.first + i, make());
        return change;
    }
    const qsizetype first = random.below(list.size());
    const RowsChange change{kind, first, std::min(list.size() - first, random.below(5))};
    if (kind == Kind::Removed) {
        list.remove(change.first, change.count);
    } else {
        for (qsizetype i = 0; i < change.count; ++i)
            list[change.first + i] = make();
    }
    return change;
}

} // namespace

class SavedDataEncoderTest : public QObject
{
    Q_OBJECT

private slots:
    void bytesEqualAFullEncodeAfterAnyChanges()
    {
        RecordGenerator random(7);
        SavedData data = random.savedData(3, 3, 3);
        SavedDataEncoder encoder;
        QVERIFY(encoder.encode(data));

        for (int step = 0; step < 5000; ++step) {
            const QByteArray before = encoder.bytes().toByteArray();
            const auto section = Section(random.below(3));
            RowsChange change;
            if (section == Section::Schedules)
                change = changeSomeRows(data.schedules, random, [&] { return random.schedule(); });
            else if (section == Section::Reminders)
                change = changeSomeRows(data.reminders, random, [&] { return random.reminder(); });
            else
                change = changeSomeRows(data.goals, random, [&] { return random.goal(); });

            QVERIFY(encoder.update(data, section, change));

            QCOMPARE(encoder.bytes().toByteArray(), *encodeSavedData(data));
            const SavedDataEncoder::Splice splice = encoder.lastSplice();
            const QByteArray inserted = encoder.bytes().sliced(splice.offset, splice.inserted).toByteArray();
            QCOMPARE(QByteArray(before).replace(splice.offset, splice.removed, inserted),
                     encoder.bytes().toByteArray());
        }
    }

    void aChangeOfOneRecordTouchesOnlyItsBytes()
    {
        RecordGenerator random(3);
        SavedData data = random.savedData(50, 50, 5);
        SavedDataEncoder encoder;
        QVERIFY(encoder.encode(data));

        data.reminders[20].isComplete = !data.reminders[20].isComplete;
        QVERIFY(encoder.update(data, Section::Reminders, {Kind::Updated, 20, 1}));

        const SavedDataEncoder::Splice splice = encoder.lastSplice();
        const QByteArray touched = encoder.bytes().sliced(splice.offset, splice.inserted).toByteArray();
        QVERIFY2(touched.startsWith("{\"id\":") && touched.endsWith("},"), touched.constData());
        QCOMPARE(touched.count("\"id\""), 1);
    }

    void aValueWithoutJsonFormFailsUntilItIsGone()
    {
        constexpr double nan = std::numeric_limits<double>::quiet_NaN();
        constexpr double infinity = std::numeric_limits<double>::infinity();
        RecordGenerator random(5);
        SavedData data = random.savedData(10, 10, 2);
        SavedDataEncoder encoder;
        QVERIFY(encoder.encode(data));

        for (const double value : {nan, infinity, -infinity}) {
            const QByteArray before = encoder.bytes().toByteArray();
            data.schedules[4].endDate = Instant{value};
            QVERIFY(!encoder.update(data, Section::Schedules, {Kind::Updated, 4, 1}));
            QVERIFY(encoder.bytes().isEmpty());
            // Another change does not hide the failed one.
            data.reminders[2].title = QStringLiteral("changed meanwhile");
            QVERIFY(!encoder.update(data, Section::Reminders, {Kind::Updated, 2, 1}));

            data.schedules.removeAt(4);
            QVERIFY(encoder.update(data, Section::Schedules, {Kind::Removed, 4, 1}));
            QCOMPARE(encoder.bytes().toByteArray(), *encodeSavedData(data));
            QCOMPARE(encoder.lastSplice().removed, before.size());
        }
    }

    void aChangeThatDoesNotFitTheListsEncodesEverything()
    {
        RecordGenerator random(9);
        SavedData data = random.savedData(4, 0, 0);
        const SavedData before = data;
        data.schedules.remove(1, 2);
        for (const RowsChange &change : {RowsChange{Kind::Removed, 3, 1}, RowsChange{Kind::Updated, 2, 9},
                                         RowsChange{Kind::Inserted, -1, 1}, RowsChange{Kind::Removed, 0, -2}}) {
            SavedDataEncoder misled;
            QVERIFY(misled.encode(before));
            QVERIFY(misled.update(data, Section::Schedules, change));
            QCOMPARE(misled.bytes().toByteArray(), *encodeSavedData(data));
        }
    }
};

TESSALY_TEST_MAIN(SavedDataEncoderTest)
#include "SavedDataEncoderTest.moc"
