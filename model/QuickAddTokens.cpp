#include "model/QuickAddTokens.h"

#include <algorithm>
#include <optional>

namespace tessaly {

namespace {

using enum QuickAddMeaning;

bool isHan(QChar character)
{
    return character.script() == QChar::Script_Han;
}

/// Full-width signs and digits count as the narrow ones.
QChar narrowed(QChar character)
{
    const char16_t code = character.unicode();
    return code >= 0xFF01 && code <= 0xFF5E ? QChar(code - 0xFEE0) : character;
}

QString narrowedLower(const QString &phrase)
{
    QString text = phrase;
    for (QChar &character : text)
        character = narrowed(character).toLower();
    return text;
}

bool isDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

/// What a pair of quotation marks closes with; nothing if the character opens none.
QChar closingQuote(QChar opening)
{
    // lint-allow(text): signs and digits that are typed
    static constexpr QStringView pairs = u"\"\"“”「」『』《》";
    for (qsizetype index = 0; index < pairs.size(); index += 2) {
        if (pairs[index] == opening)
            return pairs[index + 1];
    }
    return {};
}

QuickAddMeaning signMeaning(QChar sign)
{
    // lint-allow(text): signs and digits that are typed
    if (QStringView(u"-–—~～−").contains(sign))
        return Dash;
    switch (sign.unicode()) {
    case u':':
        return Colon;
    case u'/':
        return Slash;
    case u'.':
        return Dot;
    case u'@':
        return At;
    case u',':
    case u'，':
    case u'、':
    case u';':
    case u'。':
        return Comma;
    case u'(':
    case u')':
        return Bracket;
    default:
        return Other;
    }
}

/// The value of digits such as 二〇二六 or of a number such as 二十五; nothing for 两三, which is about as many.
std::optional<double> chineseNumber(QStringView text)
{
    // lint-allow(text): signs and digits that are typed
    static constexpr QStringView digits = u"〇一二三四五六七八九";
    const auto digit = [](QChar character) -> qsizetype {
        if (character == u'两')
            return 2;
        return character == u'零' ? 0 : digits.indexOf(character);
    };
    if (text.size() == 4 && !text.contains(u'十') && !text.contains(u'百')) {
        double year = 0;
        for (const QChar character : text)
            year = year * 10 + static_cast<double>(digit(character));
        return year;
    }
    if (text.size() == 1)
        return text.front() == u'十' ? 10 : static_cast<double>(digit(text.front()));
    const qsizetype ten = text.indexOf(u'十');
    if (ten < 0 || ten > 1 || text.size() > ten + 2 || text.lastIndexOf(u'十') != ten)
        return std::nullopt;
    const double tens = ten == 0 ? 1 : static_cast<double>(digit(text.front()));
    const double ones = ten + 1 == text.size() ? 0 : static_cast<double>(digit(text.back()));
    return tens * 10 + ones;
}

/// Cuts a phrase into tokens, from left to right.
class Cutter
{
public:
    explicit Cutter(const QString &phrase) : m_text(narrowedLower(phrase)), m_original(phrase) {}

    QList<QuickAddToken> tokens()
    {
        while (m_at < m_text.size()) {
            if (m_text[m_at].isSpace()) {
                ++m_at;
                m_hasSpace = true;
                if (!m_tokens.isEmpty())
                    m_tokens.last().hasSpaceAfter = true;
                continue;
            }
            cut();
        }
        return m_tokens;
    }

private:
    void cut()
    {
        const QChar character = m_text[m_at];
        if (const QChar closing = closingQuote(m_original[m_at]); !closing.isNull()) {
            if (const qsizetype end = m_original.indexOf(closing, m_at + 1); end > 0)
                return append({.meaning = Other, .end = end + 1});
        }
        if (isHan(character) || character == u'〇')
            return cutChinese();
        if (isDigit(character))
            return cutNumber();
        if (character.isLetter())
            return cutEnglish();
        append({.meaning = signMeaning(character), .end = m_at + 1});
    }

    void append(QuickAddToken token)
    {
        token.start = m_at;
        token.hasSpaceBefore = m_hasSpace;
        m_hasSpace = false;
        m_at = token.end;
        m_tokens.append(token);
    }

    void appendWord(const QuickAddWord &word, bool isHanWord)
    {
        const bool isCapital = m_original[m_at].isUpper() && m_at > 0;
        append({.meaning = word.meaning,
                .end = m_at + word.text.size(),
                .value = static_cast<double>(word.value),
                .period = word.period,
                .isHan = isHanWord,
                .isUnsure = word.isUnsure && !isCapital});
    }

