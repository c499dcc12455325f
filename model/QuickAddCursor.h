#pragma once

#include "model/QuickAddTokens.h"

#include <optional>

namespace tessaly {

/// A place among the tokens of a phrase. Readers take a cursor, move it past what they understand, and leave it where
/// it is when they understand nothing.
class QuickAddCursor
{
public:
    explicit QuickAddCursor(const QList<QuickAddToken> &tokens, qsizetype at = 0) : m_tokens(&tokens), m_at(at) {}

    [[nodiscard]] qsizetype at() const { return m_at; }
    /// A token without a meaning beyond the ends.
    [[nodiscard]] const QuickAddToken &token(qsizetype ahead = 0) const
    {
        static const QuickAddToken none;
        const qsizetype index = m_at + ahead;
        return index >= 0 && index < m_tokens->size() ? m_tokens->at(index) : none;
    }
    [[nodiscard]] bool is(QuickAddMeaning meaning, qsizetype ahead = 0) const
    {
        return token(ahead).meaning == meaning;
    }
    void skip(qsizetype count = 1) { m_at += count; }
    bool take(QuickAddMeaning meaning)
    {
        const bool isNext = is(meaning);
        m_at += isNext ? 1 : 0;
        return isNext;
    }
    /// The whole number that is next, if it lies in the range.
    std::optional<int> takeNumber(int least, int most)
    {
        const QuickAddToken &next = token();
        if (!next.isWholeNumber() || next.value < least || next.value > most)
            return std::nullopt;
        ++m_at;
        return static_cast<int>(next.value);
    }
    /// The value of the token if it has the meaning.
    std::optional<int> takeValue(QuickAddMeaning meaning)
    {
        if (!is(meaning))
            return std::nullopt;
        return static_cast<int>(m_tokens->at(m_at++).value);
    }

private:
    const QList<QuickAddToken> *m_tokens;
    qsizetype m_at;
};

} // namespace tessaly
