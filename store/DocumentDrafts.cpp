#include "store/DocumentDrafts.h"

#include "model/Uuid.h"
#include "platform/FileSystem.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <utility>

namespace tessaly {

using namespace Qt::StringLiterals;

DocumentDrafts::DocumentDrafts(FileSystem &files, QString path) : m_files(files), m_path(std::move(path))
{
}

QString DocumentDrafts::filePath(const QUuid &documentID) const
{
    return m_path + u'/' + uuidText(documentID) + u".json"_s;
}

std::optional<DocumentDraft> DocumentDrafts::draft(const QUuid &documentID) const
{
    const QJsonObject json =
        QJsonDocument::fromJson(m_files.read(filePath(documentID)).value_or(QByteArray())).object();
    const QJsonValue content = json["content"_L1];
    if (!content.isString())
        return std::nullopt;
    DocumentDraft draft{.title = json["title"_L1].toString(), .categoryID = {}, .content = content.toString()};
    if (const QUuid category = QUuid::fromString(json["categoryID"_L1].toString()); !category.isNull())
        draft.categoryID = category;
    draft.version = QByteArray::fromHex(json["version"_L1].toString().toLatin1());
    return draft;
}

bool DocumentDrafts::keep(const QUuid &documentID, const DocumentDraft &draft)
{
    QJsonObject json{{u"title"_s, draft.title},
                     {u"content"_s, draft.content},
                     {u"version"_s, QString::fromLatin1(draft.version.toHex())}};
    if (draft.categoryID)
        json.insert(u"categoryID"_s, uuidText(*draft.categoryID));
    m_files.makeFolder(m_path);
    return m_files.write(filePath(documentID), QJsonDocument(json).toJson(QJsonDocument::Compact));
}

void DocumentDrafts::drop(const QUuid &documentID)
{
    m_files.remove(filePath(documentID));
}

} // namespace tessaly
