#include "tests/support/TestMain.h"
#include "tests/system/PlannerOnDisk.h"

#include <QDir>
#include <QTemporaryDir>

using namespace tessaly;
using namespace Qt::StringLiterals;

namespace {

/// Waits for an answer that comes from another thread.
Result<void> finished(const std::function<void(PlannerArchive::Completion)> &work)
{
    std::optional<Result<void>> result;
    work([&result](const Result<void> &done) { result = done; });
    if (!QTest::qWaitFor([&] { return result.has_value(); }, 30'000))
        return Error{ErrorCode::ArchiveUnreadable};
    return *result;
}

} // namespace

// What an import does to the documents that are here already.
class ArchiveTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        m_planner = PlannerOnDisk::open(m_directory->path());
        QVERIFY(m_planner);
        m_archive = m_directory->filePath(u"all.zip"_s);
        m_document = *library().addDocument(u"Plan"_s, std::nullopt);
        save(u"as exported"_s);
        QVERIFY(finished([this](const auto &done) { m_planner->store().archive().write(m_archive, done); }));
    }

    void aTextThatIsReplacedStaysAsAVersion()
    {
        save(u"written later"_s);
        import();
        QCOMPARE(library().readDocument(m_document).text, u"as exported"_s);
        QVERIFY2(versions().contains(u"written later"_s), qPrintable(versions().join(u'\n')));
    }

    void aTextThatIsTheSameBecomesNoVersion()
    {
        const QStringList before = versions();
        import();
        QCOMPARE(versions(), before);
    }

    void aDocumentThatIsRemovedCanBeRestoredByItself()
    {
        const MarkdownDocument later = *library().addDocument(u"Later"_s, std::nullopt);
        QVERIFY(library().saveDocument(later, u"text"_s));
        import();
        QCOMPARE(library().documents().size(), 1);
        QCOMPARE(library().deletedDocuments().size(), 1);
        library().restoreDocument(later.id);
        QCOMPARE(library().readDocument(later).text, u"text"_s);
    }

    void oneUndoBringsTheRemovedDocumentBack()
    {
        const MarkdownDocument later = *library().addDocument(u"Later"_s, std::nullopt);
        import();
        m_planner->store().undo();
        QVERIFY(library().deletedDocuments().isEmpty());
        QCOMPARE(library().readDocument(later).text, u"# Later\n"_s);
        m_planner->store().redo();
        QCOMPARE(library().deletedDocuments().size(), 1);
    }

private:
    [[nodiscard]] DocumentLibrary &library() const { return m_planner->store().documentLibrary(); }
    void save(const QString &text) { QVERIFY(library().saveDocument(m_document, text)); }
    void import()
    {
        QVERIFY(finished([this](const auto &done) { m_planner->store().archive().read(m_archive, done); }));
    }

    [[nodiscard]] QStringList versions() const
    {
        QStringList texts;
        for (const Instant moment : library().versions().list(m_document.id))
            texts.append(library().versions().text(m_document.id, moment).value_or(QString()));
        return texts;
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<PlannerOnDisk> m_planner;
    MarkdownDocument m_document;
    QString m_archive;
};

TESSALY_TEST_MAIN(ArchiveTest)
#include "ArchiveTest.moc"
