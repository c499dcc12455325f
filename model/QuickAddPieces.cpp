#include "model/QuickAddPieces.h"

#include <algorithm>
#include <variant>

namespace tessaly {

namespace {

using enum QuickAddMeaning;

struct Length
{
    int minutes = 0;
};
struct FromNow
{
    int minutes = 0;
};

/// Tokens that mean one thing together.
struct Piece
{
    /// Tokens, the end excluded.
    qsizetype first = 0;
    qsizetype end = 0;
    std::variant<QuickAddDay, QuickAddTime, DayPeriod, Length, FromNow> meaning;
    /// Understood only beside another piece, or where it stands by itself.
    bool isUnsure = false;
    bool isDeadline = false;

    template <class Meaning>
    [[nodiscard]] bool is() const
    {
        return std::holds_alternative<Meaning>(meaning);
    }
};

/// Finds the pieces of a phrase and chooses among them.
class PieceReader
{
public:
    PieceReader(const QString &phrase, const QuickAddToday &today)
        : m_phrase(phrase), m_today(today), m_tokens(quickAddTokens(phrase))
    {
    }

    QuickAddPhrase read()
    {
        findPieces();
        dropDayRanges();
        // A time that is said of each Friday is not one of today.
        if (m_hasOtherDays && !firstOf<QuickAddDay>())
            m_pieces.clear();
        joinWeekdays();
        dropUnsure();
        return choose();
    }

private:
    void findPieces()
    {
        qsizetype at = 0;
        while (at < m_tokens.size()) {
            QuickAddCursor cursor(m_tokens, at);
            if (cursor.take(Every)) {
                skipRepeated(cursor);
            } else if (std::optional<Piece> piece = readPiece(cursor)) {
                piece->first = at;
                piece->end = cursor.at();
                widen(*piece);
                at = piece->end;
                m_pieces.append(*piece);
                continue;
            }
            at = std::max(cursor.at(), at + 1);
        }
    }

    /// "Every Friday" and "每两周" name no day.
    void skipRepeated(QuickAddCursor &cursor)
    {
        const bool isCounted = cursor.takeNumber(1, 99).has_value();
        const bool isUnit = cursor.is(DayUnit) || cursor.is(MonthUnit) || cursor.is(Weekend) || cursor.is(Period);
        const bool isDay = readDay(cursor, m_phrase, m_today).has_value();
        m_hasOtherDays = m_hasOtherDays || isCounted || isUnit || isDay;
        if (!isDay)
            cursor.skip();
    }

    /// "16-17 Dec" and "Dec 16-17" are two days.
    [[nodiscard]] bool isPartOfDays(const QuickAddCursor &start, const QuickAddCursor &end) const
    {
        const auto isNumber = [](const QuickAddToken &token) {
            return token.isWholeNumber() && token.value >= 1 && token.value <= 31;
        };
        const auto isJoint = [](const QuickAddToken &token) {
            return token.meaning == Dash && !token.hasSpaceBefore && !token.hasSpaceAfter;
        };
        const bool hasFormer = isNumber(start.token()) && isJoint(start.token(-1)) && isNumber(start.token(-2));
        const bool hasNext =
            isJoint(end.token()) && isNumber(end.token(1)) && !end.is(Colon, 2) && !end.is(Meridiem, 2);
        return hasFormer || (hasNext && isNumber(end.token(-1)));
    }

    /// "10-11" right before a day, or right after one where nothing else is counted by it.
    std::optional<QuickAddTime> readHours(QuickAddCursor &cursor) const
    {
        QuickAddCursor ahead = cursor;
        const auto takeHour = [&ahead]() { return ahead.token().digits > 0 ? ahead.takeNumber(0, 24) : std::nullopt; };
        const bool followsDay =
            !m_pieces.isEmpty() && m_pieces.last().is<QuickAddDay>() && m_pieces.last().end == cursor.at();
        const std::optional<int> start = takeHour();
        const bool isTight = ahead.is(Dash) && !ahead.token().hasSpaceBefore && !ahead.token().hasSpaceAfter;
        ahead.skip();
        const std::optional<int> end = start && isTight ? takeHour() : std::nullopt;
        if (!end || *start == *end || ahead.is(Month))
            return std::nullopt;
        QuickAddCursor next = ahead;
        next.take(On);
        // In Chinese what is to be done follows.
        const bool isSetOff = followsDay && cursor.token(-1).isHan && ahead.token(-1).hasSpaceAfter;
        const bool isEnd = ahead.at() == m_tokens.size() || isSetOff;
        if (!(followsDay && isEnd) && !(!followsDay && readDay(next, m_phrase, m_today)))
            return std::nullopt;
        cursor = ahead;
        return QuickAddTime{.start = {.hour = *start}, .end = QuickAddClock{.hour = *end}};
    }

