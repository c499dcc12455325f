#include "store/ErrorText.h"
#include "tests/support/TestMain.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;
using namespace tessaly;

class ErrorTextTest : public QObject
{
    Q_OBJECT

private slots:
    void everyKindOfFailureHasWordsOfItsOwnInBothLanguages()
    {
        static const QRegularExpression latinWord(u"[A-Za-z]{2,}"_s);
        static const QRegularExpression han(u"\\p{Han}"_s);
        const QStringList namesAndUnits{u"UTF"_s, u"MB"_s};
        QStringList texts;
        for (int code = 0; code <= int(ErrorCode::LoginItemFailed); ++code) {
            const Error error{ErrorCode(code)};
            const QString chinese = errorText(error, AppLanguage::Chinese);
            const QString english = errorText(error, AppLanguage::English);
            QVERIFY2(chinese.contains(han) && chinese.endsWith(u'。'), qPrintable(chinese));
            QVERIFY2(!english.contains(han) && english.endsWith(u'.'), qPrintable(english));
            for (auto word = latinWord.globalMatch(chinese); word.hasNext();)
                QVERIFY2(namesAndUnits.contains(word.next().captured()), qPrintable(chinese));
            texts << chinese << english;
        }
        QCOMPARE(texts.removeDuplicates(), 0);
    }

    void onlyADetailThatNeedsNoTranslationIsShown_data()
    {
        QTest::addColumn<QString>("detail");
        QTest::addColumn<bool>("isShown");
        QTest::newRow("none") << QString() << false;
        QTest::newRow("a path") << u"/a folder/a file"_s << true;
        QTest::newRow("a number") << u"1034"_s << true;
        QTest::newRow("words of a database") << u"database or disk is full"_s << false;
        QTest::newRow("words of the system") << u"设备上没有空间"_s << false;
    }

    void onlyADetailThatNeedsNoTranslationIsShown()
    {
        QFETCH(const QString, detail);
        QFETCH(const bool, isShown);
        const Error error{ErrorCode::StorageFull, detail};
        QCOMPARE(errorText(error, AppLanguage::Chinese),
                 isShown ? u"磁盘空间不足（%1）。"_s.arg(detail) : u"磁盘空间不足。"_s);
        QCOMPARE(errorText(error, AppLanguage::English),
                 isShown ? u"The disk is full (%1)."_s.arg(detail) : u"The disk is full."_s);
    }
};

TESSALY_TEST_MAIN(ErrorTextTest)
#include "ErrorTextTest.moc"
