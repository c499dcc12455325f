#include "model/Search.h"

#include "model/SearchText.h"

#include <algorithm>

namespace tessaly {

namespace {

/// Calls `use` with a number for each group of letters in the text: three of the alphabet, or two with others.
template <class Use>
void forGroups(QStringView text, Use use)
{
    constexpr char16_t lastLetter = 0x7F;
    for (qsizetype index = 0; index + 1 < text.size(); ++index) {
        const quint64 first = text[index].unicode();
        const quint64 second = text[index + 1].unicode();
        const bool isShort = first > lastLetter || second > lastLetter;
        if (isShort)
            use(first << 16 | second);
        else if (index + 2 < text.size() && text[index + 2].unicode() <= lastLetter)
            use(first << 32 | second << 16 | text[index + 2].unicode());
    }
}

/// splitmix64
quint64 hashOf(quint64 group)
{
    quint64 hash = group + 0x9E3779B97F4A7C15;
    hash = (hash ^ hash >> 30) * 0xBF58476D1CE4E5B9;
    hash = (hash ^ hash >> 27) * 0x94D049BB133111EB;
    return hash ^ hash >> 31;
}

/// Two bits for a group, from the halves of its hash.
std::pair<quint64, quint64> placesOf(quint64 hash, quint64 bits)
{
    // A multiplication spreads the half over the bits as a division would, but is much faster.
    return {(hash & 0xFFFFFFFF) * bits >> 32, (hash >> 32) * bits >> 32};
}

quint64 pairsIn(QStringView text)
{
    quint64 pairs = 0;
    for (qsizetype index = 0; index + 1 < text.size(); ++index)
        pairs |= quint64(1) << (text[index].unicode() * 31 + text[index + 1].unicode()) % 61;
    return pairs;
}

bool isWordStart(QStringView text, qsizetype at)
{
    return at == 0 || !text[at - 1].isLetterOrNumber() || text[at].script() == QChar::Script_Han;
}

} // namespace

SearchQuery SearchQuery::of(const QString &text)
{
    SearchQuery query{.words = searchFolded(text).simplified().split(u' ', Qt::SkipEmptyParts)};
    for (const QString &word : std::as_const(query.words))
        query.pairs |= pairsIn(word);
    return query;
}

SearchKey SearchKey::of(const QString &title)
{
    SearchKey key{.folded = searchFolded(title), .initials = pinyinInitials(title)};
    key.pairs = pairsIn(key.folded) | pairsIn(key.initials);
    return key;
}

std::optional<SearchMatch> match(const SearchKey &key, const SearchQuery &query)
{
    enum Rank { Beginning, WordStart, Inside, Initials };
    std::optional<SearchMatch> result;
    if ((key.pairs & query.pairs) != query.pairs)
        return result;
    for (const QString &word : query.words) {
        qsizetype at = key.folded.indexOf(word);
        int rank = Inside;
        if (at < 0) {
            at = key.initials.indexOf(word);
            rank = Initials;
        }
        if (at < 0)
            return std::nullopt;
        if (rank == Inside && isWordStart(key.folded, at))
            rank = at == 0 ? Beginning : WordStart;
        if (!result)
            result = SearchMatch{.rank = rank, .start = at, .length = word.size()};
        result->rank = std::max(result->rank, rank);
    }
    return result;
}

std::optional<SearchExcerpt> excerpt(const QString &text, const QString &folded, const SearchQuery &query)
{
    constexpr qsizetype before = 12;
    constexpr qsizetype behind = 60;
    qsizetype first = -1;
    for (const QString &word : query.words) {
        const qsizetype at = folded.indexOf(word);
        if (at < 0)
            return std::nullopt;
        first = first < 0 ? at : first;
    }
    if (first < 0)
        return std::nullopt;
    const qsizetype length = query.words.first().size();
    const qsizetype lineStart = text.lastIndexOf(u'\n', first) + 1;
    const qsizetype lineEnd = text.indexOf(u'\n', first);
    const qsizetype start = std::max(lineStart, first - before);
    const qsizetype end =
        std::min(lineEnd < 0 ? text.size() : std::max(lineEnd, first + length), first + length + behind);
    QString piece = text.sliced(start, end - start);
    std::ranges::replace_if(
        piece, [](QChar character) { return character.isSpace(); }, QChar(u' '));
    const QString head = start > lineStart ? QStringLiteral("…") : QString();
    const QString tail = lineEnd < 0 ? (end < text.size() ? QStringLiteral("…") : QString())
                                     : (end < lineEnd ? QStringLiteral("…") : QString());
    return SearchExcerpt{.text = head + piece + tail, .start = first - start + head.size(), .length = length};
}

TextSignature::TextSignature(const QString &folded, qsizetype utf8Size)
    : m_bits(std::max<qsizetype>(utf8Size / 5, 1), '\0')
{
    const quint64 bits = static_cast<quint64>(m_bits.size()) * 8;
    forGroups(folded, [&](quint64 group) {
        const auto [one, other] = placesOf(hashOf(group), bits);
        m_bits[static_cast<qsizetype>(one / 8)] |= static_cast<char>(1 << one % 8);
        m_bits[static_cast<qsizetype>(other / 8)] |= static_cast<char>(1 << other % 8);
    });
}

TextProbe TextProbe::of(const SearchQuery &query)
{
    TextProbe probe;
    for (const QString &word : query.words)
        forGroups(word, [&probe](quint64 group) { probe.groups.append(hashOf(group)); });
    return probe;
}

bool TextSignature::mayHave(const TextProbe &probe) const
{
    if (m_bits.isEmpty())
        return true;
    const quint64 bits = static_cast<quint64>(m_bits.size()) * 8;
    const auto isSet = [this](quint64 place) {
        return (m_bits[static_cast<qsizetype>(place / 8)] >> place % 8 & 1) != 0;
    };
    return std::ranges::all_of(probe.groups, [&](quint64 group) {
        const auto [one, other] = placesOf(group, bits);
        return isSet(one) && isSet(other);
    });
}

} // namespace tessaly
