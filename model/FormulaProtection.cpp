#include "model/FormulaProtection.h"

#include "model/MarkdownBlocks.h"

#include <QStringView>

#include <algorithm>
#include <array>
#include <optional>

namespace tessaly {

namespace {

bool isAsciiPunctuation(QChar c)
{
    const char16_t u = c.unicode();
    return (u >= u'!' && u <= u'/') || (u >= u':' && u <= u'@') || (u >= u'[' && u <= u'`') || (u >= u'{' && u <= u'~');
}

qsizetype runLength(QStringView text, qsizetype from, QChar c)
{
    qsizetype end = from;
    while (end < text.size() && text.at(end) == c)
        ++end;
    return end - from;
}

/// One formula in a text: where it begins and ends, delimiters included.
struct Formula
{
    qsizetype begin = 0;
    qsizetype end = 0;
    qsizetype delimiterLength = 0;
    /// In how many quotes it stands: as many marks begin its further lines.
    int quotes = 0;
};

/// Who takes formulas out of the text: a typesetter after it was parsed, or a search for pairs of dollars before.
enum class Treatment { ProtectFormulas, HideOtherDollars };

constexpr QChar dollarStandIn(0xFDD1);

/// What ends a formula that is not closed. Of those with Text, the typesetter finds none that goes over a blank line.
enum class Extent { Line, Paragraph, Text };

struct Delimiters
{
    QStringView opening;
    QStringView closing;
    Extent extent = Extent::Line;
};

constexpr std::array<Delimiters, 4> delimiters{{{u"$$", u"$$", Extent::Text},
                                                {u"\\[", u"\\]", Extent::Paragraph},
                                                {u"\\(", u"\\)", Extent::Line},
                                                {u"$", u"$", Extent::Line}}};

class Scanner
{
public:
    Scanner(QStringView text, Treatment treatment)
        : m_text(text), m_blocks(literalBlocks(text)), m_treatment(treatment), m_hasDollarPair(text.count(u'$') > 1),
          m_hasUnderscorePair(text.count(u'_') > 1), m_hasAsteriskPair(text.count(u'*') > 1)
    {
    }

    QString run()
    {
        m_output.reserve(m_text.size() + 64);
        for (const LiteralBlock &block : m_blocks) {
            m_end = block.begin;
            while (m_at < m_end)
                step();
            m_end = block.end;
            if (block.kind == LiteralBlock::Kind::Code)
                copyCode(m_end - m_at);
            while (m_at < m_end)
                stepOverHtml();
        }
        m_end = m_text.size();
        while (m_at < m_end)
            step();
        return std::move(m_output);
    }

private:
    void copy(qsizetype length)
    {
        m_output += m_text.mid(m_at, length);
        m_at += length;
    }

    void copyCode(qsizetype length)
    {
        const qsizetype begin = m_output.size();
        copy(length);
        if (m_treatment == Treatment::HideOtherDollars)
            std::replace(m_output.begin() + begin, m_output.end(), QChar(u'$'), dollarStandIn);
    }

    void step()
    {
        const QChar c = m_text.at(m_at);
        if (c == u'`') {
            copyCodeSpan();
        } else if (const std::optional<Formula> formula = formulaAt()) {
            if (m_treatment == Treatment::HideOtherDollars && c == u'$')
                copyPicture(*formula);
            else
                copyProtected(*formula);
        } else if (c == u'\\' && m_at + 1 < m_end && m_text.at(m_at + 1) == u'$') {
            copyEscapedDollar();
        } else if (c == u'\\' && m_at + 1 < m_end) {
            copy(2);
        } else {
            copy(1);
        }
    }

    /// No parser changes what stands here, so a formula needs no care.
    void stepOverHtml()
    {
        const bool mayBePicture = m_treatment == Treatment::HideOtherDollars && m_text.at(m_at) == u'$';
        if (const std::optional<Formula> formula = mayBePicture ? formulaAt() : std::nullopt)
            copyPicture(*formula);
        else
            copy(1);
    }

    void copyEscapedDollar()
    {
        // The typesetter knows the escape, too, if the Markdown parser leaves it one.
        if (m_treatment == Treatment::HideOtherDollars)
            m_output += dollarStandIn;
        else
            m_output += m_hasDollarPair ? QStringView(u"\\\\\\$") : QStringView(u"\\$");
        m_at += 2;
    }

