#include "model/SearchText.h"

#include <unicode/utrans.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <mutex>

namespace tessaly {

namespace {

constexpr int basicPlane = 0x10000;

/// One of ICU's transliterations, of single characters.
class Transliterator
{
public:
    explicit Transliterator(const char16_t *name)
    {
        UErrorCode status = U_ZERO_ERROR;
        m_rules = utrans_openU(name, -1, UTRANS_FORWARD, nullptr, 0, nullptr, &status);
    }
    ~Transliterator() { utrans_close(m_rules); }
    Q_DISABLE_COPY_MOVE(Transliterator)

    /// The first character of what the character becomes; itself without ICU's data.
    [[nodiscard]] char16_t first(char16_t character) const
    {
        std::array<char16_t, 32> buffer{character};
        int32_t length = 1;
        int32_t end = 1;
        UErrorCode status = U_ZERO_ERROR;
        if (m_rules)
            utrans_transUChars(m_rules, buffer.data(), &length, int32_t(buffer.size()), 0, &end, &status);
        return m_rules && U_SUCCESS(status) && length > 0 ? buffer.front() : character;
    }

private:
    UTransliterator *m_rules = nullptr;
};

/// What each character becomes, worked out when it is first met.
class CharacterTable
{
public:
    explicit CharacterTable(const char16_t *rules) : m_rules(rules) {}

    char16_t operator[](char16_t character)
    {
        std::atomic<char16_t> &known = m_known[character];
        if (const char16_t value = known.load(std::memory_order_relaxed))
            return value;
        const std::scoped_lock lock(m_mutex);
        const char16_t value = m_rules.first(character);
        known.store(value, std::memory_order_relaxed);
        return value;
    }

private:
    std::mutex m_mutex;
    Transliterator m_rules;
    std::array<std::atomic<char16_t>, basicPlane> m_known = {};
};

bool isHan(char16_t character)
{
    return QChar(character).script() == QChar::Script_Han;
}

char16_t folded(char16_t character)
{
    constexpr char16_t delete_ = 0x7F;
    if (character >= u'A' && character <= u'Z')
        return character + (u'a' - u'A');
    // A Hangul syllable would become its first letter.
    const bool isHangul = character >= 0xAC00 && character <= 0xD7A3;
    if (character <= delete_ || isHangul || QChar::isSurrogate(character))
        return character;
    static CharacterTable table(u"NFKD; Traditional-Simplified; Lower");
    return table[character];
}

} // namespace

QString searchFolded(QStringView text)
{
    QString result(text.size(), Qt::Uninitialized);
    std::ranges::transform(text, result.begin(), [](QChar character) { return QChar(folded(character.unicode())); });
    return result;
}

QString pinyinInitials(QStringView text)
{
    static CharacterTable letters(u"Han-Latin; NFD; Lower");
    if (std::ranges::none_of(text, [](QChar character) { return isHan(character.unicode()); }))
        return {};
    QString result(text.size(), Qt::Uninitialized);
    std::ranges::transform(text, result.begin(), [](QChar character) {
        const char16_t code = character.unicode();
        return QChar(isHan(code) ? letters[code] : folded(code));
    });
    return result;
}

} // namespace tessaly
