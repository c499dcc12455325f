#include "model/LineDifference.h"
#include "tests/support/TestMain.h"

#include <random>

using namespace tessaly;
using namespace Qt::StringLiterals;

namespace {

/// Such as " a|-b|+c".
QString words(const QList<ComparedLine> &lines)
{
    QStringList words;
    for (const ComparedLine &line : lines) {
        const QChar sign = line.kind == ComparedLine::Kind::Same    ? u' '
                           : line.kind == ComparedLine::Kind::Added ? u'+'
                                                                    : u'-';
        words.append(sign + line.text);
    }
    return words.join(u'|');
}

QString without(const QList<ComparedLine> &lines, ComparedLine::Kind kind)
{
    QStringList texts;
    for (const ComparedLine &line : lines) {
        if (line.kind != kind)
            texts.append(line.text);
    }
    return texts.join(u'\n');
}

/// The length of the longest common part of two lists of lines, by the textbook table.
qsizetype commonLines(const QStringList &a, const QStringList &b)
{
    QList<QList<qsizetype>> table(a.size() + 1, QList<qsizetype>(b.size() + 1, 0));
    for (qsizetype i = 1; i <= a.size(); ++i) {
        for (qsizetype j = 1; j <= b.size(); ++j)
            table[i][j] = a.at(i - 1) == b.at(j - 1) ? table.at(i - 1).at(j - 1) + 1
                                                     : std::max(table.at(i - 1).at(j), table.at(i).at(j - 1));
    }
    return table.constLast().constLast();
}

} // namespace

class LineDifferenceTest : public QObject
{
    Q_OBJECT

private slots:
    void onlyWhatDiffersIsRemovedAndAdded_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");
        QTest::addColumn<QString>("lines");
        QTest::newRow("nothing") << u""_s << u""_s << u" "_s;
        QTest::newRow("the same") << u"a\nb"_s << u"a\nb"_s << u" a| b"_s;
        QTest::newRow("from nothing") << u""_s << u"a"_s << u"-|+a"_s;
        QTest::newRow("a line more") << u"a\nc"_s << u"a\nb\nc"_s << u" a|+b| c"_s;
        QTest::newRow("a line less") << u"a\nb\nc"_s << u"a\nc"_s << u" a|-b| c"_s;
        QTest::newRow("another line") << u"a\nb\nc"_s << u"a\nx\nc"_s << u" a|-b|+x| c"_s;
        QTest::newRow("two others") << u"a\nb\nc\nd"_s << u"a\nx\ny\nd"_s << u" a|-b|-c|+x|+y| d"_s;
        QTest::newRow("at both ends") << u"a\nb\nc"_s << u"x\nb\ny"_s << u"-a|+x| b|-c|+y"_s;
        QTest::newRow("a new line at the end") << u"a"_s << u"a\n"_s << u" a|+"_s;
        QTest::newRow("a repeated line") << u"a\na\nb"_s << u"a\nb"_s << u" a|-a| b"_s;
        QTest::newRow("the example of the paper")
            << u"a\nb\nc\na\nb\nb\na"_s << u"c\nb\na\nb\na\nc"_s << u"-a|-b| c|+b| a| b|-b| a|+c"_s;
    }

    void onlyWhatDiffersIsRemovedAndAdded()
    {
        QFETCH(const QString, before);
        QFETCH(const QString, after);
        QTEST(words(compareLines(before, after)), "lines");
    }

    void theLinesMakeUpBothTextsAndAreAsFewAsPossible()
    {
        std::mt19937 random(1);
        for (int round = 0; round < 500; ++round) {
            const auto text = [&random] {
                QStringList lines;
                for (unsigned count = 1 + random() % 30; count > 0; --count)
                    lines.append(QString(QChar(static_cast<char16_t>(u'a' + random() % 4))));
                return lines;
            };
            const QStringList before = text();
            const QStringList after = text();
            const QList<ComparedLine> lines = compareLines(before.join(u'\n'), after.join(u'\n'));
            QCOMPARE(without(lines, ComparedLine::Kind::Added), before.join(u'\n'));
            QCOMPARE(without(lines, ComparedLine::Kind::Removed), after.join(u'\n'));
            const auto same = std::ranges::count(lines, ComparedLine::Kind::Same, &ComparedLine::kind);
            QCOMPARE(same, commonLines(before, after));
        }
    }

    void textsThatDifferTooMuchAreComparedAtTheirEnds()
    {
        const QList<ComparedLine> lines = compareLines(u"a\nb\nc\nd\ne"_s, u"a\nx\nc\ny\ne"_s, 1);
        QCOMPARE(words(lines), u" a|-b|-c|-d|+x|+c|+y| e"_s);
    }
};

TESSALY_TEST_MAIN(LineDifferenceTest)
#include "LineDifferenceTest.moc"