    /// A formula that is taken out before the text is parsed: it stays as it is, and ends at its last dollar.
    void copyPicture(const Formula &formula)
    {
        for (; m_at < formula.end; ++m_at) {
            if (isQuoteMark(m_at, formula))
                continue;
            const bool isEscaped = m_text.at(m_at) == u'$' && m_at > formula.begin && m_text.at(m_at - 1) == u'\\';
            m_output += isEscaped ? dollarStandIn : m_text.at(m_at);
        }
    }

    void copyCodeSpan()
    {
        const qsizetype length = runLength(m_text, m_at, u'`');
        for (qsizetype at = m_at + length; at < m_end; ++at) {
            if (m_text.at(at) == u'\n' && isBlankLine(at + 1))
                break;
            if (m_text.at(at) != u'`')
                continue;
            const qsizetype closing = runLength(m_text, at, u'`');
            if (closing == length) {
                copyCode(at + closing - m_at);
                return;
            }
            at += closing - 1;
        }
        copy(length);
    }

    [[nodiscard]] std::optional<Formula> formulaAt()
    {
        const QStringView rest = m_text.mid(m_at, m_end - m_at);
        for (std::size_t kind = 0; kind < delimiters.size(); ++kind) {
            if (rest.startsWith(delimiters.at(kind).opening))
                return formulaAt(kind);
        }
        return std::nullopt;
    }

    [[nodiscard]] std::optional<Formula> formulaAt(std::size_t kind)
    {
        // What was looked for in vain up to some place is not there for a later start either.
        if (m_at < m_openUntil.at(kind))
            return std::nullopt;
        const Delimiters &mark = delimiters.at(kind);
        const int quotes = quotesAt(m_at);
        const bool endsWithLine = mark.extent == Extent::Line;
        const bool endsWithParagraph = m_treatment == Treatment::ProtectFormulas || mark.extent != Extent::Text;
        const qsizetype length = mark.closing.size();
        qsizetype at = m_at + length;
        while (at < m_end) {
            if (m_text.mid(at).startsWith(mark.closing))
                return at == m_at + length ? std::nullopt : std::optional(Formula{m_at, at + length, length, quotes});
            if (m_text.at(at) == u'\n' && (endsWithLine || (endsWithParagraph && isBlankLine(at + 1, quotes > 0))))
                break;
            const bool isEscape = m_text.at(at) == u'\\' && at + 1 < m_end && m_text.at(at + 1) != u'\n';
            at += isEscape ? 2 : 1;
        }
        m_openUntil.at(kind) = at;
        return std::nullopt;
    }

    [[nodiscard]] bool isBlankLine(qsizetype start, bool isQuoted = false) const
    {
        const qsizetype end = m_text.indexOf(u'\n', start);
        const QStringView line = m_text.mid(start, end < 0 ? -1 : end - start);
        return std::all_of(line.begin(), line.end(), [&](QChar c) { return c.isSpace() || (isQuoted && c == u'>'); });
    }

    /// How many quote marks the line begins with, list markers aside. Places are asked for in their order.
    [[nodiscard]] int quotesAt(qsizetype at)
    {
        while (at > m_lineEnd) {
            const qsizetype begin = m_lineEnd + 1;
            m_lineEnd = m_text.indexOf(u'\n', begin);
            if (m_lineEnd < 0)
                m_lineEnd = m_text.size();
            m_lineQuotes = 0;
            for (qsizetype i = begin; i < m_lineEnd && QStringView(u" \t>-+*.)0123456789").contains(m_text.at(i)); ++i)
                m_lineQuotes += m_text.at(i) == u'>' ? 1 : 0;
        }
        return m_lineQuotes;
    }

    /// How many quote marks and nothing else stand before this place in its line, or -1. In its first line, -1.
    [[nodiscard]] int marksBefore(qsizetype at, const Formula &formula) const
    {
        int marks = 0;
        for (; at > formula.begin && m_text.at(at - 1) != u'\n'; --at) {
            const QChar c = m_text.at(at - 1);
            if (c != u' ' && c != u'\t' && c != u'>')
                return -1;
            marks += c == u'>' ? 1 : 0;
        }
        return at > formula.begin ? marks : -1;
    }

    /// Whether the character is of the quote, not of the formula.
    [[nodiscard]] bool isQuoteMark(qsizetype at, const Formula &formula) const
    {
        if (formula.quotes == 0 || m_text.at(at) != u'>')
            return false;
        const int marks = marksBefore(at, formula);
        return marks >= 0 && marks < formula.quotes;
    }