    /// The longest word of the table at the place that `ends` accepts.
    template <class Ends>
    const QuickAddWord *longest(std::span<const QuickAddWord> words, Ends ends) const
    {
        const QStringView rest = QStringView(m_text).sliced(m_at);
        const QuickAddWord *found = nullptr;
        for (const QuickAddWord &word : words) {
            if ((!found || word.text.size() > found->text.size()) && rest.startsWith(word.text) &&
                ends(m_at + word.text.size()))
                found = &word;
        }
        return found;
    }

    void cutChinese()
    {
        // lint-allow(text): signs and digits that are typed
        static constexpr QStringView numerals = u"〇零一二两三四五六七八九十百";
        qsizetype end = m_at;
        while (end < m_text.size() && numerals.contains(m_text[end]))
            ++end;
        const QuickAddWord *word = longest(chineseQuickAddWords(), [](qsizetype) { return true; });
        if (word && word->text.size() >= end - m_at)
            return appendWord(*word, true);
        if (end == m_at)
            return append({.meaning = Other, .end = m_at + 1, .isHan = true});
        const std::optional<double> value = chineseNumber(QStringView(m_text).sliced(m_at, end - m_at));
        append({.meaning = value ? Number : Other, .end = end, .value = value.value_or(0), .isHan = true});
    }

    /// Digits, with what belongs to them: 1.5, but not the 3 of 3D.
    void cutNumber()
    {
        qsizetype end = m_at;
        const auto skipDigits = [&] {
            while (end < m_text.size() && isDigit(m_text[end]))
                ++end;
        };
        skipDigits();
        const qsizetype digits = end - m_at;
        // In a date such as 2026.12.1 the points only separate.
        const bool isAfterPoint = !m_tokens.isEmpty() && m_tokens.last().meaning == Dot && !m_hasSpace;
        const bool hasFraction =
            !isAfterPoint && end + 1 < m_text.size() && m_text[end] == u'.' && isDigit(m_text[end + 1]);
        if (hasFraction) {
            ++end;
            skipDigits();
        }
        const bool hasSecondPoint = hasFraction && end + 1 < m_text.size() && m_text[end] == u'.';
        if (hasSecondPoint && isDigit(m_text[end + 1]))
            end = m_at + digits;
        constexpr qsizetype mostDigits = 6;
        if (digits > mostDigits || !isNumberEnd(end))
            return append({.meaning = Other, .end = wordEnd(end)});
        append({.meaning = Number,
                .end = end,
                .value = QStringView(m_text).sliced(m_at, end - m_at).toDouble(),
                .digits = static_cast<int>(end - m_at)});
    }

    /// Whether what follows the digits can stand after a number: nothing, a sign, or a word that goes with numbers.
    [[nodiscard]] bool isNumberEnd(qsizetype end)
    {
        if (end == m_text.size() || !m_text[end].isLetter() || isHan(m_text[end]))
            return true;
        const qsizetype start = std::exchange(m_at, end);
        const QuickAddWord *word = longest(englishQuickAddWords(), [this](qsizetype at) {
            return at == m_text.size() || !m_text[at].isLetter() || isHan(m_text[at]);
        });
        m_at = start;
        return word && (word->meaning == Meridiem || word->meaning == TimeUnit || word->meaning == Ordinal);
    }

    [[nodiscard]] qsizetype wordEnd(qsizetype from) const
    {
        while (from < m_text.size() && m_text[from].isLetterOrNumber() && !isHan(m_text[from]))
            ++from;
        return from;
    }

    void cutEnglish()
    {
        const bool isAfterNumber = !m_tokens.isEmpty() && m_tokens.last().meaning == Number && !m_hasSpace;
        const QuickAddWord *word = longest(englishQuickAddWords(), [&](qsizetype at) {
            if (at == m_text.size() || isHan(m_text[at]))
                return true;
            // "1h30", but not "A4".
            return !m_text[at].isLetter() && (isAfterNumber || !isDigit(m_text[at])) && m_text[at] != u'\'' &&
                   m_text[at] != u'_';
        });
        if (word)
            return appendWord(*word, false);
        const qsizetype end = wordEnd(m_at);
        if (QStringView(m_text).sliced(end).startsWith(u"://")) {
            qsizetype space = end;
            while (space < m_text.size() && !m_text[space].isSpace())
                ++space;
            return append({.meaning = Other, .end = space});
        }
        append({.meaning = Other, .end = end});
    }

    QString m_text;
    const QString &m_original;
    QList<QuickAddToken> m_tokens;
    qsizetype m_at = 0;
    bool m_hasSpace = false;
};

} // namespace

QList<QuickAddToken> quickAddTokens(const QString &phrase)
{
    return Cutter(phrase).tokens();
}

} // namespace tessaly
