#include "store/DocumentSession.h"

#include "model/Uuid.h"
#include "store/RecordRows.h"

#include <chrono>
#include <utility>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds typingPause(300);
constexpr std::chrono::seconds longestDraftAge(2);

TextPair withPath(const TextPair &text, const QString &path)
{
    return {text.chinese.arg(path), text.english.arg(path)};
}

Message draftFailure()
{
    return {{u"无法写入草稿。请保存文档，或释放磁盘空间。"_s,
             u"The draft could not be written. Save the document, or free up disk space."_s},
            MessageKind::Failure};
}

} // namespace

DocumentSession::DocumentSession(std::function<QString()> text, QObject *parent)
    : QObject(parent), m_text(std::move(text))
{
    m_pauseTimer.setSingleShot(true);
    m_pauseTimer.setInterval(typingPause);
    m_draftTimer.setSingleShot(true);
    m_draftTimer.setInterval(longestDraftAge);
    connect(&m_pauseTimer, &QTimer::timeout, this, &DocumentSession::keepDraftInTime);
    connect(&m_draftTimer, &QTimer::timeout, this, &DocumentSession::keepDraftInTime);
}

DocumentSession::~DocumentSession()
{
    save();
}

std::optional<QString> DocumentSession::open(DocumentLibrary &library, const QUuid &id)
{
    const qsizetype row = rowOf(library.documents(), id);
    if (m_library || row < 0)
        return std::nullopt;
    m_library = &library;
    m_document = library.documents().at(row);
    m_title = m_document.title;
    m_categoryID = m_document.categoryID;
    DocumentText file = library.readDocument(m_document);
    using Read = DocumentText::State;
    m_state = file.state == Read::Read ? State::Saved : file.state == Read::Missing ? State::Blank : State::Unreadable;
    std::optional<DocumentDraft> draft = library.takeUpDraft(m_document, file.text);
    if (draft) {
        m_title = draft->title;
        m_categoryID = draft->categoryID;
        m_state = State::Typed;
    }
    m_textMessage = openingMessage(draft.has_value());
    emit changed();
    return draft ? std::move(draft->content) : std::move(file.text);
}

Message DocumentSession::openingMessage(bool hasDraft) const
{
    if (m_state == State::Unreadable)
        return {withPath({u"无法读取此文档的文件，因此无法显示或修改其文字：%1"_s,
                          u"The file of this document cannot be read, so its text can be neither shown nor changed: "
                          "%1"_s},
                         m_library->documentPath(m_document)),
                MessageKind::Failure};
    const Message restored{{u"已恢复上次未保存的修改。"_s, u"Changes that had not been saved were restored."_s},
                           MessageKind::Notice};
    const Message unwritable{withPath({u"无法写入保存位置，修改将无法保存：%1"_s,
                                       u"The save location is not writable, so changes cannot be saved: %1"_s},
                                      m_library->documentSaveLocation()),
                             MessageKind::Failure};
    return joined(hasDraft ? restored : Message(), m_library->canSaveDocuments() ? Message() : unwritable);
}

void DocumentSession::setTitle(const QString &title)
{
    if (std::exchange(m_title, title) != title)
        detailsEdited();
}

void DocumentSession::setCategoryID(const std::optional<QUuid> &categoryID)
{
    if (std::exchange(m_categoryID, categoryID) != categoryID)
        detailsEdited();
}

void DocumentSession::detailsEdited()
{
    startDraftTimers();
    if (!std::exchange(m_areDetailsUnsaved, true))
        emit changed();
}

void DocumentSession::edit()
{
    startDraftTimers();
    if (m_state != State::Blank && m_state != State::Saved)
        return;
    m_state = State::Typed;
    emit changed();
}

void DocumentSession::startDraftTimers()
{
    m_pauseTimer.start();
    if (!m_draftTimer.isActive())
        m_draftTimer.start();
}

bool DocumentSession::keepDraft()
{
    m_pauseTimer.stop();
    m_draftTimer.stop();
    // Restoring text that was never typed would replace the real one.
    return m_state > State::Blank && m_library->keepDraft(m_document, {m_title, m_categoryID, m_text()});
}

void DocumentSession::keepDraftInTime()
{
    const bool isKept = keepDraft() || m_state <= State::Blank;
    const bool wasKept = m_textMessage != draftFailure();
    if (isKept == wasKept || (!isKept && m_textMessage.kind == MessageKind::Failure))
        return;
    m_textMessage = isKept ? Message() : draftFailure();
    emit changed();
}

std::optional<QString> DocumentSession::importImage(const QUrl &image)
{
    std::optional<QString> url = m_library->importImage(m_document, image);
    if (!url)
        report({{u"无法将图片复制到文档的图片文件夹，因此未插入图片。"_s,
                 u"The image could not be copied to the document's image folder, so it was not inserted."_s},
                MessageKind::Failure});
    return url;
}

bool DocumentSession::save()
{
    if (m_state == State::Closed)
        return true;
    m_library->renameDocument(m_document, m_title);
    m_library->setDocumentCategory(m_document, m_categoryID);
    m_areDetailsUnsaved = false;
    if (m_state == State::Unreadable) {
        emit changed();
        return true;
    }
    const DocumentWrite outcome = m_library->saveDocument(m_document, m_text());
    if (outcome) {
        m_state = State::Saved;
        m_pauseTimer.stop();
        m_draftTimer.stop();
        m_textMessage = {};
    } else {
        keepDraft();
        m_textMessage = {{u"无法保存文档。文字仍保留在此处，请检查保存位置和磁盘空间后再次保存。"_s,
                          u"The document could not be saved. Your text is still here: check the save location and the "
                          "disk space, then save again."_s},
                         MessageKind::Failure};
    }
    if (!outcome.keptVersion.isEmpty()) {
        // The names of all its files begin with the same id, which would only confuse.
        const QString ending = outcome.keptVersion.mid(uuidText(m_document.id).size());
        m_textMessage = {withPath({u"其他程序改动过此文档，那个版本已另存为“…%1”。"_s,
                                   u"Another program changed this document; its version was saved as “…%1”."_s},
                                  ending),
                         MessageKind::Notice};
    }
    emit changed();
    if (outcome)
        emit saved();
    return bool(outcome);
}

bool DocumentSession::mayCloseWindow()
{
    const bool wasHeld = m_state == State::Held;
    if (save() || wasHeld || !isTextUnsaved())
        return true;
    m_state = State::Held;
    const TextPair next =
        keepDraft() ? TextPair{u"再次关闭窗口会将其留作草稿，下次打开此文档时恢复。"_s,
                               u"Close the window again to keep it as a draft, which is restored when you open the "
                               "document."_s}
                    : TextPair{u"再次关闭窗口将放弃这些文字。"_s, u"Close the window again to discard it."_s};
    m_textMessage = joined(m_textMessage, {next, MessageKind::Failure});
    emit changed();
    return false;
}

bool DocumentSession::leave()
{
    if (!save() && isTextUnsaved())
        return false;
    m_state = State::Closed;
    return true;
}

Message DocumentSession::message() const
{
    // Nothing else matters while text may be lost.
    return m_textMessage.kind == MessageKind::Failure ? m_textMessage : joined(m_textMessage, m_actionMessage);
}

Message DocumentSession::keptVersion() const
{
    return !isTextUnsaved() && m_textMessage.kind == MessageKind::Notice ? m_textMessage : Message();
}

void DocumentSession::report(const Message &message)
{
    m_actionMessage = message;
    emit changed();
}

void DocumentSession::dismissMessage()
{
    m_textMessage = {};
    report({});
}

} // namespace tessaly