    std::optional<Piece> readPiece(QuickAddCursor &cursor)
    {
        const bool isPartOfNumber = cursor.is(Number, -1) && cursor.is(Weekday) && !cursor.token().hasSpaceBefore;
        if (isPartOfNumber)
            return std::nullopt;
        if (const auto minutes = readMomentFromNow(cursor))
            return Piece{.meaning = FromNow{*minutes}};
        const QuickAddCursor start = cursor;
        if (const auto day = readDay(cursor, m_phrase, m_today)) {
            if (isPartOfDays(start, cursor)) {
                m_hasOtherDays = true;
                return std::nullopt;
            }
            return Piece{.meaning = *day, .isUnsure = day->isUnsure};
        }
        if (const auto time = readTime(cursor))
            return Piece{.meaning = *time, .isUnsure = time->isUnsure};
        if (const auto time = readHours(cursor))
            return Piece{.meaning = *time};
        if (const auto minutes = readLength(cursor))
            return Piece{.meaning = Length{*minutes}};
        if (cursor.is(Period)) {
            const DayPeriod period = cursor.token().period;
            cursor.skip();
            return Piece{.meaning = period, .isUnsure = true};
        }
        return std::nullopt;
    }

    /// Takes in the words around the piece that belong to it.
    void widen(Piece &piece) const
    {
        const qsizetype before = m_pieces.isEmpty() ? 0 : m_pieces.last().end;
        const auto meaningAt = [this](qsizetype at) { return QuickAddCursor(m_tokens, at).token().meaning; };
        while (piece.first > before && !piece.is<Length>()) {
            const QuickAddMeaning meaning = meaningAt(piece.first - 1);
            const bool isLimit = meaning == Deadline || meaning == DueMark || meaning == Until;
            if (!isLimit && meaning != At && meaning != On && meaning != Article && meaning != From)
                break;
            piece.isDeadline = piece.isDeadline || isLimit;
            piece.isUnsure = piece.isUnsure && meaning != On && !isLimit;
            --piece.first;
        }
        const QuickAddMeaning next = meaningAt(piece.end);
        if (!piece.is<Length>() && (next == Before || next == DueMark)) {
            piece.isDeadline = true;
            piece.isUnsure = false;
            ++piece.end;
        }
        const bool isFirst = piece.first == before && (m_pieces.isEmpty() || m_pieces.first().first == 0);
        if (meaningAt(piece.end) == Filler && isFirst && (piece.first == 0 || !m_pieces.isEmpty()))
            ++piece.end;
    }

    /// "Friday to Sunday" is neither.
    void dropDayRanges()
    {
        for (qsizetype index = 1; index < m_pieces.size(); ++index) {
            const Piece &one = m_pieces.at(index - 1);
            const Piece &other = m_pieces.at(index);
            if (!one.is<QuickAddDay>() || !other.is<QuickAddDay>())
                continue;
            const bool isUntil = one.end == other.first && m_tokens.at(one.end).meaning == Until;
            const bool isDash = one.end + 1 == other.first && m_tokens.at(one.end).meaning == Dash;
            if (isUntil || isDash) {
                m_hasOtherDays = true;
                m_pieces.remove(index - 1, 2);
                index = std::max<qsizetype>(0, index - 2);
            }
        }
    }

    /// "Sat, Dec 5" and "12月5日（周六）" are one day each.
    void joinWeekdays()
    {
        for (qsizetype index = 1; index < m_pieces.size(); ++index) {
            Piece &one = m_pieces[index - 1];
            const Piece &other = m_pieces.at(index);
            if (!one.is<QuickAddDay>() || !other.is<QuickAddDay>() || !isBeside(one, other))
                continue;
            const QuickAddDay first = std::get<QuickAddDay>(one.meaning);
            const QuickAddDay second = std::get<QuickAddDay>(other.meaning);
            if (first.isWeekday == second.isWeekday)
                continue;
            const QuickAddDay &named = first.isWeekday ? second : first;
            const QuickAddDay &weekday = first.isWeekday ? first : second;
            const QDate meant = notBefore(named, m_today.day);
            if (meant.dayOfWeek() != weekday.day.dayOfWeek())
                continue;
            one.meaning = named;
            one.isUnsure = false;
            one.isDeadline = one.isDeadline || other.isDeadline;
            one.end = other.end;
            while (one.end < m_tokens.size() && m_tokens.at(one.end).meaning == Bracket)
                ++one.end;
            m_pieces.remove(index);
            --index;
        }
    }

    /// Whether only signs lie between them.
    [[nodiscard]] bool isBeside(const Piece &one, const Piece &other) const
    {
        const auto isSign = [](const QuickAddToken &token) {
            return token.meaning == Comma || token.meaning == Bracket;
        };
        return other.first - one.end <= 2 &&
               std::all_of(m_tokens.begin() + one.end, m_tokens.begin() + other.first, isSign);
    }

