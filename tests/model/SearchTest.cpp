#include "model/Search.h"
#include "model/SearchText.h"

#include "tests/support/TestMain.h"

using namespace tessaly;

class SearchTest : public QObject
{
    Q_OBJECT

private slots:
    void wordsAreFound_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("query");
        QTest::addColumn<QString>("found");
        QTest::newRow("case") << "Weekly Report"
                              << "REPORT"
                              << "Report";
        QTest::newRow("accents of the title") << "Café déjà vu"
                                              << "deja"
                                              << "déjà";
        QTest::newRow("accents of the query") << "Cafe"
                                              << "café"
                                              << "Cafe";
        QTest::newRow("width") << "ＡＢＣ计划"
                               << "abc"
                               << "ＡＢＣ";
        QTest::newRow("katakana of half width") << "ｱﾙﾊﾞｲﾄ"
                                                << "ア"
                                                << "ｱ";
        QTest::newRow("traditional title") << "經濟學"
                                           << "经济"
                                           << "經濟";
        QTest::newRow("traditional query") << "经济学"
                                           << "經濟"
                                           << "经济";
        QTest::newRow("pinyin initials") << "微观经济学 第2讲"
                                         << "jjx"
                                         << "经济学";
        QTest::newRow("initials with digits") << "微观经济学 第2讲"
                                              << "d2j"
                                              << "第2讲";
        QTest::newRow("initials of a mixed title") << "周报 Draft"
                                                   << "zb draft"
                                                   << "周报";
        QTest::newRow("words in any order") << "Report for Ann"
                                            << "ann rep"
                                            << "Ann";
        QTest::newRow("part of a word") << "Microeconomics"
                                        << "econ"
                                        << "econ";
        QTest::newRow("a missing word") << "Report for Ann"
                                        << "report bob"
                                        << "";
        QTest::newRow("nothing") << "Report"
                                 << "  "
                                 << "";
        QTest::newRow("no initials of latin words") << "Big Red Dog"
                                                    << "brd"
                                                    << "";
        QTest::newRow("beyond the basic plane") << "😀 𠮷野家"
                                                << "𠮷"
                                                << "𠮷";
    }

    void wordsAreFound()
    {
        QFETCH(QString, title);
        QFETCH(QString, query);
        QFETCH(QString, found);
        const auto result = match(SearchKey::of(title), SearchQuery::of(query));
        QCOMPARE(result ? title.sliced(result->start, result->length) : QString(), found);
    }

    void theBestStandFirst()
    {
        const SearchQuery query = SearchQuery::of(QStringLiteral("zb"));
        const QStringList best{QStringLiteral("zb list"), QStringLiteral("my zb"), QStringLiteral("xzbx"),
                               QStringLiteral("写周报")};
        int before = -1;
        for (const QString &title : best) {
            const auto result = match(SearchKey::of(title), query);
            QVERIFY2(result && result->rank > before, qPrintable(title));
            before = result->rank;
        }
    }

    void excerptsAreOneLineAroundTheWord_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("query");
        QTest::addColumn<QString>("expected");
        QTest::newRow("a short line") << "# Title\nA rate is a ratio\nend"
                                      << "RATIO"
                                      << "A rate is a ratio";
        QTest::newRow("a long line") << QString(50, u'x') + QStringLiteral(" ratio ") + QString(90, u'y') << "ratio"
                                     << u'…' + QString(11, u'x') + QStringLiteral(" ratio ") + QString(59, u'y') + u'…';
        QTest::newRow("Chinese") << "微观经济学里，弹性比较的是变化"
                                 << "彈性"
                                 << "微观经济学里，弹性比较的是变化";
        QTest::newRow("words on several lines") << "one\ntwo"
                                                << "two one"
                                                << "two";
        QTest::newRow("a missing word") << "one\ntwo"
                                        << "two three"
                                        << "";
    }

    void excerptsAreOneLineAroundTheWord()
    {
        QFETCH(QString, text);
        QFETCH(QString, query);
        QFETCH(QString, expected);
        const SearchQuery words = SearchQuery::of(query);
        const auto result = excerpt(text, searchFolded(text), words);
        QCOMPARE(result ? result->text : QString(), expected);
        if (result)
            QCOMPARE(searchFolded(result->text.sliced(result->start, result->length)), words.words.first());
    }

    void aSignatureHasEveryWordOfItsTextAndFewOthers()
    {
        QString text;
        for (int number = 0; number < 800; ++number)
            text += QString::number(number * 7919 % 100003, 36) + u' ' + QChar(0x4E00 + number * 37 % 5000) +
                    QChar(0x4E00 + number * 91 % 5000);
        const QString folded = searchFolded(text);
        const qsizetype size = text.toUtf8().size();
        const TextSignature signature(folded, size);
        QVERIFY(signature.bytes() * 4 <= size);
        for (qsizetype at = 0; at + 6 < folded.size(); at += 3)
            QVERIFY(signature.mayHave({{folded.sliced(at, 2)}}) && signature.mayHave({{folded.sliced(at, 6)}}));
        int wrong = 0;
        for (int number = 0; number < 1000; ++number) {
            const QString word = QStringLiteral("word") + QString::number(number + 5000) + QStringLiteral("less");
            wrong += signature.mayHave({{word}}) ? 1 : 0;
        }
        QVERIFY2(wrong < 20, qPrintable(QString::number(wrong)));
        QVERIFY(TextSignature().mayHave({{QStringLiteral("anything")}}));
    }
};

TESSALY_TEST_MAIN(SearchTest)
#include "SearchTest.moc"
