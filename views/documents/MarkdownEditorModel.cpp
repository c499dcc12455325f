#include "views/documents/MarkdownEditorModel.h"

#include "model/Uuid.h"
#include "platform/FileDialogs.h"
#include "store/RecordRows.h"
#include "views/documents/CategoryChoice.h"

#include <QPointer>
#include <QQuickItem>

#include <chrono>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds previewDelay(240);
constexpr std::chrono::milliseconds typingPause(300);
constexpr std::chrono::seconds longestDraftAge(2);

QStringList imageExtensions()
{
    return {u"png"_s, u"jpg"_s, u"jpeg"_s, u"gif"_s, u"webp"_s, u"heic"_s};
}

} // namespace

MarkdownEditorModel::MarkdownEditorModel(QObject *parent) : QObject(parent)
{
    m_previewTimer.setSingleShot(true);
    m_previewTimer.setInterval(previewDelay);
    connect(&m_source, &SourceText::edited, &m_previewTimer, qOverload<>(&QTimer::start));
    connect(&m_source, &SourceText::needsShapingChanged, this, &MarkdownEditorModel::needsShapingChanged);
    connect(&m_previewTimer, &QTimer::timeout, this, &MarkdownEditorModel::updatePreview);
    m_pauseTimer.setSingleShot(true);
    m_pauseTimer.setInterval(typingPause);
    m_draftTimer.setSingleShot(true);
    m_draftTimer.setInterval(longestDraftAge);
    connect(&m_pauseTimer, &QTimer::timeout, this, &MarkdownEditorModel::keepDraft);
    connect(&m_draftTimer, &QTimer::timeout, this, &MarkdownEditorModel::keepDraft);
}

MarkdownEditorModel::~MarkdownEditorModel()
{
    if (!m_isClosed)
        save();
}

void MarkdownEditorModel::open(const QString &documentId)
{
    const qsizetype row = rowOf(library().documents(), QUuid::fromString(documentId));
    if (m_document || row < 0)
        return;
    m_document = library().documents().at(row);
    m_title = m_document->title;
    m_categoryID = m_document->categoryID;
    DocumentText file = library().readDocument(*m_document);
    m_source.load(file.text);
    m_isBlank = file.state != DocumentText::State::Read;
    takeUpDraft();
    tellOfFault(file.state);
    m_previewContent = m_source.text();
    connect(m_store, &PlannerStore::interfaceLanguageChanged, this, &MarkdownEditorModel::categoriesChanged);
    connect(&library(), &DocumentLibrary::documentCategoriesChanged, this, &MarkdownEditorModel::categoriesChanged);
    emit opened();
    emit titleChanged();
    emit categoriesChanged();
    emit categoryChanged();
    emit previewContentChanged();
    emit messageChanged();
    connect(&m_source, &SourceText::edited, this, &MarkdownEditorModel::onTextEdited);
    connect(this, &MarkdownEditorModel::titleChanged, this, &MarkdownEditorModel::changed);
    connect(this, &MarkdownEditorModel::categoryChanged, this, &MarkdownEditorModel::changed);
}

void MarkdownEditorModel::takeUpDraft()
{
    const std::optional<DocumentDraft> draft = library().takeUpDraft(*m_document, m_source.textToSave());
    if (!draft)
        return;
    m_title = draft->title;
    m_categoryID = draft->categoryID;
    m_source.load(draft->content);
    m_isBlank = false;
    m_isTextUnsaved = true;
    m_draftMessage =
        m_store->text(u"已恢复上次未保存的修改。"_s, u"Changes that had not been saved were brought back."_s);
}

void MarkdownEditorModel::tellOfFault(DocumentText::State state)
{
    m_isUnreadable = state == DocumentText::State::Unreadable && m_isBlank;
    if (m_isUnreadable)
        m_openFailure = m_store
                            ->text(u"无法读取此文档的文件，因此无法显示或修改其文字：%1"_s,
                                   u"The file of this document cannot be read, so its text can be neither shown nor "
                                   "changed: %1"_s)
                            .arg(library().documentPath(*m_document));
    else if (!library().canSaveDocuments())
        m_openFailure = m_store
                            ->text(u"无法写入保存位置，修改将无法保存：%1"_s,
                                   u"The save location cannot be written to, so changes cannot be saved: %1"_s)
                            .arg(library().documentSaveLocation());
}

void MarkdownEditorModel::onTextEdited()
{
    m_isBlank = false;
    m_isTextUnsaved = true;
    changed();
}

void MarkdownEditorModel::changed()
{
    m_pauseTimer.start();
    if (!m_draftTimer.isActive())
        m_draftTimer.start();
}

bool MarkdownEditorModel::keepDraft()
{
    m_pauseTimer.stop();
    m_draftTimer.stop();
    // Brought back, a text of nobody would stand in the place of the real one.
    return !m_isBlank && library().keepDraft(*m_document, {m_title, m_categoryID, m_source.textToSave()});
}

void MarkdownEditorModel::showSource(QQuickTextDocument *document, int lineHeight)
{
    // Only what can be seen is drawn. The field would see to that by itself if the text came through its own property.
    if (auto *field = qobject_cast<QQuickItem *>(document->parent()))
        field->setFlag(QQuickItem::ItemObservesViewport);
    m_source.show(*document->textDocument(), lineHeight);
}

bool MarkdownEditorModel::isFresh() const
{
    return content() == u"# "_s + m_title + u'\n';
}

QStringList MarkdownEditorModel::categories() const
{
    return m_store ? categoryEntries(*m_store) : QStringList();
}

int MarkdownEditorModel::category() const
{
    return m_store ? categoryEntry(*m_store, m_categoryID) : 0;
}