    /// Whether spaces, signs or the ends of the phrase set the piece off, or it stands at the end.
    [[nodiscard]] bool standsAlone(const Piece &piece) const
    {
        const QuickAddToken &first = m_tokens.at(piece.first);
        const QuickAddToken &last = m_tokens.at(piece.end - 1);
        const bool isLast = piece.end == m_tokens.size();
        if (!first.isHan)
            return isLast && piece.is<QuickAddTime>();
        const bool isBounded =
            piece.first == 0 || first.hasSpaceBefore || m_tokens.at(piece.first - 1).meaning == Comma;
        const bool isBoundedBehind = isLast || last.hasSpaceAfter || m_tokens.at(piece.end).meaning == Comma;
        return isBounded && isBoundedBehind && !piece.is<DayPeriod>();
    }

    void dropUnsure()
    {
        for (qsizetype index = m_pieces.size() - 1; index >= 0; --index) {
            const Piece &piece = m_pieces.at(index);
            const auto holds = [&](qsizetype neighbour) {
                if (neighbour < 0 || neighbour >= m_pieces.size() || m_pieces.at(neighbour).isUnsure)
                    return false;
                return isBeside(m_pieces.at(std::min(index, neighbour)), m_pieces.at(std::max(index, neighbour)));
            };
            if (piece.isUnsure && !standsAlone(piece) && !holds(index - 1) && !holds(index + 1))
                m_pieces.remove(index);
            else
                m_pieces[index].isUnsure = false;
        }
    }

    template <class Meaning>
    [[nodiscard]] const Piece *firstOf() const
    {
        const auto found = std::ranges::find_if(m_pieces, &Piece::is<Meaning>);
        return found == m_pieces.end() ? nullptr : &*found;
    }

    QuickAddPhrase choose() const
    {
        QuickAddPhrase phrase;
        QList<const Piece *> chosen;
        const auto take = [&](const Piece *piece) {
            if (piece)
                chosen.append(piece);
            phrase.isDeadline = phrase.isDeadline || (piece && piece->isDeadline);
            return piece != nullptr;
        };
        const Piece *fromNow = firstOf<FromNow>();
        const Piece *day = fromNow ? nullptr : firstOf<QuickAddDay>();
        const Piece *time = fromNow ? nullptr : firstOf<QuickAddTime>();
        const Piece *period = day ? firstOf<DayPeriod>() : nullptr;
        // "Parents evening 26 Nov 7pm" needs no evening.
        const bool isClear = time && std::get<QuickAddTime>(time->meaning).start.isMarked();
        if (period && isClear && period->first < day->first && !isBeside(*period, *time))
            period = nullptr;
        const Piece *length = firstOf<Length>();
        if (take(fromNow))
            phrase.minutesFromNow = std::get<FromNow>(fromNow->meaning).minutes;
        if (take(day))
            phrase.day = std::get<QuickAddDay>(day->meaning);
        if (take(time))
            phrase.time = std::get<QuickAddTime>(time->meaning);
        if (take(period))
            phrase.period = std::get<DayPeriod>(period->meaning);
        const bool hasLength = length && !chosen.isEmpty() && !(phrase.time && phrase.time->end);
        if (hasLength && take(length))
            phrase.length = std::get<Length>(length->meaning).minutes;
        std::ranges::sort(chosen, {}, &Piece::first);
        for (const Piece *piece : chosen)
            addSpan(phrase.understood, m_tokens.at(piece->first).start, m_tokens.at(piece->end - 1).end);
        return phrase;
    }

    void addSpan(QList<TextSpan> &spans, qsizetype start, qsizetype end) const
    {
        const auto isBetween = [](QChar character) {
            // lint-allow(text): signs and digits that are typed
            return character.isSpace() || QStringView(u",，").contains(character);
        };
        if (!spans.isEmpty()) {
            const qsizetype before = spans.last().start + spans.last().length;
            const QStringView gap = QStringView(m_phrase).sliced(before, start - before);
            if (std::ranges::all_of(gap, isBetween)) {
                spans.last().length = end - spans.last().start;
                return;
            }
        }
        spans.append({start, end - start});
    }

    const QString &m_phrase;
    const QuickAddToday &m_today;
    QList<QuickAddToken> m_tokens;
    QList<Piece> m_pieces;
    /// Days are named that are not understood: several, or those on which something repeats.
    bool m_hasOtherDays = false;
};

} // namespace

QuickAddPhrase quickAddPhrase(const QString &phrase, const QuickAddToday &today)
{
    return PieceReader(phrase, today).read();
}

} // namespace tessaly
