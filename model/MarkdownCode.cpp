#include "model/MarkdownCode.h"

#include <algorithm>

namespace tessaly {

namespace {

qsizetype runLength(QStringView text, QChar c)
{
    qsizetype end = 0;
    while (end < text.size() && text.at(end) == c)
        ++end;
    return end;
}

bool isBlank(QStringView text)
{
    return text.trimmed().isEmpty();
}

/// The fence that opens with this text, or nothing.
QStringView fenceAt(QStringView text)
{
    for (const QChar mark : {QChar(u'`'), QChar(u'~')}) {
        const qsizetype length = runLength(text, mark);
        // The text after a fence of backticks has none, else it is an inline code span.
        if (length >= 3 && (mark == u'~' || !text.mid(length).contains(u'`')))
            return text.first(length);
    }
    return {};
}

bool closesFence(QStringView text, QStringView fence)
{
    const qsizetype length = runLength(text, fence.front());
    return length >= fence.size() && isBlank(text.mid(length));
}

/// Whether no paragraph goes on after this line: a heading, its underline, or a rule.
bool endsParagraph(QStringView text)
{
    const qsizetype hashes = runLength(text, u'#');
    if (hashes > 0)
        return hashes <= 6 && (hashes == text.size() || text.at(hashes).isSpace());
    const QChar mark = text.front();
    if (mark != u'-' && mark != u'=' && mark != u'*' && mark != u'_')
        return false;
    return text.count(mark) >= 3 &&
           std::all_of(text.begin(), text.end(), [mark](QChar c) { return c == mark || c.isSpace(); });
}

/// The length of the list marker that the text begins with, or 0.
qsizetype markerLength(QStringView text)
{
    qsizetype length = 0;
    while (length < text.size() && length < 10 && text.at(length) >= u'0' && text.at(length) <= u'9')
        ++length;
    if (length == text.size())
        return 0;
    const QChar mark = text.at(length);
    const bool isMark = length > 0 ? mark == u'.' || mark == u')' : mark == u'-' || mark == u'+' || mark == u'*';
    if (!isMark)
        return 0;
    ++length;
    return length == text.size() || text.at(length).isSpace() ? length : 0;
}

/// Reads a text line by line.
class CodeFinder
{
public:
    explicit CodeFinder(QStringView text) : m_text(text) {}

    QList<TextRange> run()
    {
        for (qsizetype begin = 0; begin < m_text.size(); begin = m_end) {
            const qsizetype lineEnd = m_text.indexOf(u'\n', begin);
            m_end = lineEnd < 0 ? m_text.size() : lineEnd + 1;
            m_at = begin;
            m_column = 0;
            readLine();
        }
        return std::move(m_blocks);
    }

private:
    [[nodiscard]] QStringView rest() const { return m_text.mid(m_at, m_end - m_at); }

    void skipBlanks()
    {
        for (; m_at < m_end && (m_text.at(m_at) == u' ' || m_text.at(m_at) == u'\t'); ++m_at)
            m_column += m_text.at(m_at) == u'\t' ? 4 - m_column % 4 : 1;
    }

    void readLine()
    {
        const qsizetype begin = m_at;
        skipQuotes();
        skipBlanks();
        if (!m_fence.isEmpty()) {
            if (isBlank(rest()) || m_column >= itemColumn()) {
                m_blocks.append({begin, m_end});
                if (closesFence(rest(), m_fence))
                    m_fence = {};
                return;
            }
            m_fence = {}; // It ends with the list item or the quote that holds it.
        }
        if (isBlank(rest()))
            m_isParagraph = false;
        else
            while (readBlock(begin)) {
            }
    }

    void skipQuotes()
    {
        int quotes = 0;
        for (qsizetype at = m_at; at < m_end; ++at) {
            const QChar c = m_text.at(at);
            if (c == u'>') {
                ++quotes;
                m_at = at + 1;
                if (m_at < m_end && m_text.at(m_at) == u' ')
                    ++m_at;
            } else if (c != u' ' || at - m_at >= 3) {
                break;
            }
        }
        if (quotes == m_quotes || (quotes == 0 && m_isParagraph && m_fence.isEmpty() && !isBlank(rest())))
            return; // Without its mark, a line goes on with a paragraph.
        m_quotes = quotes;
        m_items.clear();
        m_isParagraph = false;
        m_fence = {};
    }

    [[nodiscard]] qsizetype itemColumn() const { return m_items.isEmpty() ? 0 : m_items.last(); }

    /// Reads what begins at this place of the line; true if it is a list item, whose text is to be read, too.
    bool readBlock(qsizetype lineBegin)
    {
        const auto outer = std::upper_bound(m_items.cbegin(), m_items.cend(), m_column);
        const qsizetype depth = outer - m_items.cbegin();
        const qsizetype indent = m_column - (depth > 0 ? m_items.at(depth - 1) : 0);
        if (indent >= 4) {
            if (!m_isParagraph) {
                m_items.resize(depth);
                m_blocks.append({lineBegin, m_end});
            }
            return false;
        }
        if (const QStringView fence = fenceAt(rest()); !fence.isEmpty()) {
            m_items.resize(depth);
            m_fence = fence;
            m_isParagraph = false;
            m_blocks.append({m_at, m_end});
            return false;
        }
        if (endsParagraph(rest())) {
            m_items.resize(depth);
            m_isParagraph = false;
            return false;
        }
        const qsizetype marker = markerLength(rest());
        if (marker == 0 || (m_isParagraph && depth == m_items.size() && !mayInterrupt(marker))) {
            if (!m_isParagraph)
                m_items.resize(depth);
            m_isParagraph = true;
            return false;
        }
        m_items.resize(depth);
        return readItem(marker);
    }

    /// Of numbered lists, only one that begins with 1 does so in the midst of a paragraph; an empty item never.
    [[nodiscard]] bool mayInterrupt(qsizetype marker) const
    {
        const bool isNumbered = rest().front().isDigit();
        return !isBlank(rest().mid(marker)) && (!isNumbered || rest().first(marker - 1) == u"1");
    }

    bool readItem(qsizetype marker)
    {
        m_isParagraph = false;
        m_at += marker;
        m_column += marker;
        const qsizetype textBegin = m_at;
        const qsizetype leastColumn = m_column + 1;
        skipBlanks();
        const bool isCode = m_column - leastColumn >= 4;
        m_items.append(isBlank(rest()) || isCode ? leastColumn : m_column);
        if (isCode && !isBlank(rest()))
            m_blocks.append({textBegin, m_end});
        return !isCode && !isBlank(rest());
    }

    QStringView m_text;
    QList<TextRange> m_blocks;
    /// The columns at which the texts of the open list items begin, outermost first.
    QList<qsizetype> m_items;
    QStringView m_fence;
    qsizetype m_at = 0;
    qsizetype m_end = 0;
    qsizetype m_column = 0;
    int m_quotes = 0;
    /// Whether the line before is text that the next may go on with.
    bool m_isParagraph = false;
};

} // namespace

QList<TextRange> codeBlocks(QStringView markdown)
{
    return CodeFinder(markdown).run();
}

} // namespace tessaly
