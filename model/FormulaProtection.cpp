#include "model/FormulaProtection.h"

#include <QStringView>

#include <algorithm>
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

qsizetype endOfLine(QStringView text, qsizetype from)
{
    const qsizetype end = text.indexOf(u'\n', from);
    return end < 0 ? text.size() : end + 1;
}

/// The fence that opens at the start of this line (after at most three blanks), or nothing.
QStringView fenceAt(QStringView line)
{
    const qsizetype blanks = std::min<qsizetype>(runLength(line, 0, u' '), 3);
    for (const QChar mark : {QChar(u'`'), QChar(u'~')}) {
        const qsizetype length = runLength(line, blanks, mark);
        if (length < 3)
            continue;
        // The text after a fence of backticks has none, else it is an inline code span.
        if (mark == u'`' && line.mid(blanks + length).contains(u'`'))
            continue;
        return line.mid(blanks, length);
    }
    return {};
}

bool closesFence(QStringView line, QStringView fence)
{
    const qsizetype blanks = std::min<qsizetype>(runLength(line, 0, u' '), 3);
    const qsizetype length = runLength(line, blanks, fence.front());
    return length >= fence.size() && line.mid(blanks + length).trimmed().isEmpty();
}

/// One formula in a text: where it begins and ends, delimiters included.
struct Formula
{
    qsizetype begin = 0;
    qsizetype end = 0;
    qsizetype delimiterLength = 0;
};

/// What is done about formulas and about the dollars that begin none.
enum class Treatment { ProtectFormulas, HideOtherDollars };

constexpr QChar dollarStandIn(0xFDD1);

class Scanner
{
public:
    Scanner(QStringView text, Treatment treatment)
        : m_text(text), m_treatment(treatment), m_hasDollarPair(text.count(u'$') > 1),
          m_hasUnderscorePair(text.count(u'_') > 1), m_hasAsteriskPair(text.count(u'*') > 1)
    {
    }

    QString run()
    {
        m_output.reserve(m_text.size() + 64);
        bool afterBlankLine = true;
        while (m_at < m_text.size()) {
            if (m_at == 0 || m_text.at(m_at - 1) == u'\n') {
                const QStringView line = m_text.mid(m_at, endOfLine(m_text, m_at) - m_at);
                if (const QStringView fence = fenceAt(line); !fence.isEmpty()) {
                    copyFencedBlock(fence);
                    afterBlankLine = true;
                    continue;
                }
                const bool isIndented = line.startsWith(u"    ") || line.startsWith(u'\t');
                const bool isBlank = line.trimmed().isEmpty();
                if (isBlank || (isIndented && afterBlankLine)) {
                    afterBlankLine = true;
                    // Within a list such lines may be no code, so that a formula in them stays one.
                    copy(line.size());
                    continue;
                }
                afterBlankLine = false;
            }
            step();
        }
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

    void copyFencedBlock(QStringView fence)
    {
        copy(endOfLine(m_text, m_at) - m_at);
        while (m_at < m_text.size()) {
            const QStringView line = m_text.mid(m_at, endOfLine(m_text, m_at) - m_at);
            copyCode(line.size());
            if (closesFence(line, fence))
                return;
        }
    }

    void step()
    {
        const QChar c = m_text.at(m_at);
        if (c == u'`') {
            copyCodeSpan();
        } else if (const std::optional<Formula> formula = formulaAt()) {
            copyProtected(*formula);
        } else if (c == u'\\' && m_text.mid(m_at + 1).startsWith(u'$')) {
            copyEscapedDollar();
        } else if (c == u'\\' && m_at + 1 < m_text.size()) {
            copy(2);
        } else {
            copy(1);
        }
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

    void copyCodeSpan()
    {
        const qsizetype length = runLength(m_text, m_at, u'`');
        for (qsizetype at = m_at + length; at < m_text.size();) {
            at = m_text.indexOf(u'`', at);
            if (at < 0)
                break;
            const qsizetype closing = runLength(m_text, at, u'`');
            if (closing == length) {
                copyCode(at + closing - m_at);
                return;
            }
            at += closing;
        }
        copy(length);
    }

    [[nodiscard]] std::optional<Formula> formulaAt() const
    {
        if (m_treatment != Treatment::ProtectFormulas)
            return std::nullopt;
        const QStringView rest = m_text.mid(m_at);
        if (rest.startsWith(u"$$"))
            return closedBy(u"$$", Extent::Paragraph);
        if (rest.startsWith(u"\\["))
            return closedBy(u"\\]", Extent::Paragraph);
        if (rest.startsWith(u"\\("))
            return closedBy(u"\\)", Extent::Line);
        if (rest.startsWith(u'$'))
            return closedBy(u"$", Extent::Line);
        return std::nullopt;
    }

    enum class Extent { Line, Paragraph };

    [[nodiscard]] std::optional<Formula> closedBy(QStringView delimiter, Extent extent) const
    {
        const qsizetype length = delimiter.size();
        qsizetype at = m_at + length;
        while (at < m_text.size()) {
            if (m_text.mid(at).startsWith(delimiter))
                return at == m_at + length ? std::nullopt : std::optional(Formula{m_at, at + length, length});
            if (m_text.at(at) == u'\n' && (extent == Extent::Line || isBlankLine(at + 1)))
                return std::nullopt;
            const bool isEscape = m_text.at(at) == u'\\' && at + 1 < m_text.size() && m_text.at(at + 1) != u'\n';
            at += isEscape ? 2 : 1;
        }
        return std::nullopt;
    }

    [[nodiscard]] bool isBlankLine(qsizetype start) const
    {
        return m_text.mid(start, endOfLine(m_text, start) - start).trimmed().isEmpty();
    }

    void copyProtected(const Formula &formula)
    {
        for (qsizetype at = formula.begin; at < formula.end; ++at) {
            const bool isDelimiter =
                at < formula.begin + formula.delimiterLength || at >= formula.end - formula.delimiterLength;
            if (needsBackslash(at, formula, isDelimiter))
                m_output += u'\\';
            m_output += m_text.at(at);
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
        while (lineStart > formula.begin && (m_text.at(lineStart - 1) == u' ' || m_text.at(lineStart - 1) == u'\t'))
            --lineStart;
        if (lineStart == formula.begin || m_text.at(lineStart - 1) != u'\n')
            return false;
        return isListPoint || c == u'+' || c == u'-' || c == u'=' || c == u'>' || c == u'#';
    }

    QStringView m_text;
    QString m_output;
    qsizetype m_at = 0;
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
    if (!markdown.contains(u'$'))
        return markdown;
    return Scanner(markdown, Treatment::HideOtherDollars).run();
}

} // namespace tessaly
