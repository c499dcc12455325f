#include "views/documents/SourceText.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

/// A part of the document; unlike QTextDocument's own plain text it leaves every character but the line ends as it is.
QString textBetween(const QTextDocument &document, int begin, int end)
{
    QString text;
    for (QTextBlock block = document.findBlock(begin); block.isValid() && block.position() < end;
         block = block.next()) {
        const int from = std::max(begin - block.position(), 0);
        const int length = block.length() - 1;
        text += block.text().mid(from, std::min(end - block.position(), length) - from);
        if (end - block.position() > length)
            text += u'\n';
    }
    return text;
}

QTextBlockFormat formatOfHeight(int lineHeight)
{
    QTextBlockFormat format;
    format.setLineHeight(lineHeight, QTextBlockFormat::FixedHeight);
    return format;
}

/// Combining marks and the scripts from Hebrew to Georgian, with their forms; more is no harm.
bool needsShape(QChar c)
{
    const char16_t u = c.unicode();
    return u >= 0x0300 && (u < 0x0370 || (u >= 0x0590 && u < 0x1100) || (u >= 0x1780 && u < 0x18B0) ||
                           (u >= 0xFB1D && u < 0xFE00) || (u >= 0xFE70 && u < 0xFEFF));
}

} // namespace

void SourceText::load(const QString &text)
{
    m_loaded = text;
    m_isEdited = false;
    m_text = text;
    if (text.contains(u'\r'))
        m_text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    lookForShapes(m_text);
}

QString SourceText::textToSave() const
{
    if (!m_isEdited)
        return m_loaded;
    const qsizetype firstEnd = m_loaded.indexOf(u'\n');
    const bool hasReturns = firstEnd > 0 && m_loaded.at(firstEnd - 1) == u'\r';
    return hasReturns ? QString(m_text).replace(u'\n', u"\r\n"_s) : m_text;
}

void SourceText::show(QTextDocument &document, int lineHeight)
{
    m_document = &document;
    m_lineHeight = lineHeight;
    document.setUndoRedoEnabled(false);
    document.clear();
    // In one step, and the first line before the others, which take its format: a long text is laid out once.
    QTextCursor cursor(&document);
    cursor.beginEditBlock();
    cursor.setBlockFormat(formatOfHeight(lineHeight));
    cursor.insertText(m_text);
    cursor.endEditBlock();
    document.setUndoRedoEnabled(true);
    connect(&document, &QTextDocument::contentsChange, this, &SourceText::takeOver);
}

void SourceText::replace(const QString &text)
{
    if (m_document) {
        QTextCursor cursor(m_document);
        cursor.select(QTextCursor::Document);
        cursor.insertText(text);
    } else {
        m_text = text;
        lookForShapes(text);
        markEdited();
    }
}

void SourceText::append(const QString &text)
{
    if (m_document) {
        QTextCursor cursor(m_document);
        cursor.movePosition(QTextCursor::End);
        cursor.insertText(text);
    } else {
        m_text += text;
        lookForShapes(text);
        markEdited();
    }
}

void SourceText::takeOver(int position, int removed, int added)
{
    const int length = m_document->characterCount() - 1;
    const QString text = textBetween(*m_document, position, std::min(position + added, length));
    const qsizetype replaced = std::min<qsizetype>(removed, m_text.size() - position);
    if (replaced == text.size() && QStringView(m_text).mid(position, replaced) == text)
        return; // Only the look has changed.
    m_text.replace(position, replaced, text);
    // Larger changes may be reported with more characters than they touched.
    if (m_text.size() != length)
        m_text = textBetween(*m_document, 0, length);
    lookForShapes(text);
    markEdited();
    // Text pasted into an empty line has its own format. Deferred, because the document is still reporting the change.
    const int end = std::min(position + added, length);
    for (QTextBlock block = m_document->findBlock(position); block.isValid() && block.position() <= end;
         block = block.next()) {
        if (block.blockFormat().lineHeightType() != QTextBlockFormat::FixedHeight) {
            QMetaObject::invokeMethod(
                this, [=, this] { keepLineHeight(position, end); }, Qt::QueuedConnection);
            break;
        }
    }
}

void SourceText::keepLineHeight(int begin, int end)
{
    if (!m_document)
        return;
    const int last = m_document->characterCount() - 1;
    QTextCursor cursor(m_document);
    cursor.joinPreviousEditBlock(); // One undo takes back both.
    cursor.setPosition(std::min(begin, last));
    cursor.setPosition(std::min(end, last), QTextCursor::KeepAnchor);
    cursor.mergeBlockFormat(formatOfHeight(m_lineHeight));
    cursor.endEditBlock();
}

void SourceText::lookForShapes(QStringView text)
{
    if (m_needsShaping || std::none_of(text.begin(), text.end(), needsShape))
        return;
    m_needsShaping = true;
    emit needsShapingChanged();
}

void SourceText::markEdited()
{
    m_isEdited = true;
    emit edited();
}

} // namespace tessaly
