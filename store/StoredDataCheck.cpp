#include "store/StoredDataCheck.h"

#include "store/ErrorText.h"
#include "store/PlannerStore.h"

#include <QPointer>

namespace tessaly {

namespace {

/// Why the text of the document cannot be read; nothing where it can.
std::optional<QString> problemWith(const MarkdownDocument &document, PlannerStore &store)
{
    const QString path = store.documentLibrary().documentPath(document);
    switch (store.documentLibrary().readDocument(document).state) {
    case DocumentText::State::Read:
        return std::nullopt;
    case DocumentText::State::Missing:
        return store
            .text(QStringLiteral("文档“%1”的文件不见了：%2"),
                  QStringLiteral("The file of the document “%1” is missing: %2"))
            .arg(document.title, path);
    case DocumentText::State::Unreadable:
        return store
            .text(QStringLiteral("文档“%1”的文件无法读取，或不是 UTF-8 文本：%2"),
                  QStringLiteral("The file of the document “%1” cannot be read, or is not UTF-8 text: %2"))
            .arg(document.title, path);
    }
    Q_UNREACHABLE();
}

} // namespace

void checkStoredData(PlannerStore &store, const std::function<void(const StoredDataReport &)> &completion)
{
    store.generations().check([self = QPointer(&store), completion](const GenerationsReport &found) {
        if (!self)
            return;
        StoredDataReport report{.generations = found.checked, .documents = self->documentLibrary().documents().size()};
        if (found.present)
            report.problems.append(self->text(QStringLiteral("数据库："), QStringLiteral("The database: ")) +
                                   errorText(*found.present, self->interfaceLanguage()));
        for (const Generation &generation : found.damaged)
            report.problems.append(self->text(QStringLiteral("%1 的历史版本已损坏。"),
                                              QStringLiteral("The earlier version of %1 is damaged."))
                                       .arg(self->dateText(generation.moment, false)));
        for (const MarkdownDocument &document : self->documentLibrary().documents()) {
            if (std::optional<QString> problem = problemWith(document, *self))
                report.problems.append(*std::move(problem));
        }
        completion(report);
    });
}

} // namespace tessaly
