#include "model/MarkdownBlocks.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

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

enum class HtmlStart { None, Pre, Comment, Tag, LoneTag };

/// The HTML block that begins with this line, if any. A tag that is no block's by its name makes one if it stands
/// alone.
HtmlStart htmlStart(QStringView line)
{
    if (line.front() != u'<')
        return HtmlStart::None;
    if (line.startsWith(u"<!--"))
        return HtmlStart::Comment;
    static const QRegularExpression pre(u"^<pre(?:[\\s>]|$)"_s, QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression tag(
        u"^</?(?:address|article|aside|base|basefont|blockquote|body|caption|center|col|colgroup|dd|details|dialog|dir"
        "|div|dl|dt|fieldset|figcaption|figure|footer|form|frame|frameset|h[1-6]|head|header|hr|html|iframe|legend|li"
        "|link|main|menu|menuitem|meta|nav|noframes|ol|optgroup|option|p|param|search|section|summary|table|tbody|td"
        "|tfoot|th|thead|title|tr|track|ul)(?:[ \\t]|/?>|$)"_s,
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::MultilineOption);
    static const QRegularExpression loneTag(
        u"^<(?:/[a-z][a-z0-9-]*\\s*|(?!(?:script|style|textarea)\\b)[a-z][a-z0-9-]*"
        "(?:[ \\t]+[a-z_:][\\w.:-]*(?:[ \\t]*=[ \\t]*(?:\"[^\"]*\"|'[^']*'|[^\\s\"'=<>`]+))?)*[ \\t]*/?)>[ \\t]*$"_s,
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::MultilineOption);
    if (pre.match(line).hasMatch())
        return HtmlStart::Pre;
    if (tag.match(line).hasMatch())
        return HtmlStart::Tag;
    return loneTag.match(line).hasMatch() ? HtmlStart::LoneTag : HtmlStart::None;
}

/// Whether a line cannot go on with the paragraph or the HTML block before it (as marked has it).
bool startsBlock(QStringView text)
{
    const HtmlStart html = htmlStart(text);
    return !fenceAt(text).isEmpty() || endsParagraph(text) || markerLength(text) > 0 ||
           (html != HtmlStart::None && html != HtmlStart::LoneTag);
}

/// Reads a text line by line.
class BlockFinder
{
public:
    explicit BlockFinder(QStringView text) : m_text(text) {}

    QList<LiteralBlock> run()
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
                if (m_column - itemColumn() < 4 && closesFence(rest(), m_fence))
                    m_fence = {};
                return;
            }
            m_fence = {}; // It ends with the list item or the quote that holds it.
        }
        if (m_html != HtmlStart::None) {
            const bool mayGoOn = begin > m_htmlLineEnd && !startsBlock(rest());
            if (isBlank(rest()) || m_column >= itemColumn() || mayGoOn) {
                readHtml();
                return;
            }
            m_html = HtmlStart::None; // It ends with the list item that holds it.
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
                if (quotes == m_quotes && (!m_fence.isEmpty() || m_html != HtmlStart::None))
                    break; // A sign of the open block.
                ++quotes;
                m_at = at + 1;
                if (m_at < m_end && m_text.at(m_at) == u' ')
                    ++m_at;
            } else if (c != u' ' || at - m_at >= 3) {
                break;
            }
        }
        const QStringView text = rest().trimmed();
        const bool isIndented = runLength(rest(), u' ') >= 4;
        const bool goesOn = quotes == 0 && m_isParagraph && !text.isEmpty() && (isIndented || !startsBlock(text));
        if (quotes == m_quotes || goesOn)
            return; // Without its mark, a line goes on with a paragraph.
        m_quotes = quotes;
        m_items.clear();
        m_isParagraph = false;
        m_fence = {};
        m_html = HtmlStart::None;
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
        if (const HtmlStart html = htmlStart(rest()); mayBegin(html)) {
            m_items.resize(depth);
            m_isParagraph = false;
            m_html = html;
            m_htmlLineEnd = m_end;
            readHtml();
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

    [[nodiscard]] bool mayBegin(HtmlStart html)
    {
        if (html != HtmlStart::Comment)
            return html != HtmlStart::None && (html != HtmlStart::LoneTag || !m_isParagraph);
        // One that nothing ends is shown as text.
        if (m_commentEnd >= 0 && m_commentEnd <= m_at)
            m_commentEnd = m_text.indexOf(u"-->", m_at + 2);
        return m_commentEnd >= 0;
    }

    /// Reads a line of the open HTML block.
    void readHtml()
    {
        const bool isLiteral = m_html == HtmlStart::Pre || m_html == HtmlStart::Comment;
        m_blocks.append({m_at, m_end, isLiteral ? LiteralBlock::Kind::Code : LiteralBlock::Kind::Html});
        const QStringView end = m_html == HtmlStart::Pre ? u"</pre>" : u"-->";
        if (isLiteral ? rest().contains(end, Qt::CaseInsensitive) : isBlank(rest()))
            m_html = HtmlStart::None;
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
    QList<LiteralBlock> m_blocks;
    /// The columns at which the texts of the open list items begin, outermost first.
    QList<qsizetype> m_items;
    QStringView m_fence;
    /// What the open HTML block began with.
    HtmlStart m_html = HtmlStart::None;
    /// The end of its first line.
    qsizetype m_htmlLineEnd = 0;
    /// Where the next comment may end, or -1 if none does.
    qsizetype m_commentEnd = 0;
    qsizetype m_at = 0;
    qsizetype m_end = 0;
    qsizetype m_column = 0;
    int m_quotes = 0;
    /// Whether the line before is text that the next may go on with.
    bool m_isParagraph = false;
};

} // namespace

QList<LiteralBlock> literalBlocks(QStringView markdown)
{
    return BlockFinder(markdown).run();
}

} // namespace tessaly
