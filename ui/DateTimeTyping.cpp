// What the editor of a date-time field does with typed characters.
#include "ui/DateTimeEditor.h"

#include <QHash>
#include <QTimeZone>

#include <algorithm>
#include <utility>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

/// What a part takes: so many digits, and the largest number.
struct PartLimit
{
    int digits;
    int largest;
};

PartLimit limitOf(DateTimePart part)
{
    switch (part) {
    case DateTimePart::Year:
        return {4, 9999};
    case DateTimePart::Month:
        return {2, 12};
    case DateTimePart::Day:
        return {2, 31};
    case DateTimePart::Hour:
        return {2, 23};
    case DateTimePart::Minute:
        break;
    }
    return {2, 59};
}

/// The part whose number the sign follows in Chinese.
std::optional<DateTimePart> partBefore(QChar sign)
{
    using enum DateTimePart;
    // lint-allow(text): what is read, not what is shown
    static const QHash<QChar, DateTimePart> parts = {{u'年', Year}, {u'月', Month}, {u'日', Day},   {u'号', Day},
                                                     {u'时', Hour}, {u'点', Hour},  {u'分', Minute}};
    const auto found = parts.constFind(sign);
    return found == parts.cend() ? std::nullopt : std::optional(*found);
}

} // namespace

void DateTimeEditor::beginTyping(bool isWhole)
{
    const QDateTime before = m_typing ? m_typing->valueBefore : m_value;
    m_typing = Typing{before, dateTimeParts(before), m_partIndex};
    m_typing->isWhole = isWhole;
    m_former.clear();
    m_isAllChosen = false;
}

bool DateTimeEditor::type(const QString &character)
{
    if (character.size() != 1 || !character.front().isPrint())
        return false;
    const QChar typed = character.front();
    const bool isSeparator = u" :/-,."_s.contains(typed);
    if ((!m_typing || m_isAllChosen) && typed == u' ')
        return false;
    if (!m_typing && !m_isAllChosen && isSeparator) {
        movePart(1);
        return true;
    }
    if (!m_typing || m_isAllChosen)
        beginTyping(m_isAllChosen);
    m_former.append({*m_typing, m_partIndex});
    m_typing->whole += typed;
    if (!m_typing->isWhole) {
        if (isSeparator)
            typeSeparator(typed);
        else if (typed >= u'0' && typed <= u'9')
            typeDigit(typed);
        else if (!typeUnit(typed))
            typeLetter(typed);
        recogniseWhole();
    }
    applyTyping();
    return true;
}

void DateTimeEditor::write(const QString &text)
{
    QString plain = text.normalized(QString::NormalizationForm_KC);
    // lint-allow(text): what is read, not what is shown
    plain.replace(u'。', u'.').replace(u'、', u'/');
    for (const QChar character : plain)
        type(QString(character));
}

void DateTimeEditor::typeDigit(QChar digit)
{
    if (!m_typing->text.isEmpty() && m_typing->text.front().isLetter())
        leaveTypedPart();
    const PartLimit limit = limitOf(part());
    // The last part, once full, begins again.
    if (m_typing->text.size() == limit.digits)
        m_typing->text.clear();
    m_typing->text += digit;
    m_typing->hasSeparator = false;
    m_typing->isDayTyped |= part() == DateTimePart::Day;
    const int number = m_typing->text.toInt();
    partOf(m_typing->parts, part()) = number;
    // No further digit fits: the next part is meant.
    if (!isLastPart() && (m_typing->text.size() == limit.digits || number * 10 > limit.largest))
        leaveTypedPart();
}

void DateTimeEditor::typeLetter(QChar letter)
{
    const QString letters = m_typing->text + letter;
    const int month = m_isEnglish && part() == DateTimePart::Month ? monthBeginningWith(letters) : 0;
    m_typing->isWhole = month == 0;
    if (month == 0)
        return;
    m_typing->text = letters;
    m_typing->hasSeparator = false;
    m_typing->parts.month = month;
}

void DateTimeEditor::typeSeparator(QChar separator)
{
    const bool isBlank = separator == u' ';
    const bool isTyped = !m_typing->text.isEmpty();
    m_typing->isWhole = !isBlank && (m_typing->hasSeparator || (isTyped && isLastPart()));
    m_typing->hasSeparator |= !isBlank;
    if (isTyped && !isLastPart())
        leaveTypedPart();
}

