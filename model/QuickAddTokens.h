#pragma once

#include "model/QuickAddWords.h"

#include <QList>
#include <QString>

namespace tessaly {

/// One word, number or sign of a phrase.
struct QuickAddToken
{
    QuickAddMeaning meaning = QuickAddMeaning::Other;
    /// UTF-16 units of the phrase, the end excluded.
    qsizetype start = 0;
    qsizetype end = 0;
    double value = 0;
    DayPeriod period = DayPeriod::None;
    /// In Chinese script.
    bool isHan = false;
    bool isUnsure = false;
    /// Digits that make up a number; 0 for a number in words.
    int digits = 0;
    bool hasSpaceBefore = false;
    bool hasSpaceAfter = false;

    [[nodiscard]] bool isWholeNumber() const
    {
        return meaning == QuickAddMeaning::Number && value == static_cast<int>(value);
    }
};

/// The phrase in words that quick add may understand, in both languages. What stands in quotation marks, and addresses
/// of the web, are single tokens without a meaning.
[[nodiscard]] QList<QuickAddToken> quickAddTokens(const QString &phrase);

} // namespace tessaly