    void copyProtected(const Formula &formula)
    {
        for (qsizetype at = formula.begin; at < formula.end; ++at) {
            const bool isDelimiter =
                at < formula.begin + formula.delimiterLength || at >= formula.end - formula.delimiterLength;
            if (needsBackslash(at, formula, isDelimiter))
                m_output += u'\\';
            const bool isHidden = m_treatment == Treatment::HideOtherDollars && m_text.at(at) == u'$';
            m_output += isHidden ? dollarStandIn : m_text.at(at);
        }
        m_at = formula.end;
    }

    [[nodiscard]] bool needsBackslash(qsizetype at, const Formula &formula, bool isDelimiter) const
    {
        const QChar c = m_text.at(at);
        const QChar next = at + 1 < m_text.size() ? m_text.at(at + 1) : QChar(u'\n');
        if (c == u'\\')
            return isAsciiPunctuation(next) || next == u'\n';
        if (isDelimiter)
            return false;
        switch (c.unicode()) {
        case u'_':
            return m_hasUnderscorePair;
        case u'*':
            return m_hasAsteriskPair;
        case u'`':
        case u'~':
        case u'|':
            return true;
        case u'<':
            return next.isLetter() || next == u'/' || next == u'!' || next == u'?';
        case u'&':
            return startsEntity(at);
        case u'@':
        case u':':
        case u'.':
            return isOfAddress(at) || startsBlock(at, formula);
        case u']':
            return next == u'(' || next == u'[';
        default:
            return startsBlock(at, formula);
        }
    }

    [[nodiscard]] bool startsEntity(qsizetype at) const
    {
        qsizetype end = at + 1;
        while (end < m_text.size() && (m_text.at(end).isLetterOrNumber() || m_text.at(end) == u'#'))
            ++end;
        return end > at + 1 && end < m_text.size() && m_text.at(end) == u';';
    }

    /// Whether the character would help to make a link of what is around it (GitHub Flavored Markdown 0.29, 6.9).
    [[nodiscard]] bool isOfAddress(qsizetype at) const
    {
        const QStringView before = m_text.first(at);
        const QStringView after = m_text.mid(at + 1);
        if (before.isEmpty() || after.isEmpty())
            return false;
        switch (m_text.at(at).unicode()) {
        case u'@':
            return !before.back().isSpace() && after.front().isLetterOrNumber();
        case u':':
            return before.back().isLetter() && after.startsWith(u"//");
        default:
            return before.endsWith(u"www", Qt::CaseInsensitive);
        }
    }

    /// Whether the character, first in its line of the formula, would begin a list, quote, heading or rule; for a
    /// numbered list that is the point after the number.
    [[nodiscard]] bool startsBlock(qsizetype at, const Formula &formula) const
    {
        const QChar c = m_text.at(at);
        qsizetype lineStart = at;
        const bool isListPoint = c == u'.' || c == u')';
        while (lineStart > formula.begin && isListPoint && m_text.at(lineStart - 1).isDigit())
            --lineStart;
        if (isListPoint && lineStart == at)
            return false;
        const bool mayStart = isListPoint || c == u'+' || c == u'-' || c == u'=' || c == u'>' || c == u'#';
        return mayStart && marksBefore(lineStart, formula) >= (c == u'>' ? formula.quotes : 0);
    }

    QStringView m_text;
    QList<LiteralBlock> m_blocks;
    QString m_output;
    qsizetype m_at = 0;
    /// Where the text or the block ends that m_at is in.
    qsizetype m_end = 0;
    /// For each kind of delimiters, up to where nothing closes them.
    std::array<qsizetype, delimiters.size()> m_openUntil{};
    /// The end of the line last asked for, and how many quotes it is in.
    qsizetype m_lineEnd = -1;
    int m_lineQuotes = 0;
    Treatment m_treatment;
    bool m_hasDollarPair = false;
    bool m_hasUnderscorePair = false;
    bool m_hasAsteriskPair = false;
};

} // namespace

QString protectFormulas(const QString &markdown)
{
    if (!markdown.contains(u'$') && !markdown.contains(u"\\(") && !markdown.contains(u"\\["))
        return markdown;
    return Scanner(markdown, Treatment::ProtectFormulas).run();
}

QString protectDollars(const QString &markdown)
{
    if (!markdown.contains(u'$') && !markdown.contains(u"\\(") && !markdown.contains(u"\\["))
        return markdown;
    return Scanner(markdown, Treatment::HideOtherDollars).run();
}

} // namespace tessaly
