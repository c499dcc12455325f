#include "ui/DateTimeEditor.h"

#include <QClipboard>
#include <QGuiApplication>
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

constexpr int firstYear = 1000;

} // namespace

DateTimeEditor::DateTimeEditor(QObject *parent) : QObject(parent)
{
}

void DateTimeEditor::setValue(const QDateTime &value)
{
    if (m_value == value)
        return;
    m_typing.reset();
    m_isRefused = false;
    m_value = value;
    emit valueChanged();
    emit partChanged();
}

void DateTimeEditor::setEnglish(bool isEnglish)
{
    if (m_isEnglish == isEnglish)
        return;
    finishTyping();
    m_isEnglish = isEnglish;
    emit valueChanged();
    emit partChanged();
}

void DateTimeEditor::setDateOnly(bool isDateOnly)
{
    if (m_isDateOnly == isDateOnly)
        return;
    m_isDateOnly = isDateOnly;
    m_partIndex = 0;
    emit valueChanged();
    emit partChanged();
}

QList<DateTimePiece> DateTimeEditor::pieces() const
{
    const bool isTyping = m_typing && !m_typing->isSpoilt;
    return dateTimePieces(isTyping ? m_typing->parts : dateTimeParts(m_value), m_isEnglish, m_isDateOnly);
}

QList<DateTimePart> DateTimeEditor::order() const
{
    QList<DateTimePart> parts;
    for (const DateTimePiece &piece : pieces()) {
        if (piece.isEditable)
            parts.append(piece.part);
    }
    return parts;
}

QString DateTimeEditor::text() const
{
    QString result;
    for (const DateTimePiece &piece : pieces())
        result += piece.text;
    return result;
}

int DateTimeEditor::partStart() const
{
    qsizetype start = 0;
    int index = 0;
    for (const DateTimePiece &piece : pieces()) {
        if (piece.isEditable && index++ == m_partIndex)
            return static_cast<int>(start);
        start += piece.text.size();
    }
    return 0;
}

int DateTimeEditor::partLength() const
{
    int index = 0;
    for (const DateTimePiece &piece : pieces()) {
        if (piece.isEditable && index++ == m_partIndex)
            return static_cast<int>(piece.text.size());
    }
    return 0;
}

void DateTimeEditor::takeKeysOf(QQuickItem *item) const
{
    item->setFlag(QQuickItem::ItemAcceptsInputMethod, false);
}

void DateTimeEditor::choosePart(int index)
{
    if (m_typing) {
        completePart();
        applyTyping();
        // What is not a moment yet can become one in another part.
        if (!m_isRefused || m_typing->isSpoilt)
            m_typing.reset();
    }
    m_isRefused = m_typing.has_value();
    m_partIndex = std::clamp(index, 0, static_cast<int>(order().size()) - 1);
    emit valueChanged();
    emit partChanged();
}

void DateTimeEditor::movePart(int delta)
{
    choosePart(m_partIndex + delta);
}

void DateTimeEditor::choosePartAt(int textPosition)
{
    qsizetype end = 0;
    int index = -1;
    for (const DateTimePiece &piece : pieces()) {
        end += piece.text.size();
        index += piece.isEditable ? 1 : 0;
        if (textPosition < end && index >= 0)
            break;
    }
    choosePart(index);
}

void DateTimeEditor::commit(const QDateTime &value)
{
    if (value == m_value)
        return;
    m_value = value;
    emit valueChanged();
    emit partChanged();
    emit edited(value);
}

void DateTimeEditor::edit(QDate date, QTime time)
{
    finishTyping();
    const QDateTime changed(date, QTime(time.hour(), time.minute()), m_value.timeZone());
    if (date.isValid() && changed.isValid())
        commit(changed);
}

void DateTimeEditor::step(int delta)
{
    finishTyping();
    const QDate date = m_value.date();
    const QTime time = m_value.time();
    switch (part()) {
    case DateTimePart::Year:
        return edit(date.addYears(delta), time);
    case DateTimePart::Month:
        return edit(date.addMonths(delta), time);
    case DateTimePart::Day:
        return edit(date.addDays(delta), time);
    case DateTimePart::Hour:
        return edit(date, time.addSecs(delta * 3600));
    case DateTimePart::Minute:
        return edit(date, time.addSecs(delta * 60));
    }
}

