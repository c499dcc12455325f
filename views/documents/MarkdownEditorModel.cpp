#include "views/documents/MarkdownEditorModel.h"

#include "platform/FileDialogs.h"
#include "views/documents/CategoryChoice.h"

#include <QPointer>
#include <QQuickItem>

#include <chrono>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds previewDelay(240);

QStringList imageExtensions()
{
    return {u"png"_s, u"jpg"_s, u"jpeg"_s, u"gif"_s, u"webp"_s, u"heic"_s};
}

} // namespace

MarkdownEditorModel::MarkdownEditorModel(QObject *parent)
    : QObject(parent), m_session([this] { return m_source.textToSave(); })
{
    m_previewTimer.setSingleShot(true);
    m_previewTimer.setInterval(previewDelay);
    connect(&m_source, &SourceText::edited, &m_previewTimer, qOverload<>(&QTimer::start));
    connect(&m_source, &SourceText::edited, &m_session, &DocumentSession::edit);
    connect(&m_source, &SourceText::needsShapingChanged, this, &MarkdownEditorModel::needsShapingChanged);
    connect(&m_session, &DocumentSession::changed, this, &MarkdownEditorModel::sessionChanged);
    connect(&m_session, &DocumentSession::saved, this, &MarkdownEditorModel::saved);
    connect(&m_previewTimer, &QTimer::timeout, this, &MarkdownEditorModel::updatePreview);
}

void MarkdownEditorModel::open(const QString &documentId)
{
    const std::optional<QString> text = m_session.open(m_store->documentLibrary(), QUuid::fromString(documentId));
    if (!text)
        return;
    m_source.load(*text);
    m_previewContent = m_source.text();
    connect(m_store, &PlannerStore::interfaceLanguageChanged, this, &MarkdownEditorModel::categoriesChanged);
    connect(m_store, &PlannerStore::interfaceLanguageChanged, this, &MarkdownEditorModel::sessionChanged);
    connect(&m_store->documentLibrary(), &DocumentLibrary::documentCategoriesChanged, this,
            &MarkdownEditorModel::categoriesChanged);
    emit opened();
    emit titleChanged();
    emit categoriesChanged();
    emit categoryChanged();
    emit previewContentChanged();
    emit sessionChanged();
}

void MarkdownEditorModel::showSource(QQuickTextDocument *document, int lineHeight)
{
    // Only visible text is drawn. The field would set this flag itself if the text were set through its property.
    if (auto *field = qobject_cast<QQuickItem *>(document->parent()))
        field->setFlag(QQuickItem::ItemObservesViewport);
    m_source.show(*document->textDocument(), lineHeight);
}

bool MarkdownEditorModel::isFresh() const
{
    return content() == u"# "_s + title() + u'\n';
}

void MarkdownEditorModel::setTitle(const QString &title)
{
    m_session.setTitle(title);
    emit titleChanged();
}

QStringList MarkdownEditorModel::categories() const
{
    return m_store ? categoryEntries(*m_store) : QStringList();
}

int MarkdownEditorModel::category() const
{
    return m_store ? categoryEntry(*m_store, m_session.categoryID()) : 0;
}

void MarkdownEditorModel::setCategory(int entry)
{
    m_session.setCategoryID(categoryOfEntry(*m_store, entry));
    emit categoryChanged();
}

QUrl MarkdownEditorModel::baseUrl() const
{
    return m_store ? QUrl::fromLocalFile(m_store->documentLibrary().documentSaveLocation()) : QUrl();
}

void MarkdownEditorModel::updatePreview()
{
    if (m_previewContent == content())
        return;
    m_previewContent = content();
    emit previewContentChanged();
}

QString MarkdownEditorModel::message() const
{
    return m_store ? m_session.message().text.in(m_store->interfaceLanguage()) : QString();
}

QStringList MarkdownEditorModel::keptVersionTexts() const
{
    const TextPair text = m_session.keptVersion().text;
    return {text.chinese, text.english};
}

void MarkdownEditorModel::restoreText(const QString &text)
{
    if (!isEditable() || !m_session.save())
        return;
    m_source.replace(text);
    updatePreview();
    if (m_session.save())
        m_session.report({{u"已恢复所选版本。"_s, u"The chosen version is restored."_s}, MessageKind::Success});
}

void MarkdownEditorModel::close()
{
    if (m_session.leave())
        emit closed();
}

void MarkdownEditorModel::insertImage()
{
    if (!isEditable())
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
    if (!DocumentDesktop::canShow(image)) {
        m_session.report({{u"此系统无法显示 HEIC 图片，因此未插入。请先将其转换为 JPEG 或 PNG。"_s,
                           u"This system cannot show HEIC images, so the image was not inserted. Convert it to JPEG or "
                           "PNG first."_s},
                          MessageKind::Failure});
        return;
    }
    const std::optional<QString> url = m_session.importImage(image);
    if (!url)
        return;
    const bool isAtLineStart = content().isEmpty() || content().endsWith(u'\n');
    append((isAtLineStart ? QString() : u"\n\n"_s) + u"![]("_s + *url + u")\n"_s);
    m_session.report(
        {{u"已在文末插入图片。"_s, u"Image inserted at the end of the document."_s}, MessageKind::Success});
    emit imageInserted();
    updatePreview();
}

void MarkdownEditorModel::copyForWeChat()
{
    if (!isEditable())
        return;
    save();
    m_session.report({{u"正在生成公众号格式…"_s, u"Preparing WeChat formatting…"_s}, MessageKind::Progress});
    emit copyRequested(content());
}

void MarkdownEditorModel::finishCopy(bool isCopied)
{
    const QStringList outcome = DocumentDesktop::copyOutcome(isCopied);
    m_session.report({{outcome.first(), outcome.last()}, isCopied ? MessageKind::Success : MessageKind::Failure});
}

void MarkdownEditorModel::refuseCopy()
{
    m_session.report({{u"此系统缺少网页组件（Qt WebEngine），无法生成公众号格式。"_s,
                       u"The web engine (Qt WebEngine) is missing on this system, so the formatting cannot be "
                       "prepared."_s},
                      MessageKind::Failure});
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