bool DateTimeEditor::typeUnit(QChar sign)
{
    const std::optional<DateTimePart> unit = partBefore(sign);
    if (m_isEnglish || !unit)
        return false;
    if (m_typing->text.isEmpty()) {
        // A number that was full has been left already.
        const bool isLeft = m_typing->whole.size() > 1 && m_typing->whole.at(m_typing->whole.size() - 2).isDigit();
        return isLeft && m_partIndex > 0 && order().at(m_partIndex - 1) == *unit;
    }
    if (part() != *unit)
        return false;
    leaveTypedPart();
    return true;
}

void DateTimeEditor::leaveTypedPart()
{
    completePart();
    m_partIndex = std::min(m_partIndex + 1, static_cast<int>(order().size()) - 1);
}

void DateTimeEditor::completePart()
{
    // Two digits are a year of the same century.
    if (!m_typing->isWhole && part() == DateTimePart::Year && m_typing->text.size() == 2)
        m_typing->parts.year += m_typing->valueBefore.date().year() / 100 * 100;
    m_typing->text.clear();
}

DateTimeReading DateTimeEditor::readWhole() const
{
    const QDateTime &before = m_typing->valueBefore;
    DateTimeReading reading = readDateTime(m_typing->whole, before);
    if (m_isDateOnly && reading.moment.isValid())
        reading.moment.setTime(QTime(before.time().hour(), before.time().minute()));
    return reading;
}

QDateTime DateTimeEditor::typedMoment() const
{
    const DateTimeParts &parts = m_typing->parts;
    const int lastDay = QDate(parts.year, parts.month, 1).daysInMonth();
    const QDate date(parts.year, parts.month, m_typing->isDayTyped ? parts.day : std::min(parts.day, lastDay));
    const QTime time(parts.hour, parts.minute);
    return parts.year < firstYear ? QDateTime() : momentOf(date, time, m_typing->valueBefore.timeZone());
}

bool DateTimeEditor::isPartOpen() const
{
    const qsizetype typed = m_typing->text.size();
    return typed > 0 && typed < limitOf(part()).digits;
}

void DateTimeEditor::recogniseWhole()
{
    const DateTimeReading reading = readWhole();
    const QDateTime moment = typedMoment();
    // Digits alone belong to the parts.
    const bool hasForm = std::ranges::any_of(m_typing->whole, [](QChar typed) { return !typed.isDigit(); });
    if (reading.moment.isValid() ? reading.moment != moment
                                 : hasForm && reading.isBegun && !moment.isValid() && !isPartOpen())
        m_typing->isWhole = true;
}

void DateTimeEditor::applyTyping()
{
    const DateTimeReading whole = m_typing->isWhole ? readWhole() : DateTimeReading();
    const QDateTime moment = m_typing->isWhole ? whole.moment : typedMoment();
    m_isRefused = m_typing->isWhole ? !whole.isBegun && !m_typing->whole.isEmpty() : !moment.isValid() && !isPartOpen();
    commit(moment.isValid() ? moment : m_typing->valueBefore);
    emit valueChanged();
    emit partChanged();
}

void DateTimeEditor::erase()
{
    if (m_isAllChosen) {
        beginTyping(true);
        applyTyping();
        return;
    }
    if (m_former.isEmpty()) {
        // What was pasted.
        if (m_typing && m_typing->isWhole) {
            m_typing->whole.chop(1);
            applyTyping();
        }
        return;
    }
    const FormerTyping former = m_former.takeLast();
    m_partIndex = former.partIndex;
    m_typing = former.typing;
    if (m_former.isEmpty() && !m_typing->isWhole)
        cancelTyping();
    else
        applyTyping();
}

bool DateTimeEditor::cancelTyping()
{
    const std::optional<Typing> dropped = std::exchange(m_typing, std::nullopt);
    m_former.clear();
    m_isRefused = false;
    m_isAllChosen = false;
    if (dropped) {
        m_partIndex = dropped->firstPartIndex;
        commit(dropped->valueBefore);
    }
    emit valueChanged();
    emit partChanged();
    return dropped.has_value();
}

bool DateTimeEditor::finishTyping()
{
    m_isAllChosen = false;
    if (m_typing && m_typing->isWhole && m_typing->whole.trimmed().isEmpty()) {
        cancelTyping();
        return false;
    }
    if (m_typing) {
        completePart();
        applyTyping();
        m_isRefused |= m_typing->isWhole && !readWhole().moment.isValid();
    }
    if (!m_isRefused) {
        m_typing.reset();
        m_former.clear();
    }
    emit valueChanged();
    emit partChanged();
    return !m_isRefused;
}

} // namespace tessaly
