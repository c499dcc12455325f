#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace tessaly {

/// What is looked for: words that must all occur, in any order.
struct SearchQuery
{
    /// Folded, see searchFolded().
    QStringList words = {};
    /// A bit for each pair of neighbouring letters: a title without one of them need not be compared.
    quint64 pairs = 0;

    /// The words of a text; text without words finds nothing.
    [[nodiscard]] static SearchQuery of(const QString &text);
    [[nodiscard]] bool isEmpty() const { return words.isEmpty(); }
    bool operator==(const SearchQuery &) const = default;
};

/// A title as it is searched.
struct SearchKey
{
    QString folded = {};
    /// See pinyinInitials().
    QString initials = {};
    /// As in SearchQuery, of both.
    quint64 pairs = 0;

    [[nodiscard]] static SearchKey of(const QString &title);
    bool operator==(const SearchKey &) const = default;
};

/// How well a text fits; a lower rank is better.
struct SearchMatch
{
    int rank = 0;
    /// Where the first word of the query was found, in UTF-16 units.
    qsizetype start = 0;
    qsizetype length = 0;

    bool operator==(const SearchMatch &) const = default;
};

/// Nothing where a word is missing. The beginning of a title is better than that of a word, that better than the inside
/// of one, and what is written better than the initials of its pinyin.
[[nodiscard]] std::optional<SearchMatch> match(const SearchKey &key, const SearchQuery &query);

/// A piece of a longer text in one line, around the place where it has the first word of the query.
struct SearchExcerpt
{
    QString text = {};
    qsizetype start = 0;
    qsizetype length = 0;

    bool operator==(const SearchExcerpt &) const = default;
};

/// Nothing where a word is missing; `folded` is the folded text.
[[nodiscard]] std::optional<SearchExcerpt> excerpt(const QString &text, const QString &folded,
                                                   const SearchQuery &query);

/// The groups of letters of a query, as signatures have them. Words that are too short have none.
struct TextProbe
{
    QList<quint64> groups = {};

    [[nodiscard]] static TextProbe of(const SearchQuery &query);
};

/// Tells of most words that a text does not have them, in a fraction of its size (a Bloom filter of its groups of
/// letters).
class TextSignature
{
public:
    TextSignature() = default;
    /// As long as a fifth of the UTF-8 text.
    TextSignature(const QString &folded, qsizetype utf8Size);

    /// Never false for a word that the text has.
    [[nodiscard]] bool mayHave(const SearchQuery &query) const { return mayHave(TextProbe::of(query)); }
    [[nodiscard]] bool mayHave(const TextProbe &probe) const;
    [[nodiscard]] qsizetype bytes() const { return m_bits.size(); }

private:
    QByteArray m_bits;
};

} // namespace tessaly