bool DateTimeEditor::type(const QString &character)
{
    if (character.size() != 1 || !character.front().isPrint())
        return false;
    const QChar typed = character.front();
    const bool isSeparator = u" :/-,."_s.contains(typed);
    if (!m_typing && isSeparator) {
        if (typed != u' ')
            movePart(1);
        return typed != u' ';
    }
    if (!m_typing)
        m_typing = Typing{m_value, dateTimeParts(m_value), m_partIndex};
    if (m_typing->isSpoilt)
        return true;
    if (isSeparator)
        typeSeparator(typed);
    else if (typed >= u'0' && typed <= u'9')
        typeDigit(typed);
    else
        typeLetter(typed);
    applyTyping();
    return true;
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
    m_typing->isSpoilt = month == 0;
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
    m_typing->isSpoilt = !isBlank && (m_typing->hasSeparator || (isTyped && isLastPart()));
    m_typing->hasSeparator |= !isBlank;
    if (isTyped && !isLastPart())
        leaveTypedPart();
}

void DateTimeEditor::leaveTypedPart()
{
    completePart();
    m_partIndex = std::min(m_partIndex + 1, static_cast<int>(order().size()) - 1);
}

void DateTimeEditor::completePart()
{
    // Two digits are a year of the same century.
    if (part() == DateTimePart::Year && m_typing->text.size() == 2)
        m_typing->parts.year += m_typing->valueBefore.date().year() / 100 * 100;
    m_typing->text.clear();
}

QDateTime DateTimeEditor::typedMoment() const
{
    const DateTimeParts &parts = m_typing->parts;
    const int lastDay = QDate(parts.year, parts.month, 1).daysInMonth();
    const QDate date(parts.year, parts.month, m_typing->isDayTyped ? parts.day : std::min(parts.day, lastDay));
    const QTime time(parts.hour, parts.minute);
    if (m_typing->isSpoilt || parts.year < firstYear || !date.isValid() || !time.isValid())
        return {};
    return {date, time, m_typing->valueBefore.timeZone()};
}

void DateTimeEditor::applyTyping()
{
    const QDateTime moment = typedMoment();
    const qsizetype typed = m_typing->text.size();
    const bool isPartOpen = typed > 0 && typed < limitOf(part()).digits;
    m_isRefused = m_typing->isSpoilt || (!moment.isValid() && !isPartOpen);
    commit(moment.isValid() ? moment : m_typing->valueBefore);
    emit valueChanged();
    emit partChanged();
}

void DateTimeEditor::erase()
{
    if (!m_typing || m_typing->isSpoilt) {
        cancelTyping();
        return;
    }
    DateTimeParts before = dateTimeParts(m_typing->valueBefore);
    partOf(m_typing->parts, part()) = partOf(before, part());
    m_typing->isDayTyped &= part() != DateTimePart::Day;
    m_typing->text.clear();
    applyTyping();
}

bool DateTimeEditor::cancelTyping()
{
    const std::optional<Typing> dropped = std::exchange(m_typing, std::nullopt);
    if (dropped) {
        m_partIndex = dropped->firstPartIndex;
        commit(dropped->valueBefore);
    }
    finishTyping();
    return dropped.has_value();
}

bool DateTimeEditor::finishTyping()
{
    if (m_typing) {
        completePart();
        applyTyping();
    }
    const bool isUnderstood = !m_typing || !m_isRefused;
    m_typing.reset();
    m_isRefused = false;
    emit valueChanged();
    emit partChanged();
    return isUnderstood;
}

void DateTimeEditor::paste()
{
    const std::optional<QDateTime> read = readDateTime(QGuiApplication::clipboard()->text(), m_value);
    finishTyping();
    m_isRefused = !read || !read->isValid() || read->date().year() < firstYear;
    if (!m_isRefused)
        edit(read->date(), read->time());
    emit valueChanged();
}

void DateTimeEditor::copy() const
{
    QGuiApplication::clipboard()->setText(text());
}

void DateTimeEditor::setTime(int hour, int minute)
{
    edit(m_value.date(), QTime(std::clamp(hour, 0, 23), std::clamp(minute, 0, 59)));
}

void DateTimeEditor::moveDay(int days)
{
    edit(m_value.date().addDays(days), m_value.time());
}

void DateTimeEditor::moveMonth(int months)
{
    edit(m_value.date().addMonths(months), m_value.time());
}

void DateTimeEditor::chooseDate(QDate date)
{
    edit(date, m_value.time());
}

} // namespace tessaly
