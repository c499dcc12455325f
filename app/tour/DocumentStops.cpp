#include "app/tour/TourStop.h"
#include "store/PlannerStore.h"
#include "views/documents/DocumentLibraryViewModel.h"

#include <QDeadlineTimer>
#include <QQuickItem>
#include <QQuickWindow>

#include <algorithm>

namespace tessaly {

namespace {

/// The newest document of the first category, which has something of everything.
void openLecture(DocumentLibraryViewModel &documents)
{
    const QList<DocumentListRow> &rows = documents.rows()->rows();
    const auto category = std::find_if(
        rows.cbegin(), rows.cend(), [](const DocumentListRow &row) { return row.kind == DocumentRow::Kind::Category; });
    const int row = static_cast<int>(category - rows.cbegin());
    documents.setExpanded(row, true);
    documents.openDocument(row + 1);
}

TourStop documentVersions()
{
    const auto open = [](QObject &content, QObject &screen) {
        openLecture(*screen.findChild<DocumentLibraryViewModel *>());
        const auto *window = qobject_cast<const QQuickItem *>(&content)->window();
        const auto openPage = [window]() -> QObject * {
            const QObjectList pages = window->findChildren<QObject *>(QStringLiteral("editorPage"));
            const auto open = std::ranges::find_if(pages, [](auto *page) { return page->property("opened").toBool(); });
            return open == pages.cend() ? nullptr : *open;
        };
        // The text comes once the page is open.
        const QDeadlineTimer deadline(tourPatienceMs);
        do
            rest();
        while (!openPage() && !deadline.hasExpired());
        if (!openPage())
            qFatal("No document opens");
        auto *toolbar = openPage()->findChild<QObject *>(QStringLiteral("editorToolbar"));
        QMetaObject::invokeMethod(toolbar, "versionsRequested");
    };
    const auto close = [](QObject &content, QObject &screen) {
        closeNamed(content, QStringLiteral("documentVersions"));
        leaveToOverview(content, screen);
    };
    return {QStringLiteral("sheet-document-versions"), ShellModel::Documents, open, close};
}

TourStop recentlyDeleted()
{
    const auto open = onViewModel<DocumentLibraryViewModel>([](DocumentLibraryViewModel &documents) {
        DocumentLibrary &library = documents.store()->documentLibrary();
        library.deleteDocument(library.documents().constLast());
        for (int row = 0; row < documents.rows()->rowCount(); ++row)
            documents.setExpanded(row, documents.rows()->rows().at(row).kind == DocumentRow::Kind::RecentlyDeleted);
    });
    return {QStringLiteral("documents-deleted"), ShellModel::Documents, open, undoAndLeave(1)};
}

} // namespace

QList<TourStop> documentStops()
{
    return {
        {QStringLiteral("documents"), ShellModel::Documents},
        {QStringLiteral("editor"), ShellModel::Documents, onViewModel(openLecture), leaveToOverview},
        documentVersions(),
        recentlyDeleted(),
    };
}

} // namespace tessaly
