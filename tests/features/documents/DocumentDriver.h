#pragma once

#include "tests/store/StoreUnderTest.h"
#include "tests/support/FakeFileDialogs.h"
#include "views/documents/DocumentLibraryViewModel.h"

#include "model/Uuid.h"

#include <QAbstractItemModelTester>

namespace tessaly {

/// The documents screen over fakes, in English.
struct DocumentDriver : StoreUnderTest
{
    FakeFileDialogs fileDialogs;
    DocumentDesktop desktop{fileDialogs};
    std::unique_ptr<DocumentLibraryViewModel> screen;
    std::unique_ptr<QAbstractItemModelTester> tester;
    /// Titles of the documents that were to be opened in the editor.
    QStringList edited;

    void openScreen()
    {
        if (!store)
            startInEnglish();
        tester.reset();
        screen = std::make_unique<DocumentLibraryViewModel>();
        screen->setStore(store.get());
        screen->setProperty("desktop", QVariant::fromValue(&desktop));
        tester = std::make_unique<QAbstractItemModelTester>(screen->rows(),
                                                            QAbstractItemModelTester::FailureReportingMode::Fatal);
        QObject::connect(screen.get(), &DocumentLibraryViewModel::editRequested, screen.get(),
                         [this](const QString &id) {
                             for (const MarkdownDocument &document : library().documents()) {
                                 if (uuidText(document.id) == id)
                                     edited.append(document.title);
                             }
                         });
    }

    /// Adds a document a minute after the last change.
    MarkdownDocument has(const QString &title, const QString &category = {})
    {
        if (!store)
            startInEnglish();
        clock.advance(60);
        std::optional<QUuid> categoryID;
        for (const MarkdownCategory &known : library().documentCategories()) {
            if (known.name == category)
                categoryID = known.id;
        }
        return *library().addDocument(title, categoryID);
    }
    void hasCategory(const QString &name)
    {
        if (!store)
            startInEnglish();
        library().addDocumentCategory(name);
    }
    void fill(const char *field, const QString &text) const { screen->setProperty(field, text); }

    [[nodiscard]] int row(const QString &title) const
    {
        const QList<DocumentListRow> &rows = screen->rows()->rows();
        for (int row = 0; row < rows.size(); ++row) {
            if (rows.at(row).title == title)
                return row;
        }
        return -1;
    }
    /// "v" or ">" before the header of an open or closed group, "-" before a document; "*" while the name is edited.
    [[nodiscard]] QStringList shown() const
    {
        QStringList lines;
        for (const DocumentListRow &row : screen->rows()->rows()) {
            using Kind = DocumentRow::Kind;
            const QString mark = row.isExpanded ? QStringLiteral("v ") : QStringLiteral("> ");
            switch (row.kind) {
            case Kind::Uncategorized:
                lines.append(mark + QStringLiteral("(none)"));
                break;
            case Kind::Category:
                lines.append(mark + row.title + (row.isEditing ? QStringLiteral("*") : QString()));
                break;
            case Kind::Document:
                lines.append(QStringLiteral("- ") + row.title);
                break;
            case Kind::NoDocuments:
                lines.append(QStringLiteral("(no documents)"));
                break;
            case Kind::RecentlyDeleted:
                lines.append(mark + QStringLiteral("(deleted)"));
                break;
            case Kind::Deleted:
                lines.append(QStringLiteral("x ") + row.title);
            }
        }
        return lines;
    }
};

} // namespace tessaly