void MarkdownEditorModel::setCategory(int entry)
{
    m_categoryID = categoryOfEntry(*m_store, entry);
    emit categoryChanged();
}

void MarkdownEditorModel::updatePreview()
{
    if (m_previewContent == content())
        return;
    m_previewContent = content();
    emit previewContentChanged();
}

bool MarkdownEditorModel::mayLeave()
{
    const bool isWarned = !m_saveFailure.isEmpty() && m_isLeaveRefused;
    if (save() || isWarned || !m_isTextUnsaved)
        return true;
    m_isLeaveRefused = true;
    m_saveFailure +=
        keepDraft() ? m_store->text(u"再次关闭窗口会将其留作草稿，下次打开此文档时恢复。"_s,
                                    u" Closing the window once more keeps it as a draft, which comes back when the "
                                    "document is opened."_s)
                    : m_store->text(u"再次关闭窗口将放弃这些文字。"_s, u" Closing the window once more gives it up."_s);
    emit messageChanged();
    return false;
}

bool MarkdownEditorModel::save()
{
    if (!m_document)
        return true;
    library().renameDocument(*m_document, m_title);
    library().setDocumentCategory(*m_document, m_categoryID);
    if (m_isUnreadable)
        return true;
    const DocumentWrite outcome = library().saveDocument(*m_document, m_source.textToSave());
    const bool isSaved = outcome.isWritten;
    m_isLeaveRefused = m_isLeaveRefused && !isSaved;
    m_saveFailure = isSaved ? QString()
                            : m_store->text(u"无法保存文档。文字仍保留在此处，请检查保存位置后再次保存。"_s,
                                            u"The document could not be saved. Your text is still here: check the save "
                                            "location, then save again."_s);
    m_keptVersionMessage = {};
    if (isSaved) {
        m_isBlank = false;
        m_isTextUnsaved = false;
        m_pauseTimer.stop();
        m_draftTimer.stop();
        m_draftMessage.clear();
        m_openFailure.clear();
    } else {
        keepDraft();
    }
    if (!outcome.keptVersion.isEmpty()) {
        // The id that the names of all its files begin with tells nobody anything.
        const QString ending = outcome.keptVersion.mid(uuidText(m_document->id).size());
        m_keptVersionMessage = {
            u"其他程序改动过此文档，那个版本已另存为“…%1”。"_s.arg(ending),
            u"Another program had changed this document; its version is kept as “…%1”."_s.arg(ending)};
    }
    emit messageChanged();
    if (isSaved)
        emit saved();
    return isSaved;
}

QString MarkdownEditorModel::message() const
{
    if (!m_saveFailure.isEmpty())
        return m_saveFailure;
    if (!m_openFailure.isEmpty())
        return m_draftMessage.isEmpty() ? m_openFailure : m_draftMessage + u' ' + m_openFailure;
    const QString &keptVersion = m_keptVersionMessage.in(m_store->interfaceLanguage());
    const bool isBoth = !m_copyMessage.isEmpty() && !keptVersion.isEmpty();
    if (m_copyMessage.isEmpty() && keptVersion.isEmpty())
        return m_draftMessage;
    // Where the line is too short for both, the end is left out.
    return keptVersion + (isBoth ? u" "_s : QString()) + m_copyMessage;
}

void MarkdownEditorModel::close()
{
    if (!save() && m_isTextUnsaved)
        return;
    m_isClosed = true;
    emit closed();
}

void MarkdownEditorModel::insertImage()
{
    if (!m_document || m_isUnreadable)
        return;
    const FileDialogs::FileQuestion question{.title = m_store->text(u"选择图片"_s, u"Choose image"_s),
                                             .extensions = imageExtensions()};
    m_desktop->fileDialogs().chooseFiles(question, [self = QPointer(this)](const QList<QUrl> &files) {
        if (self && !files.isEmpty())
            self->takeImage(files.first());
    });
}

void MarkdownEditorModel::takeImage(const QUrl &image)
{
    const std::optional<QString> url = library().importImage(*m_document, image);
    if (!url)
        return;
    const bool isAtLineStart = content().isEmpty() || content().endsWith(u'\n');
    append((isAtLineStart ? QString() : u"\n\n"_s) + u"![]("_s + *url + u")\n"_s);
}

void MarkdownEditorModel::copyForWeChat()
{
    if (m_isUnreadable)
        return;
    save();
    setCopyMessage(m_store->text(u"正在生成公众号格式…"_s, u"Preparing WeChat formatting…"_s), false);
    emit copyRequested(content());
}

void MarkdownEditorModel::finishCopy(bool isCopied)
{
    const QStringList outcome = DocumentDesktop::copyOutcome(isCopied);
    setCopyMessage(m_store->text(outcome.first(), outcome.last()), !isCopied);
}

void MarkdownEditorModel::refuseCopy()
{
    setCopyMessage(
        m_store->text(u"此系统缺少网页组件（Qt WebEngine），无法生成公众号格式。"_s,
                      u"The web engine (Qt WebEngine) is missing on this system, so the formatting cannot be "
                      "prepared."_s),
        true);
}

void MarkdownEditorModel::setCopyMessage(const QString &message, bool hasFailed)
{
    m_copyMessage = message;
    m_hasCopyFailed = hasFailed;
    emit messageChanged();
}

QFont MarkdownEditorModel::fontOf(const QStringList &families, int pixelSize, bool isShaped)
{
    QFont font;
    font.setFamilies(families);
    font.setPixelSize(pixelSize);
    font.setFixedPitch(true);
    // Source text has no ligatures: each character shows as what it is.
    font.setStyleStrategy(isShaped ? QFont::PreferAntialias
                                   : QFont::StyleStrategy(QFont::PreferAntialias | QFont::PreferNoShaping));
    return font;
}

} // namespace tessaly
