#include "tests/store/StoreUnderTest.h"
#include "tests/support/TestMain.h"

using namespace tessaly;
using namespace Qt::StringLiterals;

class DocumentVersionsTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_planner = std::make_unique<StoreUnderTest>();
        m_planner->start();
        m_id = library().addDocument(u"Notes"_s, std::nullopt)->id;
    }

    void eachSaveOfAnotherTextKeepsTheOneBefore()
    {
        QVERIFY(library().versions().list(m_id).isEmpty());
        const Instant created = m_planner->clock.now();
        m_planner->clock.advance(60);
        save(u"one"_s);
        m_planner->clock.advance(60);
        save(u"one"_s);
        QCOMPARE(library().versions().list(m_id), QList{created});
        QCOMPARE(library().versions().text(m_id, created), u"# Notes\n"_s);

        m_planner->clock.advance(60);
        save(u"two\r\nlines"_s);
        m_planner->clock.advance(60);
        save(u"three"_s);
        QCOMPARE(texts(), (QStringList{u"two\nlines"_s, u"one"_s, u"# Notes\n"_s}));
    }

    void theLastFiftyAreKept()
    {
        for (int number = 0; number < 60; ++number) {
            m_planner->clock.advance(1);
            save(QString::number(number));
        }
        QCOMPARE(texts().size(), DocumentVersions::kept);
        QCOMPARE(texts().constFirst(), u"58"_s);
        QCOMPARE(texts().constLast(), u"9"_s);
    }

    void everyTextComesBack_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << u""_s;
        QTest::newRow("one line") << u"a"_s;
        QTest::newRow("not only letters") << u"# 标题\n\n🙂\tx"_s;
        QTest::newRow("long") << u"line\n"_s.repeated(200'000);
    }

    void everyTextComesBack()
    {
        QFETCH(const QString, text);
        m_planner->clock.advance(1);
        save(text);
        m_planner->clock.advance(1);
        save(u"other"_s);
        QCOMPARE(texts().constFirst(), text);
    }

    void aDamagedVersionIsNoText()
    {
        m_planner->clock.advance(1);
        save(u"one"_s);
        const QString folder = u"/Versions/"_s + uuidText(m_id) + u'/';
        const QString file = folder + m_planner->files.fileNames(folder.chopped(1)).constFirst();
        const QByteArray bytes = *m_planner->files.read(file);
        for (qsizetype offset = 0; offset < bytes.size(); ++offset) {
            QByteArray damaged = bytes;
            damaged[offset] = static_cast<char>(damaged.at(offset) ^ 16);
            m_planner->files.write(file, damaged);
            const std::optional<QString> text =
                library().versions().text(m_id, library().versions().list(m_id).constFirst());
            // Some bits only say how much room to make, or fill up a byte.
            QVERIFY2(!text || text == u"# Notes\n"_s, qPrintable(QString::number(offset)));
        }
    }

    void aTextThatIsNotSavedKeepsNoVersion()
    {
        m_planner->files.failNextWrites(10);
        QVERIFY(!library().saveDocument(library().documents().constFirst(), u"x"_s));
        QVERIFY(library().versions().list(m_id).isEmpty());
    }

private:
    [[nodiscard]] DocumentLibrary &library() const { return m_planner->library(); }
    void save(const QString &text) { QVERIFY(library().saveDocument(library().documents().constFirst(), text)); }

    /// The newest first.
    [[nodiscard]] QStringList texts() const
    {
        QStringList texts;
        for (const Instant moment : library().versions().list(m_id))
            texts.append(library().versions().text(m_id, moment).value_or(u"?"_s));
        return texts;
    }

    std::unique_ptr<StoreUnderTest> m_planner;
    QUuid m_id;
};

TESSALY_TEST_MAIN(DocumentVersionsTest)
#include "DocumentVersionsTest.moc"
